#ifndef DESCRIPTIONSCHEMA_H
#define DESCRIPTIONSCHEMA_H

#include <string>
#include <string_view>
#include <vector>

/// What an element within a node holds.
enum class Content
{
    Unknown, ///< No version of GenApi has such an element.
    Text,
    WholeNumber,
    RealNumber,
    NumberOfNode, ///< What kind of number depends on the node; it may also be a text.
    Node,         ///< The name of another node,
    NodeWithValue ///< which is asked for its value.
};

/// Elements of which some kinds of nodes cannot do without one.
struct Need
{
    std::vector<std::string_view> kinds;
    std::vector<std::string_view> oneOf;
    const char* missing; ///< What a node without them lacks.
};

/// What an element of this name holds.
Content ContentOf(const std::string& tag);

/// Whether a node of this kind is a part of another one of that kind.
bool CanContain(std::string_view outer, std::string_view inner);

/// What a node of this kind cannot do without; null if there is no such kind of node.
const std::vector<const Need*>* NeedsOf(std::string_view kind);

/// For suggestions.
const std::vector<std::string>& NodeKinds();
const std::vector<std::string>& ElementsOfNodes();

#endif
