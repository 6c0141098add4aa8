#include "Safety/ReferenceGraph.h"

#include "Document/Texts.h"

#include <algorithm>

namespace OPX::KltAPI
{
namespace
{

const unsigned MaximumReferences = 200;
const std::uint64_t MaximumReferenceSteps = 1000000;

} // namespace

ReferenceGraph::Index ReferenceGraph::NodeOf(std::string_view name)
{
    const auto [known, added] = m_indices.emplace(name, static_cast<Index>(m_nodes.size()));
    if (added)
        m_nodes.emplace_back().name = name;
    return known->second;
}

ReferenceGraph::Index ReferenceGraph::NodeOf(const Element& element)
{
    const std::string_view name = Trimmed(element.name);
    const auto index = name.empty() ? static_cast<Index>(m_nodes.size()) : NodeOf(name);
    if (name.empty())
        m_nodes.emplace_back();
    if (m_nodes[index].element == nullptr)
        m_nodes[index].element = &element;
    return index;
}

void ReferenceGraph::AddReference(Index from, Index to)
{
    if (from == Outside)
        return;
    Node& node = m_nodes[from];
    const auto reference = static_cast<Index>(m_references.size());
    (node.firstReference == None ? node.firstReference : m_references[node.lastReference].next) = reference;
    node.lastReference = reference;
    m_references.push_back({to, None});
}

Problem ReferenceGraph::FindProblem()
{
    Problem problem;
    for (Index node = 0; !problem && node < m_nodes.size(); ++node)
        if (m_nodes[node].state == Node::Unseen)
            problem = Follow(node);
    return problem;
}

/// Without recursion: the description decides how deep the references go.
Problem ReferenceGraph::Follow(Index start)
{
    struct Step
    {
        Node* node;
        Index next; ///< Reference to follow.
    };
    std::vector<Step> path(1, Step{&m_nodes[start], m_nodes[start].firstReference});
    path.back().node->state = Node::OnPath;
    while (!path.empty())
    {
        Step& step = path.back();
        Node& node = *step.node;
        if (step.next == None)
        {
            node.state = Node::Done;
            if (node.depth > MaximumReferences)
                return ProblemOf(node, "depends on too many others in a row");
            if (node.steps > MaximumReferenceSteps)
                return ProblemOf(node, "takes too many steps");
            path.pop_back();
            continue;
        }
        Node& target = m_nodes[m_references[step.next].to];
        if (target.state == Node::Done)
        {
            step.next = m_references[step.next].next;
            node.depth = std::max(node.depth, target.depth + 1);
            node.steps += target.steps;
            continue;
        }
        if (target.state == Node::OnPath)
            return ProblemOf(target, "depends on itself");
        // Looked at again when it is done.
        target.state = Node::OnPath;
        path.push_back(Step{&target, target.firstReference});
    }
    return Problem();
}

std::string ReferenceGraph::NameOf(Index node) const
{
    const Node& known = m_nodes[node];
    const bool isNameless = known.name.empty() && known.element != nullptr;
    return isNameless ? "a nameless " + std::string(known.element->tag) : std::string(known.name);
}

Problem ReferenceGraph::ProblemOf(const Node& node, const char* what) const
{
    const auto index = static_cast<Index>(&node - m_nodes.data());
    return {"the value of " + NameOf(index) + " " + what, node.element == nullptr ? 0 : node.element->line};
}

} // namespace OPX::KltAPI
