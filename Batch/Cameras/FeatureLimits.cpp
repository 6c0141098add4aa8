#include "Cameras/FeatureLimits.h"

#include "Document/Texts.h"
#include "Lint/ValueCheck.h"
#include "Schema/Number.h"
#include "Schema/Schema.h"

#include <algorithm>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

bool StandsBefore(const ValueRow& a, const ValueRow& b)
{
    const auto place = [](const ValueRow& row) { return std::find(LimitNames.begin(), LimitNames.end(), row.name); };
    return place(a) < place(b);
}

/// Whether a node that refers to \a node has the same values. What a formula makes of them has other limits.
bool SharesValues(const DescriptionElement* node)
{
    return node != nullptr && (node->tag == "Integer" || node->tag == "Float");
}

/// Nothing if there is no text. The node decides how it is read.
std::optional<ValueRow> LiteralOf(
    const DescriptionElement& node, const DescriptionElement& literal, const std::string& limit)
{
    if (literal.text.empty())
        return std::nullopt;
    return ValueRow{limit, WithoutControls(literal.text), {}, !HoldsWholeNumbers(node)};
}

} // namespace

FeatureLimits::FeatureLimits(const DescriptionElement& description)
{
    m_nodes.reserve(description.children.size());
    for (const DescriptionElement& node : description.children)
    {
        if (IsRead(node.tag))
            m_nodes.insert_or_assign(node.name, &node);
        for (const DescriptionElement& child : node.children)
            if (child.tag == "pFeature")
                m_features.insert(child.Target());
    }
}

std::vector<ValueRow> FeatureLimits::Of(const std::string& feature) const
{
    std::vector<ValueRow> limits;
    const auto node = m_nodes.find(feature);
    if (node == m_nodes.end())
        return limits;
    for (const char* name : LimitNames)
        if (std::optional<ValueRow> limit = Find(*node->second, name))
            limits.push_back(std::move(*limit));
    return limits;
}

/// This ends: the SDK has refused nodes whose values depend on themselves.
std::optional<ValueRow> FeatureLimits::Find(const DescriptionElement& node, const std::string& limit) const
{
    if (const DescriptionElement* const literal = node.Child(limit))
        return LiteralOf(node, *literal, limit);
    if (const DescriptionElement* const reference = node.Child('p' + limit))
    {
        const DescriptionElement* const owner = NodeOfConstant(*reference);
        return owner == nullptr ? ValueRow{limit, WithoutControls(reference->text), {}, false, true}
                                : LiteralOf(*owner, *owner->Child("Value"), limit);
    }
    const DescriptionElement* const value = limit == "Unit" ? nullptr : Node(node.Child("pValue"));
    return SharesValues(value) ? Find(*value, limit) : std::nullopt;
}

const DescriptionElement* FeatureLimits::Node(const DescriptionElement* reference) const
{
    const auto node = reference == nullptr ? m_nodes.end() : m_nodes.find(reference->Target());
    return node == m_nodes.end() ? nullptr : node->second;
}

/// The node with the constant that a reference leads to; null if the value is worked out, lies in a register or can be
/// written.
const DescriptionElement* FeatureLimits::NodeOfConstant(const DescriptionElement& reference) const
{
    const DescriptionElement* node = Node(&reference);
    while (SharesValues(node) && node->Child("pValue") != nullptr)
        node = Node(node->Child("pValue"));
    if (!SharesValues(node))
        return nullptr;
    const DescriptionElement* const access = node->Child("ImposedAccessMode");
    const bool isWritable = m_features.count(node->name) > 0 && (access == nullptr || access->text != "RO");
    return isWritable || node->Child("Value") == nullptr ? nullptr : node;
}

std::optional<long double> NumberOf(const ValueRow& limit)
{
    if (limit.varies || limit.name == "Unit")
        return std::nullopt;
    const DescriptionNumber number(limit.value, !limit.isReal);
    return number.comparable ? std::optional<long double>(number.Value()) : std::nullopt;
}

bool IsSameLimit(const ValueRow& one, const ValueRow& other)
{
    if (one.value == other.value && one.varies == other.varies)
        return true;
    const std::optional<long double> number = NumberOf(one);
    return number && number == NumberOf(other);
}

void AddLimits(FeatureRow& row, const std::vector<ValueRow>& limits, const std::string& camera)
{
    std::vector<ValueRow>& known = row.limits;
    for (const ValueRow& limit : limits)
    {
        auto place = std::find_if(known.begin(), known.end(),
            [&](const ValueRow& any) { return any.name == limit.name && IsSameLimit(any, limit); });
        if (place == known.end())
            place = known.insert(std::upper_bound(known.begin(), known.end(), limit, StandsBefore), limit);
        place->cameras.push_back(camera);
    }
}
