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

/// What stands in a row; nothing if there is no row.
template <class Row>
std::optional<std::string> ValueIn(const Row* row)
{
    return row == nullptr ? std::nullopt : std::optional<std::string>(row->value);
}

/// The changes of a feature that both versions have.
std::vector<FeatureChange> ChangesBetween(const FeatureRow& before, const FeatureRow& after)
{
    std::vector<FeatureChange> changes;
    typedef const std::optional<std::string>& Value;
    const auto add = [&](const std::string& property, const std::string& entry, Value was, Value is, bool isBreaking) {
        changes.push_back({after.name, property, entry, was, is, isBreaking});
    };
    if (before.category != after.category)
        add("category", "", before.category, after.category, false);
    if (before.AccessText() != after.AccessText())
        add("access", "", before.AccessText(), after.AccessText(),
            (before.readable && !after.readable) || (before.writable && !after.writable));
    if (before.type != after.type)
    {
        add("type", "", before.type, after.type, true);
        return changes;
    }
    for (const auto& [name, rows] : Pairs(before.entries, after.entries))
        if (const auto [was, is] = rows; was == nullptr || is == nullptr || was->value != is->value)
            add("entry", name, ValueIn(was), ValueIn(is), was != nullptr);
    for (const char* const name : LimitNames)
    {
        const LimitRow* const was = LimitOf(before, name);
        const LimitRow* const is = LimitOf(after, name);
        // What helps the camera may have another name in every firmware.
        const bool isSame =
            was == nullptr || is == nullptr ? was == is : was->IsSame(*is) || (was->varies && is->varies);
        if (!isSame)
            add(name, "", ValueIn(was), ValueIn(is), Restricts(name, before, after));
    }
    return changes;
}

std::vector<FeatureChange> ChangesOf(const std::string& name, const FeatureRow* before, const FeatureRow* after)
{
    const auto text = [](const FeatureRow& row) { return row.type + ", " + row.AccessText(); };
    std::vector<FeatureChange> changes;
    if (before == nullptr)
        changes.push_back({name, std::string(), std::string(), std::nullopt, text(*after), false});
    else if (after == nullptr)
        changes.push_back({name, std::string(), std::string(), text(*before), std::nullopt, true});
    else
        changes = ChangesBetween(*before, *after);
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
