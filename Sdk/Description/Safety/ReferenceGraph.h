#ifndef REFERENCEGRAPH_H
#define REFERENCEGRAPH_H

#include <cstddef>
#include <deque>
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
    typedef std::size_t Index;

    /// The node of this name, which may turn up later, or never.
    Index NodeOf(std::string_view name);

    /// A node without a name; messages call it \a description.
    Index NamelessNode(std::string description);

    void AddReference(Index from, Index to) { m_nodes[from].references.push_back(to); }

    const std::string& NameOf(Index node) const { return m_nodes[node].name; }

    /// Follows all references. To be called once.
    /// \return what is wrong, empty if nothing is
    std::string FindProblem();

private:
    struct Node
    {
        std::string name;
        std::vector<Index> references;
        std::size_t depth = 1; ///< The longest chain of references from here, once done.
        std::size_t steps = 1; ///< How many nodes are evaluated for the value of this one, once done.
        enum
        {
            Unseen,
            OnPath,
            Done
        } state = Unseen;
    };

    std::string Follow(Index start);

    std::deque<Node> m_nodes; ///< Stay where they are: the keys below are their names.
    std::unordered_map<std::string_view, Index> m_indices;
};

} // namespace OPX::KltAPI

#endif
