#include "Lint/DescriptionCheck.h"

#include "Document/NearestWord.h"
#include "Lint/FormulaCheck.h"
#include "Lint/NodeReport.h"
#include "Lint/ValueCheck.h"
#include "Schema/NodeNames.h"
#include "Schema/Number.h"
#include "Schema/Schema.h"

#include <algorithm>
#include <cctype>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

typedef DescriptionElement Element;
typedef NodeInPlace Node;

std::string DidYouMean(const std::string& word)
{
    return word.empty() ? std::string() : " Did you mean " + Quoted(word) + "?";
}

std::string Suggestion(const std::string& word, const std::vector<std::string>& known)
{
    // Namespaces are not understood: a prefix is in the way.
    const std::string local = word.substr(word.find(':') + 1);
    return DidYouMean(std::find(known.begin(), known.end(), local) != known.end() ? local : NearestWord(word, known));
}

/// Elements of makers are short words that are like others, too. One letter for another counts as two.
const std::size_t MostLettersWrong = 2;

/// "one, another or a third".
std::string Choice(const std::vector<std::string>& words)
{
    std::string text = words.front();
    for (std::size_t i = 1; i < words.size(); ++i)
        text += (i + 1 < words.size() ? ", " : " or ") + words[i];
    return text;
}

std::string WithArticle(const std::string& kind)
{
    return (std::string("AEIOU").find(kind[0]) != std::string::npos ? "an " : "a ") + kind;
}

class Checker
{
public:
    explicit Checker(const Element& root) : m_root(root), m_names(root, m_mistakes.all) {}

    std::vector<Mistake> Check(bool hasFeatures)
    {
        for (const Element& node : m_root.children)
            CheckNode({node, nullptr});
        if (!hasFeatures)
            ReportNoFeatures();
        std::stable_sort(m_mistakes.all.begin(), m_mistakes.all.end(),
            [](const Mistake& one, const Mistake& other) { return one.line < other.line; });
        return std::move(m_mistakes.all);
    }

private:
    void Report(const Element& where, std::string sentence) { m_mistakes.Report(where, std::move(sentence)); }

    void CheckNode(const Node& node)
    {
        const Element& element = node.element;
        const NodeKind* const kind = FindNodeKind(element.tag);
        if (kind == nullptr)
            return Report(
                element, Quoted(element.tag) + " is not a kind of node." + Suggestion(element.tag, NodeKinds()));
        CheckPlace(node);
        for (const Need* need : kind->needs)
            CheckNeed(node, *need);
        CheckValues(node, m_mistakes);
        CheckFormulas(node, m_mistakes);
        std::vector<const Element*> within;
        for (const Element& child : element.children)
            if (const ElementKind* const known = FindElementKind(child.tag))
                CheckElement(node, *kind, child, *known);
            else if (FindNodeKind(child.tag) != nullptr)
                within.push_back(&child);
            else
                CheckUnknown(node, child);
        for (const Element* inner : within)
            CheckNode({*inner, &element});
    }

    void CheckPlace(const Node& node)
    {
        const Element& element = node.element;
        const bool isEntry = element.tag == "EnumEntry";
        if (node.outer == nullptr && (isEntry || element.tag == "StructEntry"))
            Report(element, node.Text() + " is not within " + (isEntry ? "an Enumeration" : "a StructReg") +
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

    /// An element of a node that is no node.
    void CheckElement(const Node& node, const NodeKind& kind, const Element& element, const ElementKind& known)
    {
        if ((known.places & kind.bit) == 0)
            return ReportUseless(node, element);
        CheckRepetition(node, element, known);
        if (known.words != nullptr)
            CheckWord(node, element, *known.words);
        else if (known.content == Content::Node || known.content == Content::NodeWithValue)
            CheckLink(node, element, known.content);
        else
            CheckNumber(node, element, known.content);
        CheckAttributes(node, element);
    }

    void CheckAttributes(const Node& node, const Element& element)
    {
        const std::string_view offset = element.Attribute("pOffset");
        if (!offset.empty())
            CheckReference(node, element, "pOffset", std::string(offset), Content::NodeWithValue);
        if (element.tag == "pIndex")
            CheckAttribute(node, element, "Offset");
        else if (element.tag == "ValueIndexed" || element.tag == "pValueIndexed")
        {
            if (element.Attribute("Index").empty())
                Report(element, "a " + element.tag + " of " + node.Text() + " has no Index.");
            CheckAttribute(node, element, "Index");
        }
    }

    void CheckAttribute(const Node& node, const Element& element, const char* name)
    {
        const std::string_view text = element.Attribute(name);
        if (!text.empty())
            CheckNumber(node.Text(std::string(name) + " of the " + element.tag), element, std::string(text), true);
    }

    /// Few mistakes are as common as an access mode in a feature that has none of its own.
    void ReportUseless(const Node& node, const Element& element)
    {
        Report(element, node.Text(element.tag) + " has no effect in " + WithArticle(node.element.tag) + "." +
                            DidYouMean(element.tag == "AccessMode" ? "ImposedAccessMode" : ""));
    }

    void CheckRepetition(const Node& node, const Element& element, const ElementKind& known)
    {
        if (known.mayRepeat)
            return;
        if (m_lastOwners.size() <= known.index)
            m_lastOwners.resize(known.index + 1);
        if (std::exchange(m_lastOwners[known.index], &node.element) == &node.element)
            Report(element, node.Text(element.tag) + " is there more than once. The last one counts.");
    }

    void CheckWord(const Node& node, const Element& element, const std::vector<std::string>& words)
    {
        if (std::find(words.begin(), words.end(), element.text) == words.end())
            Report(element, node.Text(element.tag) + " is " + Quoted(element.text) + ", which is not " + Choice(words) +
                                "." + Suggestion(element.text, words));
    }

    /// Many links are followed by nobody, and this one by the SDK itself.
    static bool MayBePadded(const Element& element, Content content)
    {
        return element.tag == "pValueCopy" ||
               (content == Content::Node && element.tag != "pFeature" && element.tag != "pPort");
    }

    /// Makers have elements of their own. Those that look like one of the format are meant to be that.
    void CheckUnknown(const Node& node, const Element& element)
    {
        if (element.tag == "Group")
            return Report(
                element, "what stands in this Group does not belong to " + node.Text() + ": groups hold whole nodes.");
        const std::string suggestion = DidYouMean(NearestWord(element.tag, ElementsOfNodes(), MostLettersWrong));
        if (!suggestion.empty())
            Report(element, "the element " + Quoted(element.tag) + " of " + node.Text() + " is unknown." + suggestion);
        else if (element.tag.size() > 1 && element.tag[0] == 'p' &&
                 std::isupper(static_cast<unsigned char>(element.tag[1])) != 0)
            CheckReference(node, element, element.tag, element.text, Content::Node);
    }

    void CheckLink(const Node& node, const Element& element, Content content)
    {
        const bool isFound = m_names.Find(element.Target()) != nullptr;
        if (!isFound && !MayBePadded(element, content) && m_names.Find(element.text) != nullptr)
            return Report(element, node.Text(element.tag) + " leads nowhere: the SDK takes the white space around " +
                                       Quoted(element.text) + " for a part of the name.");
        CheckReference(node, element, element.tag, isFound ? element.Target() : element.text, content);
    }

    void CheckReference(
        const Node& node, const Element& element, std::string_view what, const std::string& target, Content content)
    {
        const Element* const found = m_names.Find(target);
        const std::string_view kind = found == nullptr ? std::string_view() : found->tag;
        std::string problem;
        if (found == nullptr)
            problem = m_names.IsEntry(target) ? std::string()
                                              : "which does not exist." +
                                                    DidYouMean(m_names.Nearest(target, what == "pPort" ? "Port" : ""));
        else if (what == "pPort" && kind != "Port")
            problem = "which is not a Port.";
        else if (content == Content::NodeWithValue && (kind == "Category" || kind == "Port"))
            problem = "which has no value.";
        else if (what == "pFeature" && std::exchange(m_lastCategories[found], &node.element) == &node.element)
            problem = "as one before it does.";
        if (!problem.empty())
            Report(element, node.Text(what) + " leads to " + Quoted(target) + ", " + problem);
    }

    void CheckNumber(const Node& node, const Element& element, Content content)
    {
        const bool dependsOnNode = content == Content::NumberOfNode;
        if (dependsOnNode && node.element.tag == "Boolean")
            CheckTruth(node, element);
        else if (dependsOnNode && node.element.tag != "String")
            CheckNumber(node.Text(element.tag), element, element.text, HoldsWholeNumbers(node.element));
        else if (content == Content::WholeNumber || content == Content::RealNumber)
            CheckNumber(node.Text(element.tag), element, element.text, content == Content::WholeNumber);
    }

    void CheckTruth(const Node& node, const Element& element)
    {
        if (element.text != "true" && element.text != "false" && !DescriptionNumber(element.text, true).problem.empty())
            Report(element,
                node.Text(element.tag) + " is " + Quoted(element.text) + ", which is not true, false or a number.");
    }

    void CheckNumber(const std::string& what, const Element& where, const std::string& text, bool whole)
    {
        const DescriptionNumber number(text, whole);
        if (!number.problem.empty())
            Report(where, what + " is " + Quoted(text) + ", " + number.problem + ".");
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
            if (next.tag != "Category" && IsRead(next.tag))
                return true;
            for (const Element& child : next.children)
            {
                const Element* const target = child.tag == "pFeature" ? m_names.Find(child.Target()) : nullptr;
                if (target != nullptr && seen.insert(target).second)
                    open.push_back(target);
            }
        }
        return false;
    }

    const Element& m_root;
    Mistakes m_mistakes;
    DescriptionNames m_names;
    std::vector<const Element*> m_lastOwners; ///< Of elements that a node has one of, by their kind.
    std::unordered_map<const Element*, const Element*> m_lastCategories; ///< That list this node.
};

} // namespace

std::vector<Mistake> FindMistakes(const DescriptionElement& root, bool hasFeatures)
{
    return Checker(root).Check(hasFeatures);
}

} // namespace OPX::KltAPI
