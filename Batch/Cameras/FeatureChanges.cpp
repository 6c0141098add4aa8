#include "Cameras/FeatureChanges.h"

#include "Description/DescriptionNumber.h"

#include <cmath>
#include <map>
#include <utility>

namespace
{

/// The rows of both versions by name; null where a version has none of this name.
template <class Row>
std::map<std::string, std::pair<const Row*, const Row*>> Pairs(
    const std::vector<Row>& before, const std::vector<Row>& after)
{
    std::map<std::string, std::pair<const Row*, const Row*>> pairs;
    for (const Row& row : before)
        pairs[row.name].first = &row;
    for (const Row& row : after)
        pairs[row.name].second = &row;
    return pairs;
}

/// A limit of a feature; nothing where there is none.
std::optional<std::string> LimitOf(const FeatureRow& feature, const std::string& name)
{
    for (const ValueRow& limit : feature.limits)
        if (limit.name == name)
            return limit.value;
    return std::nullopt;
}

/// The same as a number, in a type that holds integers of 64 bits, too.
std::optional<long double> NumberOf(const FeatureRow& feature, const std::string& name)
{
    const std::optional<std::string> limit = LimitOf(feature, name);
    if (!limit || name == "Unit")
        return std::nullopt;
    const DescriptionNumber number(*limit, feature.type == "Int");
    return number.comparable ? std::optional<long double>(number.Value()) : std::nullopt;
}

bool IsSame(const std::string& limit, const FeatureRow& before, const FeatureRow& after)
{
    if (LimitOf(before, limit) == LimitOf(after, limit))
        return true;
    const std::optional<long double> number = NumberOf(before, limit);
    return number && number == NumberOf(after, limit);
}

/// Whether the steps lead to a value in this distance. Decimal fractions are not exact.
bool IsMultiple(long double distance, long double step)
{
    return std::abs(std::remainder(distance, step)) <= 1e-9L * std::abs(step);
}

/// Whether the camera may refuse a value now that it took before, or take it for another one.
bool Restricts(const std::string& limit, const FeatureRow& before, const FeatureRow& after)
{
    if (!LimitOf(after, limit))
        return false;
    if (limit == "Unit")
        return LimitOf(before, limit).has_value();
    if (!before.writable)
        return false;
    const std::optional<long double> was = NumberOf(before, limit);
    const std::optional<long double> is = NumberOf(after, limit);
    const std::optional<long double> step = NumberOf(after, "Inc");
    if (limit == "Inc")
        return !is || (!was && before.type != "Int") || !IsMultiple(was.value_or(1), *is);
    if (!is || !was)
        return true;
    if (limit == "Max")
        return *is < *was;
    return *is > *was || (step && !IsMultiple(*was - *is, *step));
}

/// Gathers the changes of one feature that both versions have.
class Comparison
{
public:
    Comparison(const FeatureRow& before, const FeatureRow& after) : m_before(before), m_after(after) {}

    std::vector<FeatureChange> Changes()
    {
        if (m_before.category != m_after.category)
            Add("category", m_before.category, m_after.category, false);
        if (m_before.AccessText() != m_after.AccessText())
            Add("access", m_before.AccessText(), m_after.AccessText(),
                (m_before.readable && !m_after.readable) || (m_before.writable && !m_after.writable));
        if (m_before.type != m_after.type)
            Add("type", m_before.type, m_after.type, true);
        else
        {
            CompareEntries();
            CompareLimits();
        }
        return std::move(m_changes);
    }

private:
    void Add(const std::string& property, const std::optional<std::string>& before,
        const std::optional<std::string>& after, bool isBreaking, const std::string& entry = std::string())
    {
        m_changes.push_back({m_after.name, property, entry, before, after, isBreaking});
    }

    void CompareEntries()
    {
        for (const auto& [name, pair] : Pairs(m_before.entries, m_after.entries))
        {
            const auto [before, after] = pair;
            if (before == nullptr)
                Add("entry", std::nullopt, after->value, false, name);
            else if (after == nullptr)
                Add("entry", before->value, std::nullopt, true, name);
            else if (before->value != after->value)
                Add("entry", before->value, after->value, true, name);
        }
    }

    void CompareLimits()
    {
        for (const auto& [name, pair] : Pairs(m_before.limits, m_after.limits))
        {
            const std::optional<std::string> before = LimitOf(m_before, name);
            const std::optional<std::string> after = LimitOf(m_after, name);
            const bool isHeldElsewhere = (before && before->empty()) || (after && after->empty());
            if (!isHeldElsewhere && !IsSame(name, m_before, m_after))
                Add(name, before, after, Restricts(name, m_before, m_after));
        }
    }

    const FeatureRow& m_before;
    const FeatureRow& m_after;
    std::vector<FeatureChange> m_changes;
};

std::vector<FeatureChange> ChangesOf(const std::string& name, const FeatureRow* before, const FeatureRow* after)
{
    const auto text = [](const FeatureRow& row) { return row.type + ", " + row.AccessText(); };
    std::vector<FeatureChange> changes;
    if (before == nullptr)
        changes.push_back({name, std::string(), std::string(), std::nullopt, text(*after), false});
    else if (after == nullptr)
        changes.push_back({name, std::string(), std::string(), text(*before), std::nullopt, true});
    else
        changes = Comparison(*before, *after).Changes();
    // For these the class has no methods that code could use.
    if (before != nullptr && (before->type == "Unknown" || before->type == "None"))
        for (FeatureChange& change : changes)
            change.isBreaking = false;
    return changes;
}

} // namespace

std::vector<FeatureChange> ChangesBetween(const std::vector<FeatureRow>& before, const std::vector<FeatureRow>& after)
{
    std::vector<FeatureChange> changes;
    for (const auto& [name, pair] : Pairs(before, after))
        for (FeatureChange& change : ChangesOf(name, pair.first, pair.second))
            changes.push_back(std::move(change));
    return changes;
}
