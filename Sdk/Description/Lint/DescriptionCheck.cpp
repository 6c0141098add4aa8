#include "Lint/DescriptionCheck.h"

#include "Document/NearestWord.h"
#include "Document/NodeNames.h"
#include "Lint/NodeReport.h"
#include "Schema/Number.h"

#include <algorithm>
#include <cctype>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

typedef NodeInPlace Node;

std::string DidYouMean(std::string_view word)
{
    return word.empty() ? std::string() : " Did you mean " + Quoted(word) + "?";
}

std::string Suggestion(std::string_view word, const std::vector<std::string_view>& known)
{
    // Namespaces are not understood: a prefix is in the way.
    const std::string_view local = word.substr(word.find(':') + 1);
    return DidYouMean(std::find(known.begin(), known.end(), local) != known.end() ? local : NearestWord(word, known));
}

const char* const LosesFraction = "of which it cuts off the fraction";

/// What the namespaces of all versions of the format begin with.
const std::string_view KnownSpace = "http://www.genicam.org/GenApi/Version_1_";

/// Elements of makers are short words that are like others, too. One letter for another counts as two.
const std::size_t MostLettersWrong = 2;

/// Names are long and have much in common.
const std::size_t MostLettersWrongInName = 4;

const std::size_t MaximumCompared = 100000;

/// "one, another or a third".
std::string Choice(const std::vector<std::string_view>& words)
{
    std::string text(words.front());
    for (std::size_t i = 1; i < words.size(); ++i)
        text.append(i + 1 < words.size() ? ", " : " or ").append(words[i]);
    return text;
}

std::string WithArticle(std::string_view kind)
{
    return (std::string("AEIOU").find(kind[0]) != std::string::npos ? "an " : "a ") + std::string(kind);
}

class Checker
{
public:
    Checker(const Element& root, const NameCleaner& clean) : m_root(root), m_clean(clean), m_names(root) {}

    std::vector<Mistake> Check()
    {
        CheckRoot();
        ReportDuplicates();
        for (const Element& node : m_root)
            CheckNode({node, nullptr});
        CheckFeatures();
        std::stable_sort(m_mistakes.all.begin(), m_mistakes.all.end(),
            [](const Mistake& one, const Mistake& other) {
                return std::pair(one.position.line, one.position.column) <
                       std::pair(other.position.line, other.position.column);
            });
        return std::move(m_mistakes.all);
    }

private:
    void Report(std::string_view rule, const Node& node, const Element& where, std::string sentence)
    {
        m_mistakes.Report(rule, node, where, std::move(sentence));
    }

    void CheckRoot()
    {
        const Node root = {m_root, nullptr};
        if (m_root.AttributeOf("ModelName").empty())
            Report("no-model-name", root, m_root, "the camera has no ModelName, so it is called like the file.");
        const std::string_view space = m_root.AttributeOf("xmlns");
        if (!space.empty() && space.substr(0, KnownSpace.size()) != KnownSpace)
            Report("unknown-namespace", root, m_root,
                "the namespace " + Quoted(space) + " is not that of the format, " +
                    Quoted(std::string(KnownSpace) + "0") + " or a later one. Some programs refuse the description.");
        CheckText(root);
    }

    void CheckText(const Node& node)
    {
        const Element& element = node.element;
        if (element.firstChild != nullptr && (element.holdsTextBetween || !element.Text().empty()))
            Report("stray-text", node, element,
                "text stands between the elements of " + (&element == &m_root ? "the root" : node.Text()) +
                    ". It is ignored.");
    }

    /// Entries share an enumeration's name in code, and others may begin with a digit.
    void CheckName(const Node& node)
    {
        const Element& element = node.element;
        const bool isEntry = node.Is(Trait::Entry) && node.outer != nullptr;
        const std::string name = (isEntry ? std::string(node.outer->name) + "_" : "") + std::string(element.name);
        const std::string identifier = element.name.empty() ? name : m_clean(name);
        if (identifier != name && (!isEntry || m_clean(std::string(element.name)) != element.name))
            Report("no-identifier", node, element,
                node.Text() + " is no identifier: generated code has " + Quoted(identifier) + ".");
    }

    void ReportDuplicates()
    {
        for (const NodeNames::Duplicate& duplicate : m_names.Duplicates())
            Report("duplicate-name", {*duplicate.second, nullptr}, *duplicate.second,
                "the name " + Quoted(duplicate.second->name) + " is taken already, in line " +
                    std::to_string(duplicate.first->line) + (duplicate.secondCounts ? ". The last one counts." : "."));
    }

    void CheckNode(const Node& node)
    {
        const Element& element = node.element;
        if (element.node == nullptr)
            return Report("unknown-node", node, element,
                Quoted(element.tag) + " is not a kind of node." + Suggestion(element.tag, TagsOfNodes()));
        CheckPlace(node);
        CheckName(node);
        CheckText(node);
        for (const Need& need : Needs())
            if (node.Is(need.traits))
                CheckNeed(node, need);
        CheckValues(node, m_mistakes);
        CheckFormulas(node, m_mistakes);
        std::vector<const Element*> within;
        for (const Element& child : element)
            if (child.element != nullptr)
                CheckElement(node, child);
            else if (child.node != nullptr)
                within.push_back(&child);
            else
                CheckUnknown(node, child);
        for (const Element* inner : within)
            CheckNode({*inner, &element});
    }

    void CheckPlace(const Node& node)
    {
        const Element& element = node.element;
        if (node.outer == nullptr && !element.node->whole.empty())
            Report("misplaced-node", node, element,
                node.Text() + " is not within " + WithArticle(element.node->whole) + ", where such a node belongs.");
        else if (node.outer != nullptr && !CanContain(*node.outer->node, *element.node))
            Report("misplaced-node", node, element, node.Text() + " is a node within a node that holds none.");
        // Structures have no names, nobody asks for those of formulas within a register.
        else if (element.name.empty() && !node.Is(Trait::Struct) && (node.outer == nullptr || !node.Is(Trait::Knife)))
            Report("nameless", node, element, node.Text() + " has no name.");
    }

    void CheckNeed(const Node& node, const Need& need)
    {
        if (std::none_of(need.oneOf.begin(), need.oneOf.end(),
                [&node](std::string_view tag) { return node.element.Child(tag) != nullptr; }))
            Report("missing-element", node, node.element, node.Text() + " has no " + need.missing + ".");
    }

    /// An element of a node that is no node.
    void CheckElement(const Node& node, const Element& element)
    {
        const ElementKind& known = *element.element;
        if (!known.HasEffectIn(*node.element.node))
            return ReportUseless(node, element);
        CheckRepetition(node, element);
        if (known.words != nullptr)
            CheckWord(node, element);
        else if (known.content == Content::Node || known.content == Content::NodeWithValue)
            CheckLink(node, element, known.content);
        else
            CheckNumber(node, element, known.content);
        CheckAttributes(node, element);
    }

    void CheckAttributes(const Node& node, const Element& element)
    {
        const std::string_view offset = element.AttributeOf("pOffset");
        if (!offset.empty())
            CheckReference(node, element, "pOffset", offset, Content::NodeWithValue);
        if (element.tag == "pIndex")
            CheckAttribute(node, element, "Offset");
        else if (element.tag == "ValueIndexed" || element.tag == "pValueIndexed")
        {
            if (element.AttributeOf("Index").empty())
                Report("missing-element", node, element,
                    "a " + std::string(element.tag) + " of " + node.Text() + " has no Index.");
            CheckAttribute(node, element, "Index");
        }
    }

    void CheckAttribute(const Node& node, const Element& element, const char* name)
    {
        const std::string_view text = element.AttributeOf(name);
        if (!text.empty())
            CheckNumber(node, std::string(name) + " of the " + std::string(element.tag), element, text, true);
    }

    /// Few mistakes are as common as an access mode in a feature that has none of its own.
    void ReportUseless(const Node& node, const Element& element)
    {
        Report("no-effect", node, element,
            node.Text(element.tag) + " has no effect in " + WithArticle(node.element.tag) + "." +
                DidYouMean(element.tag == "AccessMode" ? "ImposedAccessMode" : ""));
    }

    void CheckRepetition(const Node& node, const Element& element)
    {
        if (element.element->Is(ElementKind::Repeats))
            return;
        if (std::exchange(m_lastOwners[element.element], &node.element) == &node.element)
            Report("repeated-element", node, element,
                node.Text(element.tag) + " is there more than once. The last one counts.");
    }

    void CheckWord(const Node& node, const Element& element)
    {
        const Words& all = *element.element->words;
        const std::string_view text = element.Text();
        if (!text.empty() && std::find(all.begin(), all.end(), text) != all.end())
            return;
        const std::vector<std::string_view> words(all.begin(), std::find(all.begin(), all.end(), std::string_view()));
        Report("bad-word", node, element,
            node.Text(element.tag) + " is " + Quoted(text) + ", which is not " + Choice(words) + "." +
                Suggestion(text, words));
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
            return Report("misplaced-node", node, element,
                "what stands in this Group does not belong to " + node.Text() + ": groups hold whole nodes.");
        const std::string suggestion = DidYouMean(NearestWord(element.tag, TagsOfElements(), MostLettersWrong));
        if (!suggestion.empty())
            Report("unknown-element", node, element,
                "the element " + Quoted(element.tag) + " of " + node.Text() + " is unknown." + suggestion);
        else if (element.tag.size() > 1 && element.tag[0] == 'p' &&
                 std::isupper(static_cast<unsigned char>(element.tag[1])) != 0)
            CheckReference(node, element, element.tag, element.Text(), Content::Node);
    }

    void CheckLink(const Node& node, const Element& element, Content content)
    {
        const bool isFound = m_names.Find(element.Target()) != nullptr;
        if (!isFound && !MayBePadded(element, content) && m_names.Find(element.Text()) != nullptr)
            return Report("padded-name", node, element,
                node.Text(element.tag) + " leads nowhere: the SDK takes the white space around " +
                    Quoted(element.Text()) + " for a part of the name.");
        CheckReference(node, element, element.tag, isFound ? element.Target() : element.Text(), content);
        if (element.tag == "pValue" && node.Is(Trait::Command))
            CheckCommand(node, element);
    }

    /// What a command writes to. This ends: values that depend on themselves have been refused.
    void CheckCommand(const Node& node, const Element& reference)
    {
        for (const Element* next = m_names.Find(&reference); next != nullptr;
             next = m_names.Find(next->Child("pValue")))
            for (const char* tag : {"AccessMode", "ImposedAccessMode"})
                if (const Element* const access = next->Child(tag); access != nullptr && access->Text() == "RO")
                    return Report("read-only-command", node, reference,
                        node.Text() + " writes to " + Quoted(next->name) +
                            ", which is read-only: cameras refuse that.");
    }

    void CheckReference(
        const Node& node, const Element& element, std::string_view what, std::string_view target, Content content)
    {
        const Element* const found = m_names.Find(target);
        const auto report = [&](const char* rule, const std::string& problem)
        { Report(rule, node, element, node.Text(what) + " leads to " + Quoted(target) + ", " + problem + "."); };
        const bool isFollowed = element.element != nullptr && !MayBePadded(element, content);
        if (found == nullptr && !IsEntry(target))
        {
            const std::string meant = DidYouMean(Nearest(target, what == "pPort" ? "Port" : ""));
            Report(isFollowed ? "missing-node" : "dangling-link", node, element,
                node.Text(what) + " leads to " + Quoted(target) + ", which does not exist." + meant);
        }
        else if (found != nullptr && what == "pFeature" &&
                 std::exchange(m_lastCategories[found], &node.element) == &node.element)
            report("repeated-feature", "as one before it does");
        else if (found != nullptr && found->node != nullptr)
        {
            const std::string problem = WrongKind(node, element, *found->node, content);
            if (!problem.empty())
                report(problem == LosesFraction ? "lost-fraction" : "wrong-kind", problem);
        }
    }

    /// What is wrong with a reference to a node of this kind; empty if nothing is.
    static std::string WrongKind(const Node& node, const Element& element, const NodeKind& target, Content content)
    {
        const ElementKind* const link = element.element;
        const char* const effect = link == nullptr || element.tag[0] != 'p' ? nullptr : link->withoutNumber;
        const bool isNumber = target.Is(
            Trait::Plain | Trait::Numeric | Trait::Masked | Trait::Formula | Trait::Enumeration | Trait::Boolean);
        if (element.tag == "pPort")
            return target.Is(Trait::Port) ? "" : "which is not a Port";
        if (effect != nullptr && target.Is(Trait::Read) && !isNumber)
            return WithArticle(target.tag) + ", which is no number: " + effect;
        if (content == Content::NodeWithValue && target.Is(Trait::Category | Trait::Port))
            return "which has no value";
        if (element.tag == "pValue" && node.Is(Trait::Enumeration) && target.Is(Trait::Text))
            return "which is a text: none of the entries can be set";
        const bool isWhole = element.tag == "pAddress" || (!node.Is(Trait::Real) && element.tag.substr(0, 3) != "pIs");
        return effect != nullptr && isWhole && target.Is(Trait::Real) ? LosesFraction : "";
    }

    /// Entries of enumerations have a name for the whole description, too: EnumEntry_Enumeration_Entry.
    bool IsEntry(std::string_view name)
    {
        static const std::string prefix = "EnumEntry_";
        if (name.substr(0, prefix.size()) != prefix)
            return false;
        if (m_entries.empty())
            for (const Element& node : m_root)
                for (const Element& entry : node)
                    if (entry.node != nullptr && entry.node->Is(Trait::Entry))
                        m_entries.insert(prefix + std::string(node.name) + "_" + std::string(entry.name));
        return m_entries.count(std::string(name)) > 0;
    }

    /// The name that was meant by one that leads nowhere; empty if none is near.
    /// \param tag the kind of node that it leads to; empty for all
    std::string_view Nearest(std::string_view name, std::string_view tag)
    {
        // Nobody reads thousands of suggestions.
        if (m_compared > MaximumCompared)
            return std::string_view();
        std::vector<std::string_view> names = m_names.Names(tag);
        m_compared += names.size();
        std::sort(names.begin(), names.end()); // The same one for every build of the hash table.
        return NearestWord(name, names, MostLettersWrongInName);
    }

    void CheckNumber(const Node& node, const Element& element, Content content)
    {
        const bool dependsOnNode = content == Content::NumberOfNode;
        if (dependsOnNode && node.Is(Trait::Boolean))
            CheckTruth(node, element);
        else if (dependsOnNode && !node.Is(Trait::Text))
            CheckNumber(node, element.tag, element, element.Text(), !node.Is(Trait::Real));
        else if (content == Content::WholeNumber || content == Content::RealNumber)
            CheckNumber(node, element.tag, element, element.Text(), content == Content::WholeNumber);
    }

    void CheckTruth(const Node& node, const Element& element)
    {
        const std::string_view text = element.Text();
        if (text != "true" && text != "false" && !DescriptionNumber(text, true).problem.empty())
            Report("bad-number", node, element,
                node.Text(element.tag) + " is " + Quoted(text) + ", which is not true, false or a number.");
    }

    void CheckNumber(const Node& node, std::string_view what, const Element& where, std::string_view text, bool whole)
    {
        const DescriptionNumber number(text, whole);
        if (!number.problem.empty())
            Report("bad-number", node, where, node.Text(what) + " is " + Quoted(text) + ", " + number.problem + ".");
    }

    void CheckFeatures()
    {
        const Element* const root = m_names.Find("Root");
        if (root == nullptr || root->node == nullptr || !root->node->Is(Trait::Category))
            Report("no-features", {m_root, nullptr}, m_root,
                "there is no Category 'Root', so the camera has no features.");
        else if (!LeadsToFeature(*root))
            Report("no-features", {*root, nullptr}, *root,
                "no feature can be reached from the Category 'Root', so the camera has none.");
    }

    /// A category whose features are being followed, and the next one of them.
    struct Open
    {
        const Element* category;
        const Element* next;
    };

    /// Also tells of categories that contain themselves.
    bool LeadsToFeature(const Element& root)
    {
        bool leads = false;
        std::vector<Open> open = {{&root, root.firstChild}};
        std::unordered_map<const Element*, bool> isOpen = {{&root, true}};
        while (!open.empty())
        {
            const Open last = open.back();
            if (last.next == nullptr)
            {
                isOpen[last.category] = false;
                open.pop_back();
                continue;
            }
            open.back().next = last.next->next;
            const Element* const target = last.next->tag == "pFeature" ? m_names.Find(last.next) : nullptr;
            if (target == nullptr || target->node == nullptr || !target->node->Is(Trait::Read))
                continue;
            const bool isCategory = target->node->Is(Trait::Category);
            leads = leads || !isCategory;
            if (!isCategory)
                continue;
            const auto [known, isNew] = isOpen.emplace(target, true);
            if (isNew)
                open.push_back({target, target->firstChild});
            else if (known->second)
                Report("category-circle", {*last.category, nullptr}, *last.next,
                    Node{*last.category, nullptr}.Text(last.next->tag) + " leads to " + Quoted(target->name) +
                        ", which contains it: what is in there is listed once.");
        }
        return leads;
    }

    const Element& m_root;
    const NameCleaner& m_clean;
    Mistakes m_mistakes;
    const NodeNames m_names;
    std::unordered_set<std::string> m_entries; ///< Empty until somebody asks.
    std::size_t m_compared = 0;                ///< How many names others were compared with so far.
    std::unordered_map<const ElementKind*, const Element*> m_lastOwners; ///< Of elements that a node has one of.
    std::unordered_map<const Element*, const Element*> m_lastCategories; ///< That list this node.
};

} // namespace

std::vector<Mistake> FindMistakes(const Element& root, const NameCleaner& clean)
{
    return Checker(root, clean).Check();
}

} // namespace OPX::KltAPI
