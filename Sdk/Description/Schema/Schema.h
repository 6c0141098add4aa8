#ifndef SCHEMA_H
#define SCHEMA_H

#include <array>
#include <string_view>
#include <vector>

namespace OPX::KltAPI
{

/// What nodes of a kind are and can do. Bits: a kind has several.
struct Trait
{
    enum Bits : unsigned
    {
        Read = 1U << 0U,      ///< The SDK knows it. Other kinds cannot be features, and may hold what they like.
        Register = 1U << 1U,  ///< It is a part of the camera's memory, with an address and a length.
        Numeric = 1U << 2U,   ///< A register that Aravis fetches as a whole as soon as a number in it is needed.
        Struct = 1U << 3U,    ///< It is divided into entries.
        Masked = 1U << 4U,    ///< It is some of the bits of a register.
        Formula = 1U << 5U,   ///< Its value is worked out,
        Knife = 1U << 6U,     ///< by one formula,
        Converter = 1U << 7U, ///< or by one for each direction.
        Real = 1U << 8U,      ///< Its numbers can have fractions.
        Limited = 1U << 9U,   ///< It can have limits of its own.
        Plain = 1U << 10U,    ///< It has the values of the node that it refers to, unchanged.
        Holder = 1U << 11U,   ///< It has a value of its own, or that of another node.
        Entry = 1U << 12U,    ///< One choice of an enumeration.
        Enumeration = 1U << 13U,
        Boolean = 1U << 14U,
        Command = 1U << 15U,
        Text = 1U << 16U,
        Category = 1U << 17U,
        Port = 1U << 18U
    };
};

/// A kind of nodes.
struct NodeKind
{
    std::string_view tag;
    unsigned traits;
    std::string_view whole; ///< The kind of node that it is a part of; empty if it stands alone.

    bool Is(unsigned trait) const { return (traits & trait) != 0; }
};

/// Elements of which some kinds of nodes cannot do without one.
struct Need
{
    unsigned traits; ///< The nodes with one of these.
    std::vector<std::string_view> oneOf;
    const char* missing; ///< What a node without them lacks.
};

/// What an element within a node holds.
enum class Content
{
    Text,
    Formula,
    WholeNumber,
    RealNumber,
    NumberOfNode, ///< What kind of number depends on the node; it may also be a text.
    Node,         ///< The name of another node,
    NodeWithValue ///< which is asked for its value.
};

/// What an element can hold; the rest is empty.
typedef std::array<std::string_view, 7> Words;

/// A kind of elements within nodes.
struct ElementKind
{
    enum Uses : unsigned
    {
        Once = 0,
        Repeats = 1, ///< A node may have several.
        Decides = 2, ///< The value of the node that it names is needed for that of its own node.
        Shapes = 4   ///< It has a part in what the value of the node is, where it lies and how it is read.
    };

    std::string_view tag;
    Content content;
    unsigned uses = Once;
    unsigned places = ~0U;        ///< It has an effect in nodes with one of these traits.
    const Words* words = nullptr; ///< Null if what it can hold is not a matter of words.

    /// What happens if the node that it names has no number, for a sentence; null if it need not have one.
    const char* withoutNumber = nullptr;

    bool Is(Uses use) const { return (uses & use) != 0; }

    /// Whether it does something in a node of this kind, or may.
    bool HasEffectIn(const NodeKind& node) const { return (places & node.traits) != 0 || !node.Is(Trait::Read); }
};

/// Null if there is no such kind of node.
const NodeKind* FindNodeKind(std::string_view tag);

/// Null if no version of GenApi has such an element.
const ElementKind* FindElementKind(std::string_view tag);

const std::vector<Need>& Needs();

/// Whether a node of the one kind can stand within one of the other.
bool CanContain(const NodeKind& outer, const NodeKind& inner);

/// For suggestions.
const std::vector<std::string_view>& TagsOfNodes();
const std::vector<std::string_view>& TagsOfElements();

} // namespace OPX::KltAPI

#endif
