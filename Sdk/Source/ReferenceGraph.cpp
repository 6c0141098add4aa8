#include "ReferenceGraph.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <unordered_map>
#include <vector>

namespace OPX
{
namespace KltAPI
{
namespace
{

const std::size_t MaximumDepth = 200;
const long long MaximumLength = 64ll << 20;

struct Node
{
    std::vector<std::string> references;
    std::size_t depth = 0; ///< The longest chain of references from here, once done.
    enum
    {
        Unseen,
        OnPath,
        Done
    } state = Unseen;
};

typedef std::unordered_map<std::string, Node> Graph;

std::string NameOf(const xmlNode* element)
{
    return reinterpret_cast<const char*>(element->name);
}

std::string TextOf(xmlNode* element)
{
    xmlChar* content = xmlNodeGetContent(element);
    std::string text = content == nullptr ? std::string() : reinterpret_cast<const char*>(content);
    xmlFree(content);
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    const std::size_t end = text.find_last_not_of(" \t\r\n");
    return begin == std::string::npos ? std::string() : text.substr(begin, end - begin + 1);
}

/// Elements such as pValue hold the name of another node whose value is needed. Links between features are of no
/// account: nothing is evaluated through them.
bool IsReference(const std::string& element)
{
    return element.size() > 1 && element[0] == 'p' && std::isupper(static_cast<unsigned char>(element[1])) != 0 &&
           element != "pFeature" && element != "pSelected" && element != "pInvalidator" && element != "pPort";
}

bool IsAbsurdLength(const std::string& text)
{
    const long long length = std::strtoll(text.c_str(), nullptr, 0);
    return length < 0 || length > MaximumLength;
}

/// Gathers the references of all named nodes. \a owner is the named node that \a parent is or stands in.
std::string Gather(xmlNode* parent, const std::string& owner, int depth, Graph& graph)
{
    if (depth > 16)
        return "its elements are nested too deeply";
    for (xmlNode* child = parent->children; child != nullptr; child = child->next)
    {
        if (child->type != XML_ELEMENT_NODE)
            continue;
        const std::string element = NameOf(child);
        if (IsReference(element))
            graph[owner].references.push_back(TextOf(child));
        else if (element == "Length" && IsAbsurdLength(TextOf(child)))
            return "the length of " + owner + " is absurd";
        xmlChar* name = xmlGetProp(child, reinterpret_cast<const xmlChar*>("Name"));
        // Entries have names as well, but belong to their enumeration.
        const bool ownsReferences = name != nullptr && element != "EnumEntry" && !IsReference(element);
        const std::string next = ownsReferences ? reinterpret_cast<const char*>(name) : owner;
        xmlFree(name);
        const std::string problem = Gather(child, next, depth + 1, graph);
        if (!problem.empty())
            return problem;
    }
    return std::string();
}

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
            const std::size_t depth = node.depth + 1;
            node.state = Node::Done;
            path.pop_back();
            if (depth > MaximumDepth)
                return "the value of " + start->first + " depends on too many others in a row";
            if (!path.empty())
                path.back().node->second.depth = std::max(path.back().node->second.depth, depth);
            continue;
        }
        const Graph::iterator target = graph.find(node.references[step.next++]);
        if (target == graph.end())
            continue;
        if (target->second.state == Node::OnPath)
            return "the value of " + target->first + " depends on itself";
        if (target->second.state == Node::Done)
        {
            node.depth = std::max(node.depth, target->second.depth + 1);
            continue;
        }
        target->second.state = Node::OnPath;
        path.push_back(Step{target, 0});
    }
    return std::string();
}

} // namespace

std::string ProblemOfReferences(xmlNode* root)
{
    Graph graph;
    std::string problem = Gather(root, std::string(), 0, graph);
    for (Graph::iterator node = graph.begin(); problem.empty() && node != graph.end(); ++node)
        if (node->second.state == Node::Unseen)
            problem = Follow(graph, node);
    return problem;
}

} // namespace KltAPI
} // namespace OPX
