#include "Cameras/ChangedRange.h"

#include "Schema/Number.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

using namespace OPX::KltAPI;

namespace
{

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

Effect BreakingIf(bool breaks)
{
    return breaks ? Effect::Breaking : Effect::Compatible;
}

/// Whether the steps of \a after leave out values of \a before, since they are counted from another minimum.
Effect EffectOfSteps(const FeatureRow& before, const FeatureRow& after)
{
    const LimitRow* const inc = StepOf(after);
    if (inc == nullptr)
        return Effect::Compatible;
    const std::optional<long double> was = NumberOf(before, "Min");
    const std::optional<long double> is = NumberOf(after, "Min");
    const std::optional<long double> step = inc->Number();
    return !was || !is || !step ? Effect::Unclear : BreakingIf(!IsReached(after, *was, *is, *step));
}

std::optional<long double> IntegerOf(const Element* element)
{
    const DescriptionNumber number(element == nullptr ? std::string_view() : element->Text(), true);
    return number.comparable ? std::optional<long double>(number.Value()) : std::nullopt;
}

} // namespace

const LimitRow* LimitOf(const FeatureRow& feature, const std::string& name)
{
    for (const LimitRow& limit : feature.limits)
        if (limit.name == name)
            return &limit;
    return nullptr;
}

Effect EffectOfLimit(const std::string& limit, const FeatureRow& before, const FeatureRow& after)
{
    const bool isNew = LimitOf(before, limit) == nullptr;
    const bool isGone = LimitOf(after, limit) == nullptr;
    if (!before.writable)
        return Effect::Compatible;
    const std::optional<long double> was = NumberOf(before, limit);
    const std::optional<long double> is = NumberOf(after, limit);
    const bool isKnown = was && is;
    if (limit == "Min")
        return std::max(isGone    ? Effect::Compatible
                        : isKnown ? BreakingIf(*is > *was)
                                  : Effect::Unclear,
            isNew ? Effect::Compatible : EffectOfSteps(before, after));
    if (isGone || (limit == "Inc" && StepOf(after) == nullptr))
        return Effect::Compatible;
    if (!isKnown)
        return Effect::Unclear;
    return BreakingIf(limit == "Max" ? *is < *was : !IsReached(after, *was, 0, *is));
}

std::string Storage::Text(bool isNumber) const
{
    if (!bits)
        return "of varying length";
    return std::to_string(static_cast<long long>(isNumber ? *bits : *bits / 8)) + (isNumber ? " bits" : " bytes") +
           (isSigned ? ", signed" : "");
}

long double Storage::Least() const
{
    return isSigned ? -std::exp2(*bits - 1) : 0;
}

long double Storage::Largest() const
{
    return std::exp2(*bits - (isSigned ? 1 : 0)) - 1;
}

std::optional<Storage> StorageOf(const Element& node, const NodeStructure& structure)
{
    if (!node.node->Is(Trait::Register | Trait::Masked))
        return std::nullopt;
    const Element& whole = structure.WholeOf(node);
    const Element* const sign = node.Child("Sign") == nullptr ? whole.Child("Sign") : node.Child("Sign");
    Storage storage = {IntegerOf(whole.Child("Length")), sign != nullptr && sign->Text() == "Signed"};
    if (storage.bits)
        storage.bits = *storage.bits * 8;
    const std::optional<long double> first = IntegerOf(node.Child("LSB"));
    const std::optional<long double> last = IntegerOf(node.Child("MSB"));
    if (node.Child("Bit") != nullptr)
        storage.bits = 1;
    else if (first && last)
        storage.bits = std::fabs(*first - *last) + 1;
    return storage;
}

Effect EffectOfStorage(const Storage& was, const Storage& is, const FeatureRow& before, bool isPlain)
{
    if (!was.bits || !is.bits)
        return Effect::Unclear;
    if (before.type != "Int")
        return BreakingIf(*is.bits < *was.bits);
    const auto limit = [&](const char* name, long double natural)
    { return isPlain && LimitOf(before, name) != nullptr ? NumberOf(before, name).value_or(natural) : natural; };
    return BreakingIf(std::max(limit("Min", was.Least()), was.Least()) < is.Least() ||
                      std::min(limit("Max", was.Largest()), was.Largest()) > is.Largest());
}
