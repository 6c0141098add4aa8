#include "Document/Limits.h"

#include "Document/Texts.h"
#include "Schema/Number.h"

#include <utility>

namespace OPX::KltAPI
{
namespace
{

/// Whether a node that refers to \a node has the same values. What a formula makes of them has other limits.
bool SharesValues(const Element* node)
{
    return node != nullptr && node->node != nullptr && node->node->Is(Trait::Plain);
}

/// Its own limit, or the reference to one; null if it has none, or none that has an effect.
const Element* OwnChild(const Element& node, const std::string& tag)
{
    const Element* const child = node.Child(tag);
    return child != nullptr && child->element->HasEffectIn(*node.node) ? child : nullptr;
}

/// Nothing if there is no text. The node decides how it is read.
std::optional<Limit> LiteralOf(const Element& node, const Element& literal, const std::string& limit)
{
    const std::string text(literal.Text());
    if (text.empty())
        return std::nullopt;
    return Limit{limit, WithoutControls(text), node.node->Is(Trait::Real)};
}

} // namespace

Limits::Limits(const Element& root, const NodeNames& nodes) : m_nodes(nodes)
{
    for (const Element& node : root)
        if (node.node != nullptr && node.node->Is(Trait::Category))
            for (const Element& child : node)
                if (child.tag == "pFeature")
                    m_features.insert(child.Target());
}

std::vector<Limit> Limits::Of(const std::string& feature) const
{
    std::vector<Limit> limits;
    const Element* const node = m_nodes.Find(feature);
    if (node == nullptr || node->node == nullptr)
        return limits;
    for (const char* name : LimitNames)
        if (std::optional<Limit> limit = Find(*node, name))
            limits.push_back(std::move(*limit));
    return limits;
}

/// This ends: nodes whose values depend on themselves have been refused.
std::optional<Limit> Limits::Find(const Element& node, const std::string& limit) const
{
    if (const Element* const literal = OwnChild(node, limit))
        return LiteralOf(node, *literal, limit);
    if (const Element* const reference = OwnChild(node, 'p' + limit))
    {
        const Element* const owner = NodeOfConstant(m_nodes.Find(reference));
        return owner == nullptr ? Limit{limit, WithoutControls(std::string(reference->Text())), false, true}
                                : LiteralOf(*owner, *owner->Child("Value"), limit);
    }
    const Element* const value = limit == "Unit" ? nullptr : m_nodes.Find(node.Child("pValue"));
    return SharesValues(value) ? Find(*value, limit) : std::nullopt;
}

const Element* Limits::NodeOfConstant(const Element* node) const
{
    while (SharesValues(node) && node->Child("pValue") != nullptr)
        node = m_nodes.Find(node->Child("pValue"));
    if (!SharesValues(node))
        return nullptr;
    const Element* const access = node->Child("ImposedAccessMode");
    const bool isWritable = m_features.count(node->name) > 0 && (access == nullptr || access->Text() != "RO");
    return isWritable || node->Child("Value") == nullptr ? nullptr : node;
}

std::optional<long double> Limit::Number() const
{
    if (varies || name == "Unit")
        return std::nullopt;
    const DescriptionNumber number(value, !isReal);
    return number.comparable ? std::optional<long double>(number.Value()) : std::nullopt;
}

std::string Limit::Decimal() const
{
    const DescriptionNumber number(value, !isReal);
    if (varies || name == "Unit" || !number.comparable || !number.problem.empty())
        return value;
    return isReal ? DecimalText(static_cast<double>(number.Value())) : std::to_string(number.Integer());
}

bool Limit::IsSame(const Limit& other) const
{
    if (value == other.value && varies == other.varies)
        return true;
    const std::optional<long double> number = Number();
    return number && number == other.Number();
}

} // namespace OPX::KltAPI
