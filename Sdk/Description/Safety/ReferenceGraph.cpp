#include "Safety/ReferenceGraph.h"

#include <algorithm>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

const std::size_t MaximumDepth = 200;
const std::size_t MaximumSteps = 1000000;

} // namespace

ReferenceGraph::Index ReferenceGraph::NodeOf(std::string_view name)
{
    const auto known = m_indices.find(name);
    if (known != m_indices.end())
        return known->second;
    const Index index = NamelessNode(std::string(name));
    m_indices.emplace(m_nodes.back().name, index);
    return index;
}

ReferenceGraph::Index ReferenceGraph::NamelessNode(std::string description)
{
    m_nodes.emplace_back();
    m_nodes.back().name = std::move(description);
    return m_nodes.size() - 1;
}

std::string ReferenceGraph::FindProblem()
{
    std::string problem;
    for (Index node = 0; problem.empty() && node < m_nodes.size(); ++node)
        if (m_nodes[node].state == Node::Unseen)
            problem = Follow(node);
    return problem;
}

/// Without recursion: the description decides how deep the references go.
std::string ReferenceGraph::Follow(Index start)
{
    struct Step
    {
        Node* node;
        std::size_t next;
    };
    std::vector<Step> path(1, Step{&m_nodes[start], 0});
    path.back().node->state = Node::OnPath;
    while (!path.empty())
    {
        Step& step = path.back();
        Node& node = *step.node;
        if (step.next == node.references.size())
        {
            node.state = Node::Done;
            if (node.depth > MaximumDepth)
                return "the value of " + node.name + " depends on too many others in a row";
            if (node.steps > MaximumSteps)
                return "the value of " + node.name + " takes too many steps";
            path.pop_back();
            continue;
        }
        Node& target = m_nodes[node.references[step.next]];
        if (target.state == Node::Done)
        {
            ++step.next;
            node.depth = std::max(node.depth, target.depth + 1);
            node.steps += target.steps;
            continue;
        }
        if (target.state == Node::OnPath)
            return "the value of " + target.name + " depends on itself";
        // Looked at again when it is done.
        target.state = Node::OnPath;
        path.push_back(Step{&target, 0});
    }
    return std::string();
}

} // namespace OPX::KltAPI
