#ifndef SCHEMA_H
#define SCHEMA_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace OPX::KltAPI
{

/// What an element within a node holds.
enum class Content
{
    Text,
    WholeNumber,
    RealNumber,
    Formula,
    NumberOfNode, ///< What kind of number depends on the node; it may also be a text.
    Node,         ///< The name of another node,
    NodeWithValue ///< which is asked for its value.
};

/// Kinds of nodes, each of which is a bit.
typedef unsigned KindSet;

/// A kind of elements within nodes.
struct ElementKind
{
    std::size_t index; ///< Of all kinds.
    Content content;
    bool mayRepeat = false;
    KindSet places = ~0U;                            ///< The nodes in which it has an effect, or may have one.
    const std::vector<std::string>* words = nullptr; ///< What it can hold; null if that is not a matter of words.
};

/// Elements of which some kinds of nodes cannot do without one.
struct Need
{
    std::vector<std::string_view> kinds;
    std::vector<std::string_view> oneOf;
    const char* missing; ///< What a node without them lacks.
};

/// Null if no version of GenApi has such an element.
const ElementKind* FindElementKind(std::string_view tag);

/// Whether a node of this kind is a part of another one of that kind.
bool CanContain(std::string_view outer, std::string_view inner);

/// A kind of nodes.
struct NodeKind
{
    KindSet bit;
    bool isRead = true; ///< By the SDK. The others cannot be features.
    std::vector<const Need*> needs;
};

/// Null if there is no such kind of node.
const NodeKind* FindNodeKind(std::string_view tag);

/// Whether the SDK reads nodes of this kind. Of several with one name, it has the last that it reads.
bool IsRead(std::string_view tag);

/// For suggestions.
const std::vector<std::string>& NodeKinds();
const std::vector<std::string>& ElementsOfNodes();

} // namespace OPX::KltAPI

#endif
