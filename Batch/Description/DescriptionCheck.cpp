#include "Description/DescriptionCheck.h"

#include "Description/DescriptionNames.h"
#include "Description/DescriptionNumber.h"
#include "Description/DescriptionSchema.h"
#include "Description/NearestWord.h"

#include <algorithm>
#include <cctype>
#include <unordered_map>
#include <unordered_set>

namespace
{

typedef DescriptionElement Element;

std::string Quoted(const std::string& text)
{
    return "'" + text + "'";
}

std::string Suggestion(const std::string& word, const std::vector<std::string>& known)
{
    // Namespaces are not understood: a prefix is in the way.
    const std::string local = word.substr(word.find(':') + 1);
    const std::string nearest =
        std::find(known.begin(), known.end(), local) != known.end() ? local : NearestWord(word, known);
    return nearest.empty() ? std::string() : " Did you mean " + Quoted(nearest) + "?";
}

/// A node, and the one that it is a part of, if any.
struct Node
{
    const Element& element;
    const Element* outer;

    /// The node in the middle of a sentence.
    std::string Text() const
    {
        const std::string own = element.name.empty() ? "this " + element.tag : Quoted(element.name);
        return outer == nullptr || outer->name.empty() ? own : own + " of " + Quoted(outer->name);
    }
};

/// The value or a limit as the node itself tells it; null if there is none, or \a other decides it.
const Element* Constant(const Element& node, const char* own, const char* other)
{
    const Element* const constant = node.Child(own);
    return constant != nullptr && node.Child(other) == nullptr ? constant : nullptr;
}

bool HoldsWholeNumbers(const Element& node)
{
    return node.tag != "Float" && node.tag != "Converter" && node.tag != "SwissKnife";
}

bool IsConditional(const Element& node)
{
    return node.Child("pIsImplemented") != nullptr || node.Child("pIsAvailable") != nullptr;
}

class Checker
{
public:
    explicit Checker(const Element& root) : m_root(root), m_names(root, m_mistakes) {}

    std::vector<Mistake> Check(bool hasFeatures)
    {
        for (const Element& node : m_root.children)
            CheckNode({node, nullptr});
        if (!hasFeatures)
            ReportNoFeatures();
        std::stable_sort(m_mistakes.begin(), m_mistakes.end(),
            [](const Mistake& one, const Mistake& other) { return one.line < other.line; });
        return std::move(m_mistakes);
    }

private:
    void Report(const Element& where, std::string text)
    {
        text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
        m_mistakes.push_back({where.line, std::move(text)});
    }

    void CheckNode(const Node& node)
    {
        const Element& element = node.element;
        const std::string_view kind = element.tag;
        const NodeKind* const known = FindNodeKind(kind);
        if (known == nullptr)
            return Report(
                element, Quoted(element.tag) + " is not a kind of node." + Suggestion(element.tag, NodeKinds()));
        CheckPlace(node);
        for (const Need* need : known->needs)
            CheckNeed(node, *need);
        if (kind == "Integer" || kind == "Float")
            CheckLimits(node);
        else if (kind == "Enumeration")
            CheckEntries(node);
        for (const Element& child : element.children)
        {
            const Content content = ContentOf(child.tag);
            if (content == Content::Unknown && FindNodeKind(child.tag) != nullptr)
                CheckNode({child, &element});
            else if (child.tag == "Group")
                Report(child,
                    "what stands in this Group does not belong to " + node.Text() + ": groups hold whole nodes.");
            else
                CheckElement(node, child, content);
        }
    }

    void CheckPlace(const Node& node)
    {
        const Element& element = node.element;
        if (node.outer == nullptr && (element.tag == "EnumEntry" || element.tag == "StructEntry"))
            Report(element, node.Text() + " is not within " +
                                (element.tag == "EnumEntry" ? "an Enumeration" : "a StructReg") +
                                ", where such a node belongs.");
        else if (node.outer != nullptr && !CanContain(node.outer->tag, element.tag))
            Report(element, node.Text() + " is a node within a node that holds none.");
        // Structures have no names, nobody asks for those of formulas within a register.
        else if (element.name.empty() && element.tag != "StructReg" &&
                 (node.outer == nullptr || element.tag.find("SwissKnife") == std::string::npos))
            Report(element, node.Text() + " has no name.");
    }

    void CheckNeed(const Node& node, const Need& need)
    {
        if (std::none_of(need.oneOf.begin(), need.oneOf.end(),
                [&node](std::string_view tag) { return node.element.Child(tag) != nullptr; }))
            Report(node.element, node.Text() + " has no " + need.missing + ".");
    }

    void CheckLimits(const Node& node)
    {
        const Element* const minimum = Constant(node.element, "Min", "pMin");
        const Element* const maximum = Constant(node.element, "Max", "pMax");
        const Element* const value = Constant(node.element, "Value", "pValue");
        CheckOrder(node, minimum, maximum);
        CheckOrder(node, minimum, value);
        CheckOrder(node, value, maximum);
    }

    void CheckOrder(const Node& node, const Element* least, const Element* most)
    {
        if (least == nullptr || most == nullptr)
            return;
        const bool whole = HoldsWholeNumbers(node.element);
        if (DescriptionNumber(least->text, whole).IsAbove(DescriptionNumber(most->text, whole)))
            Report(*most, "the " + most->tag + " of " + node.Text() + " is " + most->text + ", less than its " +
                              least->tag + ", which is " + least->text + ".");
    }

    void CheckEntries(const Node& node)
    {
        std::unordered_map<std::string, const Element*> names;
        std::unordered_map<long long, const Element*> values;
        for (const Element& entry : node.element.children)
        {
            if (entry.tag != "EnumEntry")
                continue;
            const Node both = {entry, &node.element};
            const auto named = names.emplace(entry.name, &entry);
            if (!named.second && !entry.name.empty())
                Report(
                    entry, both.Text() + " exists already, in line " + std::to_string(named.first->second->line) + ".");
            const Element* const value = entry.Child("Value");
            if (value == nullptr || !DescriptionNumber(value->text, true).comparable)
                continue;
            const auto valued = values.emplace(DescriptionNumber(value->text, true).Integer(), &entry);
            // Two that are there under conditions need not be there together.
            if (!valued.second && !(IsConditional(entry) && IsConditional(*valued.first->second)))
                Report(*value, both.Text() + " has the same value as " + Quoted(valued.first->second->name) + ", " +
                                   value->text + ".");
        }
    }

    /// An element of a node that is no node.
    void CheckElement(const Node& node, const Element& element, Content content)
    {
        if (content == Content::Unknown)
            CheckUnknown(node, element);
        else if (content == Content::Node || content == Content::NodeWithValue)
            // White space is a part of the name that the SDK looks for.
            CheckReference(
                node, element, element.tag, element.isPadded ? " " + element.text + " " : element.text, content);
        else if (content == Content::WholeNumber || content == Content::RealNumber)
            CheckNumber(node, element, content == Content::WholeNumber);
        else if (content == Content::NumberOfNode && node.element.tag != "String" && node.element.tag != "Boolean")
            CheckNumber(node, element, HoldsWholeNumbers(node.element));
        const std::string_view offset = element.Attribute("pOffset");
        if (!offset.empty())
            CheckReference(node, element, "pOffset", offset, Content::NodeWithValue);
    }

    /// Makers have elements of their own. Those that look like one of the format are meant to be that.
    void CheckUnknown(const Node& node, const Element& element)
    {
        const std::string suggestion = Suggestion(element.tag, ElementsOfNodes());
        if (!suggestion.empty())
            Report(element, "the element " + Quoted(element.tag) + " of " + node.Text() + " is unknown." + suggestion);
        else if (element.tag.size() > 1 && element.tag[0] == 'p' &&
                 std::isupper(static_cast<unsigned char>(element.tag[1])) != 0)
            CheckReference(node, element, element.tag, element.text, Content::Node);
    }

    void CheckReference(
        const Node& node, const Element& element, std::string_view what, std::string_view target, Content content)
    {
        const Element* const found = m_names.Find(target);
        const std::string_view kind = found == nullptr ? std::string_view() : found->tag;
        const char* problem = nullptr;
        // Entries of enumerations have a name for the whole description, too.
        if (found == nullptr)
            problem = target.substr(0, 10) == "EnumEntry_" ? nullptr : "which does not exist";
        else if (what == "pPort" && kind != "Port")
            problem = "which is not a Port";
        else if (content == Content::NodeWithValue && (kind == "Category" || kind == "Port"))
            problem = "which has no value";
        if (problem != nullptr)
            Report(element, "the " + std::string(what) + " of " + node.Text() + " leads to " +
                                Quoted(std::string(target)) + ", " + problem + ".");
    }

    void CheckNumber(const Node& node, const Element& element, bool whole)
    {
        const DescriptionNumber number(element.text, whole);
        if (!number.problem.empty())
            Report(element, "the " + element.tag + " of " + node.Text() + " is " + Quoted(element.text) + ", " +
                                number.problem + ".");
    }

    void ReportNoFeatures()
    {
        const Element* const root = m_names.Find("Root");
        if (root == nullptr || root->tag != "Category")
            Report(m_root, "there is no Category 'Root', so the camera has no features.");
        else if (!LeadsToFeature(*root))
            Report(*root, "no feature can be reached from the Category 'Root', so the camera has none.");
        else
            Report(*root, "the SDK finds no features, although the Category 'Root' leads to some. Perhaps they are not "
                          "implemented.");
    }

    bool LeadsToFeature(const Element& category)
    {
        std::vector<const Element*> open(1, &category);
        std::unordered_set<const Element*> seen = {&category};
        while (!open.empty())
        {
            const Element& next = *open.back();
            open.pop_back();
            const NodeKind* const kind = FindNodeKind(next.tag);
            if (next.tag != "Category" && kind != nullptr && kind->isRead)
                return true;
            for (const Element& child : next.children)
            {
                const Element* const target = child.tag == "pFeature" ? m_names.Find(child.text) : nullptr;
                if (target != nullptr && seen.insert(target).second)
                    open.push_back(target);
            }
        }
        return false;
    }

    const Element& m_root;
    std::vector<Mistake> m_mistakes;
    const DescriptionNames m_names;
};

} // namespace

std::vector<Mistake> FindMistakes(const DescriptionElement& root, bool hasFeatures)
{
    return Checker(root).Check(hasFeatures);
}
