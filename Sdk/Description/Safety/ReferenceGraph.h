#ifndef REFERENCEGRAPH_H
#define REFERENCEGRAPH_H

#include "Document/Document.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OPX::KltAPI
{

/// Which nodes of a description need the values of which others. Looks for what makes an evaluation endless or too
/// large: nodes that need their own value to work it out, chains of references that are deeper than the stack, nodes
/// that are evaluated millions of times for one value.
///
/// Limits and states (pMax, pIsLocked and the like) may be circular: they do not need the value of the node that they
/// belong to, and there are cameras with two features that limit each other.
class ReferenceGraph
{
public:
    typedef std::uint32_t Index; ///< There are at most as many nodes and references as elements and attributes.

    /// What is outside all nodes: its references lead nowhere, since no other node needs it.
    static constexpr Index Outside = 0;

    ReferenceGraph() : m_nodes(1) {}

    /// The node of this name, which may turn up later, or never.
    Index NodeOf(std::string_view name);

    /// The node that this element is; one of its own if it has no name.
    Index NodeOf(const Element& element);

    void AddReference(Index from, Index to);

    /// For messages.
    std::string NameOf(Index node) const;

    /// Follows all references. To be called once.
    Problem FindProblem();

private:
    static constexpr Index None = ~Index(0);

    struct Node
    {
        std::string_view name;
        const Element* element = nullptr; ///< Null as long as only the name is known.
        Index firstReference = None;
        Index lastReference = None;
        std::uint64_t steps = 1; ///< How many nodes are evaluated for the value of this one, once done.
        unsigned depth = 1;      ///< The longest chain of references from here, once done.
        enum
        {
            Unseen,
            OnPath,
            Done
        } state = Unseen;
    };

    struct Reference
    {
        Index to;
        Index next; ///< Of the same node.
    };

    Problem Follow(Index start);
    Problem ProblemOf(const Node& node, const char* what) const;

    std::vector<Node> m_nodes;
    std::vector<Reference> m_references;
    std::unordered_map<std::string_view, Index> m_indices;
};

} // namespace OPX::KltAPI

#endif
