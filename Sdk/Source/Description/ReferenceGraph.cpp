#include "Description/ReferenceGraph.h"

#include "Base/Texts.h"
#include "Description/DocumentLimits.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <unordered_map>
#include <vector>

namespace OPX
{
namespace KltAPI
{
namespace
{

const std::size_t MaximumDepth = 200;
const std::size_t MaximumSteps = 1000000;
const int MaximumNesting = 16;

/// One of these holds two kilobytes in Aravis.
const std::size_t MaximumFormulas = 50000;

struct Node
{
    std::vector<std::string> references;
    std::size_t depth = 1; ///< The longest chain of references from here, once done.
    std::size_t steps = 1; ///< How many nodes are evaluated for the value of this one, once done.
    enum
    {
        Unseen,
        OnPath,
        Done
    } state = Unseen;
};

typedef std::unordered_map<std::string, Node> Graph;

template <std::size_t Size>
bool IsOneOf(const std::string& element, const char* const (&names)[Size])
{
    return std::find(std::begin(names), std::end(names), element) != std::end(names);
}

/// Elements that hold the name of another node, whose value is needed for that of the node they stand in.
bool IsReference(const std::string& element)
{
    static const char* const names[] = {
        "pValue", "pVariable", "pAddress", "pIndex", "pLength", "pValueIndexed", "pValueDefault"};
    return IsOneOf(element, names);
}

bool HoldsFormula(const std::string& element)
{
    static const char* const names[] = {"SwissKnife", "IntSwissKnife", "Converter", "IntConverter"};
    return IsOneOf(element, names);
}

/// Of these Aravis fetches the whole register, however long it is, as soon as a value is needed.
bool IsNumericRegister(const std::string& element)
{
    static const char* const names[] = {"IntReg", "MaskedIntReg", "FloatReg", "StructReg"};
    return IsOneOf(element, names);
}

std::string ToString(const xmlChar* text)
{
    return text == nullptr ? std::string() : reinterpret_cast<const char*>(text);
}

std::string TextOf(xmlNode* node)
{
    xmlChar* content = xmlNodeGetContent(node);
    std::string text = Trimmed(ToString(content));
    xmlFree(content);
    return text;
}

/// Anything else every reader understands in its own way.
bool IsPlain(const xmlNode* element)
{
    const xmlNode* content = element->children;
    return content == nullptr || (content->type == XML_TEXT_NODE && content->next == nullptr);
}

bool IsAbsurdLength(const std::string& text, bool ofNumber)
{
    const long long length = std::strtoll(text.c_str(), nullptr, 0);
    return length < (ofNumber ? 1 : 0) || length > MaximumRegisterLength;
}

/// Collects the references of all nodes of a document.
class Gatherer
{
public:
    /// \return what is wrong, empty if nothing is
    std::string Gather(xmlNode* parent, const std::string& owner, int nesting)
    {
        for (xmlNode* child = parent->children; child != nullptr && m_problem.empty(); child = child->next)
            if (child->type == XML_ELEMENT_NODE)
                GatherElement(child, ToString(parent->name), owner, nesting);
        return m_problem;
    }

    Graph graph;

private:
    void GatherElement(xmlNode* element, const std::string& parentKind, const std::string& owner, int nesting)
    {
        const std::string kind = ToString(element->name);
        if (nesting > MaximumNesting)
            m_problem = "its elements are nested too deeply";
        else if ((IsReference(kind) || kind == "Length") && !IsPlain(element))
            m_problem = "a " + kind + " of " + owner + " holds more than a text";
        else if (kind == "Length" && IsAbsurdLength(TextOf(element), IsNumericRegister(parentKind)))
            m_problem = "the length of " + owner + " is absurd";
        else if (kind == "pLength" && IsNumericRegister(parentKind))
            m_problem = "the length of " + owner + " is not constant";
        else if (HoldsFormula(kind) && ++m_formulas > MaximumFormulas)
            m_problem = "it has too many formulas";
        else if (IsReference(kind))
            GatherReference(element, owner);
        else if (kind != "Constant" && kind != "Expression") // Their names are known in the formula only.
            Gather(element, KeyOf(element, kind, owner), nesting + 1);
    }

    void GatherReference(xmlNode* element, const std::string& owner)
    {
        std::vector<std::string>& references = graph[owner].references;
        references.push_back(TextOf(element));
        for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next)
            if (ToString(attribute->name) == "pOffset")
                references.push_back(TextOf(attribute->children));
    }

    /// The node that an element stands for: one of its own, or the one it stands in.
    std::string KeyOf(xmlNode* element, const std::string& kind, const std::string& owner)
    {
        // Entries often have the name of a feature.
        std::string key = kind == "EnumEntry" ? std::string() : NameOf(element);
        if (key.empty() && !HoldsFormula(kind) && kind != "StructReg")
            return owner;
        if (key.empty())
            key = "a nameless " + kind + " in line " + std::to_string(element->line) + " (" +
                  std::to_string(++m_nameless) + ")";
        if (kind == "StructEntry")
            graph[key].references.push_back(owner);
        else if (!owner.empty())
            graph[owner].references.push_back(key);
        graph[key];
        return key;
    }

    std::string NameOf(xmlNode* element)
    {
        std::string name;
        int count = 0;
        for (const xmlAttr* attribute = element->properties; attribute != nullptr; attribute = attribute->next)
            if (ToString(attribute->name) == "Name")
            {
                name = TextOf(attribute->children);
                ++count;
            }
        // In two namespaces. Who reads the document next may take the other one.
        if (count > 1)
            m_problem = name + " has two names";
        return name;
    }

    std::string m_problem;
    std::size_t m_formulas = 0;
    std::size_t m_nameless = 0;
};

/// Follows all references from one node, without recursion: the description decides how deep they go.
std::string Follow(Graph& graph, Graph::iterator start)
{
    struct Step
    {
        Graph::iterator node;
        std::size_t next;
    };
    std::vector<Step> path(1, Step{start, 0});
    start->second.state = Node::OnPath;
    while (!path.empty())
    {
        Step& step = path.back();
        Node& node = step.node->second;
        if (step.next == node.references.size())
        {
            node.state = Node::Done;
            if (node.depth > MaximumDepth)
                return "the value of " + step.node->first + " depends on too many others in a row";
            if (node.steps > MaximumSteps)
                return "the value of " + step.node->first + " takes too many steps";
            path.pop_back();
            continue;
        }
        const auto target = graph.find(node.references[step.next]);
        if (target == graph.end() || target->second.state == Node::Done)
        {
            ++step.next;
            if (target == graph.end())
                continue;
            node.depth = std::max(node.depth, target->second.depth + 1);
            node.steps += target->second.steps;
            continue;
        }
        if (target->second.state == Node::OnPath)
            return "the value of " + target->first + " depends on itself";
        // Looked at again when it is done.
        target->second.state = Node::OnPath;
        path.push_back(Step{target, 0});
    }
    return std::string();
}

} // namespace

std::string ProblemOfReferences(xmlNode* root)
{
    Gatherer gatherer;
    std::string problem = gatherer.Gather(root, std::string(), 0);
    Graph& graph = gatherer.graph;
    // What stands outside of all nodes belongs to none.
    graph.erase(std::string());
    for (auto node = graph.begin(); problem.empty() && node != graph.end(); ++node)
        if (node->second.state == Node::Unseen)
            problem = Follow(graph, node);
    return problem;
}

} // namespace KltAPI
} // namespace OPX
