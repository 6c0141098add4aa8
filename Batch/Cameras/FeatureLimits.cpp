#include "Cameras/FeatureLimits.h"

#include "Base/Printable.h"
#include "Description/DescriptionNumber.h"
#include "Description/DescriptionSchema.h"

#include <algorithm>
#include <utility>

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
                m_features.insert(child.text);
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
    const DescriptionElement* literal = node.Child(limit);
    const DescriptionElement* const reference = literal == nullptr ? node.Child('p' + limit) : nullptr;
    if (reference != nullptr)
        literal = Constant(*reference);
    if (literal != nullptr)
        return literal->text.empty() ? std::nullopt
                                     : std::optional<ValueRow>({limit, Printable(literal->text), {}, false});
    if (reference != nullptr)
        return ValueRow{limit, Printable(reference->text), {}, true};
    const DescriptionElement* const value = limit == "Unit" ? nullptr : Node(node.Child("pValue"));
    return SharesValues(value) ? Find(*value, limit) : std::nullopt;
}

const DescriptionElement* FeatureLimits::Node(const DescriptionElement* reference) const
{
    const auto node = reference == nullptr ? m_nodes.end() : m_nodes.find(reference->text);
    return node == m_nodes.end() ? nullptr : node->second;
}

/// What a reference leads to, if that is a constant; null if it is worked out, lies in a register or can be written.
const DescriptionElement* FeatureLimits::Constant(const DescriptionElement& reference) const
{
    const DescriptionElement* node = Node(&reference);
    while (SharesValues(node) && node->Child("pValue") != nullptr)
        node = Node(node->Child("pValue"));
    if (!SharesValues(node))
        return nullptr;
    const DescriptionElement* const access = node->Child("ImposedAccessMode");
    const bool isWritable = m_features.count(node->name) > 0 && (access == nullptr || access->text != "RO");
    return isWritable ? nullptr : node->Child("Value");
}

std::optional<long double> NumberOf(const ValueRow& limit, const std::string& type)
{
    if (limit.varies || limit.name == "Unit")
        return std::nullopt;
    const DescriptionNumber number(limit.value, type == "Int");
    return number.comparable ? std::optional<long double>(number.Value()) : std::nullopt;
}

bool IsSameLimit(const ValueRow& one, const ValueRow& other, const std::string& type)
{
    if (one.value == other.value && one.varies == other.varies)
        return true;
    const std::optional<long double> number = NumberOf(one, type);
    return number && number == NumberOf(other, type);
}

void AddLimits(FeatureRow& row, const std::vector<ValueRow>& limits, const std::string& camera)
{
    std::vector<ValueRow>& known = row.limits;
    for (const ValueRow& limit : limits)
    {
        auto place = std::find_if(known.begin(), known.end(),
            [&](const ValueRow& any) { return any.name == limit.name && IsSameLimit(any, limit, row.type); });
        if (place == known.end())
            place = known.insert(std::upper_bound(known.begin(), known.end(), limit, StandsBefore), limit);
        place->cameras.push_back(camera);
    }
}
