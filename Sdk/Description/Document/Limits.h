#ifndef LIMITS_H
#define LIMITS_H

#include "Document/NodeNames.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace OPX::KltAPI
{

/// In the order in which they are listed.
const std::array<const char*, 4> LimitNames = {"Min", "Max", "Inc", "Unit"};

/// A limit of a feature, or its unit, as the description holds it.
struct Limit
{
    std::string name;    ///< One of the above.
    std::string value;   ///< Printable.
    bool isReal = false; ///< The value is read as a real number.
    bool varies = false; ///< The value is the name of a node that decides while the camera runs.

    /// As a number, in a type that holds integers of 64 bits, too; nothing if it is none, or varies.
    std::optional<long double> Number() const;

    /// The number in decimal digits, or the value as it stands if it is none, or not only one.
    std::string Decimal() const;

    /// Whether both say the same, in whatever spelling.
    bool IsSame(const Limit& other) const;
};

/// What a description holds of the limits of features; the SDK does not tell it. Refers to the document and its names.
class Limits
{
public:
    Limits(const Element& root, const NodeNames& nodes);

    /// The limits of a feature. Where it leaves one to another node, the constant in that node counts.
    std::vector<Limit> Of(const std::string& feature) const;

    /// The node with the constant that \a node has for its value; null if that is worked out, lies in a register or can
    /// be written, or if there is no node.
    const Element* NodeOfConstant(const Element* node) const;

private:
    std::optional<Limit> Find(const Element& node, const std::string& limit) const;

    const NodeNames& m_nodes;
    std::unordered_set<std::string_view> m_features; ///< Names that users see, and can set unless that is forbidden.
};

} // namespace OPX::KltAPI

#endif
