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

/// A kind of nodes.
struct NodeKind
{
    bool isRead = true; ///< By the SDK. The others are of no use to it, and cannot be features.
    std::vector<const Need*> needs;
};

/// Null if there is no such kind of node.
const NodeKind* FindNodeKind(std::string_view tag);

/// For suggestions.
const std::vector<std::string>& NodeKinds();
const std::vector<std::string>& ElementsOfNodes();

#endif
