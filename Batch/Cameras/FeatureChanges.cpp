#include "Cameras/FeatureChanges.h"

#include "Schema/Number.h"

#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>

using namespace OPX::KltAPI;

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

/// A limit of a feature; null if there is none.
const LimitRow* LimitOf(const FeatureRow& feature, const std::string& name)
{
    for (const LimitRow& limit : feature.limits)
        if (limit.name == name)
            return &limit;
    return nullptr;
}

/// The limit as a number. Without one, all numbers of the type are allowed.
std::optional<long double> NumberOf(const FeatureRow& feature, const std::string& name)
{
    if (const LimitRow* const limit = LimitOf(feature, name))
        return limit->Number();
    const long double largest = feature.type == "Int" ? static_cast<long double>(INT64_MAX) : HUGE_VALL;
    if (name == "Inc")
        return feature.type == "Int" ? std::optional<long double>(1) : std::nullopt;
    return name == "Max" ? largest : feature.type == "Int" ? -largest - 1 : -largest;
}

bool IsSame(const LimitRow* before, const LimitRow* after)
{
    return before == after || (before != nullptr && after != nullptr && before->IsSame(*after));
}

/// Whether the steps of a feature lead from \a minimum to \a value.
bool IsReached(const FeatureRow& feature, long double value, long double minimum, long double step)
{
    const auto fits = [](long double number) { return number >= INT64_MIN && number <= INT64_MAX; };
    if (feature.type == "Int" && fits(value) && fits(minimum) && fits(step))
        return IsOnIncrement(
            static_cast<std::int64_t>(value), static_cast<std::int64_t>(minimum), static_cast<std::int64_t>(step));
    return IsOnIncrement(static_cast<double>(value), static_cast<double>(minimum), static_cast<double>(step));
}

/// The increment that counts, from the minimum on; null if none does. Without a minimum, integers are counted from the
/// least of all, and real numbers not at all.
const LimitRow* StepOf(const FeatureRow& feature)
{
    return feature.type == "Float" && LimitOf(feature, "Min") == nullptr ? nullptr : LimitOf(feature, "Inc");
}

/// Whether the steps of \a after leave out values of \a before, since they are counted from another minimum.
bool MovesSteps(const FeatureRow& before, const FeatureRow& after)
{
    const LimitRow* const inc = StepOf(after);
    if (inc == nullptr)
        return false;
    const std::optional<long double> was = NumberOf(before, "Min");
    const std::optional<long double> is = NumberOf(after, "Min");
    const std::optional<long double> step = inc->Number();
    return !was || !is || !step || !IsReached(after, *was, *is, *step);
}

/// Whether the camera may refuse a value now that it took before, or take it for another one.
bool Restricts(const std::string& limit, const FeatureRow& before, const FeatureRow& after)
{
    const bool isNew = LimitOf(before, limit) == nullptr;
    const bool isGone = LimitOf(after, limit) == nullptr;
    if (limit == "Unit" || !before.writable)
        return limit == "Unit" && !isNew && !isGone;
    const std::optional<long double> was = NumberOf(before, limit);
    const std::optional<long double> is = NumberOf(after, limit);
    if (limit == "Min")
        return (!isGone && (!is || !was || *is > *was)) || (!isNew && MovesSteps(before, after));
    if (isGone || (limit == "Inc" && StepOf(after) == nullptr))
        return false;
    if (!is || !was)
        return true;
    return limit == "Max" ? *is < *was : !IsReached(after, *was, 0, *is);
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
        for (const std::string name : LimitNames)
        {
            const LimitRow* const before = LimitOf(m_before, name);
            const LimitRow* const after = LimitOf(m_after, name);
            // What helps the camera may have another name in every firmware.
            const bool vary = before != nullptr && after != nullptr && before->varies && after->varies;
            if (!vary && !IsSame(before, after))
                Add(name, TextOf(before), TextOf(after), Restricts(name, m_before, m_after));
        }
    }

    static std::optional<std::string> TextOf(const LimitRow* limit)
    {
        return limit == nullptr ? std::nullopt : std::optional<std::string>(limit->value);
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
