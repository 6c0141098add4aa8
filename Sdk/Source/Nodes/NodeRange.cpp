#include "Nodes/NodeRange.h"

#include "Nodes/NodeLinks.h"
#include "Nodes/NodeMap.h"
#include "Nodes/NodeValues.h"
#include "Schema/Number.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

const long double Largest = INT64_MAX;

/// Formulas and decimal fractions are not exact: the limits themselves can be written nevertheless.
const long double Inexact = 1e-12L;

bool IsNumber(ArvGcNode* node)
{
    const KltFeatureDataType type = DataTypeOf(node);
    return type == KltFeatureDataInt || type == KltFeatureDataFloat || type == KltFeatureDataEnum;
}

/// Whether the node has the values of the one behind it, if there is one, within limits of its own.
bool HasOwnLimits(ArvGcNode* node)
{
    return ARV_IS_GC_INTEGER_NODE(node) || ARV_IS_GC_FLOAT_NODE(node);
}

/// A limit that stands in \a node, or in the node that it names there.
long double ValueOf(ArvGcPropertyNode* property, ArvGcNode* node)
{
    ArvGcNode* const link = arv_gc_property_node_get_linked_node(property);
    return Checked(
        [&](GError** error) -> long double
        {
            if (ARV_IS_GC_NODE(link))
                return ReadNumber(link, error).AsWide();
            return ARV_IS_GC_FLOAT(node) ? static_cast<long double>(arv_gc_property_node_get_double(property, error))
                                         : static_cast<long double>(arv_gc_property_node_get_int64(property, error));
        });
}

/// The node whose value an integer or a float has now; null if that is its own.
ArvGcNode* PresentValueNode(ArvGcNode* node)
{
    ArvGcNode* present = ValueNode(node);
    std::optional<gint64> index;
    ForEachProperty(node,
        [&](ArvGcPropertyNode* property, ArvGcPropertyNodeType type)
        {
            const bool isChosen = ARV_IS_GC_VALUE_INDEXED_NODE(property) &&
                                  index == arv_gc_value_indexed_node_get_index(ARV_GC_VALUE_INDEXED_NODE(property));
            if (type == ARV_GC_PROPERTY_NODE_TYPE_P_INDEX)
                index = Checked([&](GError** error) { return arv_gc_property_node_get_int64(property, error); });
            else if (isChosen || (type == ARV_GC_PROPERTY_NODE_TYPE_P_VALUE_DEFAULT && present == nullptr))
                present = arv_gc_property_node_get_linked_node(property);
        });
    return present;
}

/// What stands in the node itself.
void TakeOwnLimits(ArvGcNode* node, Range& range)
{
    long double increment = 0;
    ForEachProperty(node,
        [&](ArvGcPropertyNode* property, ArvGcPropertyNodeType type)
        {
            switch (type)
            {
            case ARV_GC_PROPERTY_NODE_TYPE_MINIMUM:
            case ARV_GC_PROPERTY_NODE_TYPE_P_MINIMUM:
                range.minimum = std::max(range.minimum, ValueOf(property, node));
                break;
            case ARV_GC_PROPERTY_NODE_TYPE_MAXIMUM:
            case ARV_GC_PROPERTY_NODE_TYPE_P_MAXIMUM:
                range.maximum = std::min(range.maximum, ValueOf(property, node));
                break;
            case ARV_GC_PROPERTY_NODE_TYPE_INCREMENT:
            case ARV_GC_PROPERTY_NODE_TYPE_P_INCREMENT:
                increment = ValueOf(property, node);
                break;
            default:
                break;
            }
        });
    if (increment <= 0)
        return;
    range.increment = increment;
    range.base = range.minimum;
}

/// According to Aravis, an unsigned register of 64 bits holds half of the numbers, and a mask of all of them only 0.
bool HoldsAllBits(ArvGcNode* node, const long double (&limits)[2])
{
    const bool isMask = ARV_IS_GC_MASKED_INT_REG_NODE(node) || ARV_IS_GC_STRUCT_ENTRY_NODE(node);
    return (isMask && limits[0] == 0 && limits[1] == 0) || (ARV_IS_GC_INT_REG_NODE(node) && limits[1] == Largest);
}

Number ReadLimit(ArvGcNode* node, bool maximum, GError** error)
{
    if (ARV_IS_GC_FLOAT(node))
        return Number((maximum ? arv_gc_float_get_max : arv_gc_float_get_min)(ARV_GC_FLOAT(node), error));
    return Number((maximum ? arv_gc_integer_get_max : arv_gc_integer_get_min)(ARV_GC_INTEGER(node), error));
}

/// What follows from the size of a register, or from the limits of what a formula converts.
void TakeGivenLimits(ArvGcNode* node, Range& range)
{
    long double limits[2] = {range.minimum, range.maximum};
    for (const bool maximum : {false, true})
    {
        CallError error;
        const Number limit = ReadLimit(node, maximum, error.Out());
        if (error.Get() == nullptr)
            limits[maximum ? 1 : 0] = limit.AsWide();
        else if (!g_error_matches(error.Get(), ARV_GC_ERROR, ARV_GC_ERROR_PROPERTY_NOT_DEFINED))
            throw CallError(std::move(error));
    }
    if (HoldsAllBits(node, limits))
        return;
    range.minimum = std::max(range.minimum, limits[0]);
    range.maximum = std::min(range.maximum, limits[1]);
}

bool IsReached(const Range& range, long double number, bool isReal)
{
    if (range.increment == 0 || range.base <= -NoLimit)
        return true;
    if (!isReal)
        return std::remainder(number - range.base, range.increment) == 0;
    return IsOnIncrement(
        static_cast<double>(number), static_cast<double>(range.base), static_cast<double>(range.increment));
}

bool IsWithin(const Range& range, long double number, long double tolerance)
{
    return number >= range.minimum - tolerance * std::fabs(range.minimum) &&
           number <= range.maximum + tolerance * std::fabs(range.maximum);
}

/// The number nearest to \a wanted that the node can hold, whatever its limits.
long double Nearest(const Range& range, long double wanted, bool converted)
{
    if (converted && range.increment > 0 && range.base > -NoLimit)
        wanted = range.base + range.increment * std::round((wanted - range.base) / range.increment);
    return range.whole ? std::round(wanted) : wanted;
}

Failure Fit(const Range& range, Number& value, bool converted)
{
    const bool isReal = value.IsReal();
    const long double wanted = value.AsWide();
    const long double stored = isReal ? Nearest(range, wanted, converted) : wanted;
    const long double tolerance = isReal ? Inexact : 0;
    if (!IsWithin(range, wanted, tolerance) && !IsWithin(range, stored, tolerance))
        return {KltErrorInvalidValue, {"is out of bounds"}};
    if (!IsReached(range, converted ? stored : wanted, isReal))
        return {KltErrorInvalidValue, {"is not a whole number of increments above the minimum"}};
    const long double inside = std::min(std::max(stored, range.minimum), range.maximum);
    if (isReal && range.whole)
        value = Number(static_cast<std::int64_t>(inside < stored ? std::floor(inside) : std::ceil(inside)));
    else if (isReal)
        value = Number(static_cast<double>(inside));
    return KltErrorSuccess;
}

} // namespace

Range RangeOf(ArvGcNode* node)
{
    // It has an end: descriptions in which values depend on themselves are not opened.
    std::vector<ArvGcNode*> chain = {node};
    while (HasOwnLimits(chain.back()))
    {
        ArvGcNode* const next = PresentValueNode(chain.back());
        if (!ARV_IS_GC_FEATURE_NODE(next) || !IsNumber(next))
            break;
        chain.push_back(next);
    }
    Range range;
    for (ArvGcNode* each : chain)
        range.whole = range.whole || !ARV_IS_GC_FLOAT(each);
    if (range.whole)
    {
        range.minimum = static_cast<long double>(INT64_MIN);
        range.maximum = Largest;
    }
    if (!HasOwnLimits(chain.back()))
        TakeGivenLimits(chain.back(), range);
    std::for_each(chain.rbegin(), chain.rend(), [&](ArvGcNode* each) { TakeOwnLimits(each, range); });
    return range;
}

Range OnSteps(Range range)
{
    // Formulas and decimal fractions are not exact.
    const long double slack = range.whole ? 0 : 1e-9L;
    if (range.increment > 0 && std::fabs(range.base) < NoLimit)
    {
        const auto steps = [&range](long double limit) { return (limit - range.base) / range.increment; };
        range.minimum = range.base + std::ceil(steps(range.minimum) - slack) * range.increment;
        range.maximum = range.base + std::floor(steps(range.maximum) + slack) * range.increment;
    }
    if (!range.whole)
        return range;
    range.minimum = std::ceil(range.minimum);
    range.maximum = std::floor(range.maximum);
    return range;
}

const std::vector<std::int64_t>& ValidValuesOf(ArvGcNode* node)
{
    static const std::vector<std::int64_t> none;
    const ValidValues& known = DescriptionOf(node).validValues;
    for (ArvGcFeatureNode* each : known.empty() ? NodeChain() : ValueChain(ARV_GC_FEATURE_NODE(node)))
    {
        const auto found = known.find(NameOf(each));
        if (found != known.end())
            return found->second;
        if (!HasOwnLimits(ARV_GC_NODE(each)))
            break; // What follows has other values.
    }
    return none;
}

Failure FitIntoRange(ArvGcNode* node, Number& value, bool converted)
try
{
    Failure failure = IsNumber(node) ? Fit(RangeOf(node), value, converted) : Failure();
    const std::vector<std::int64_t>& valid = ValidValuesOf(node);
    const auto isValue = [&value](std::int64_t each) { return static_cast<long double>(each) == value.AsWide(); };
    if (!failure && !valid.empty() && std::none_of(valid.begin(), valid.end(), isValue))
        failure = {KltErrorInvalidValue, {"is not one of the valid values"}};
    return failure;
}
catch (const CallError& error)
{
    return error.Code();
}

} // namespace OPX::KltAPI
