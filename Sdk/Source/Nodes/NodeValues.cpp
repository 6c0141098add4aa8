#include "Nodes/NodeValues.h"

#include "Base/ErrorCodes.h"
#include "Base/GlibPtr.h"
#include "Document/DocumentLimits.h"
#include "Nodes/NodeLinks.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace OPX::KltAPI
{
namespace
{

/// The limits of a node, of an integer or a float.
template <class Value>
struct Limits
{
    Value minimum;
    Value maximum;
    Value increment;
};

template <class Value, class Node>
KltErrorType ReadLimits(Node* node, Value (*minimum)(Node*, GError**), Value (*maximum)(Node*, GError**),
    Value (*increment)(Node*, GError**), Limits<Value>& limits)
{
    const auto read = [node](Value (*ask)(Node*, GError**), Value& value) -> KltErrorType
    {
        CallError error;
        const Value delivered = ask(node, error.Out());
        if (error.Get() == nullptr)
            value = delivered;
        // There is none: every masked register answers like this.
        else if (error.Get()->domain != ARV_GC_ERROR || error.Get()->code != ARV_GC_ERROR_PROPERTY_NOT_DEFINED)
            return CodeOf(error.Get());
        return KltErrorSuccess;
    };
    KltErrorType result = read(minimum, limits.minimum);
    if (result == KltErrorSuccess)
        result = read(maximum, limits.maximum);
    return result == KltErrorSuccess ? read(increment, limits.increment) : result;
}

/// According to Aravis, only 0 fits into a mask of all 64 bits.
bool IsMaskOfAllBits(ArvGcInteger* node, const Limits<gint64>& limits)
{
    return limits.minimum == 0 && limits.maximum == 0 &&
           ARV_IS_GC_MASKED_INT_REG_NODE(ValueChain(ARV_GC_FEATURE_NODE(node)).back());
}

/// Whether \a value is a whole number of increments away from \a minimum, within the precision of the numbers.
bool IsOnIncrement(double value, double minimum, double increment)
{
    const double epsilon = std::numeric_limits<double>::epsilon();
    const double tolerance = increment * 1e-6 + 4 * epsilon * (std::fabs(value) + std::fabs(minimum));
    return std::fabs(std::remainder(value - minimum, increment)) <= tolerance;
}

KltErrorType Fit(bool onIncrement, bool* offIncrement)
{
    if (offIncrement != nullptr)
        *offIncrement = !onIncrement;
    return onIncrement ? KltErrorSuccess : KltErrorInvalidValue;
}

template <class Write>
KltErrorType Perform(Write write)
{
    CallError error;
    write(error.Out());
    return CodeOf(error.Get());
}

/// Links that lead nowhere are ignored.
KltErrorType WriteNumber(ArvGcNode* node, const Number& value)
{
    return Perform(
        [&](GError** error)
        {
            if (ARV_IS_GC_ENUMERATION(node))
                arv_gc_enumeration_set_int_value(ARV_GC_ENUMERATION(node), value.AsInteger(), error);
            else if (ARV_IS_GC_INTEGER(node))
                arv_gc_integer_set_value(ARV_GC_INTEGER(node), value.AsInteger(), error);
            else if (ARV_IS_GC_FLOAT(node))
                arv_gc_float_set_value(ARV_GC_FLOAT(node), value.AsReal(), error);
            else if (ARV_IS_GC_BOOLEAN(node))
                arv_gc_boolean_set_value(ARV_GC_BOOLEAN(node), value.AsReal() != 0 ? TRUE : FALSE, error);
        });
}

} // namespace

KltErrorType LengthOf(ArvGcRegister* node, guint64& length)
{
    CallError error;
    length = arv_gc_register_get_length(node, error.Out());
    if (error.Get() != nullptr)
        return CodeOf(error.Get());
    return length > static_cast<guint64>(MaximumRegisterLength) ? KltErrorResources : KltErrorSuccess;
}

KltErrorType CheckLength(ArvGcFeatureNode* node)
{
    for (ArvGcFeatureNode* each : ValueChain(node))
    {
        guint64 length = 0;
        if (!ARV_IS_GC_REGISTER(each))
            continue;
        const KltErrorType result = LengthOf(ARV_GC_REGISTER(each), length);
        if (result != KltErrorSuccess || length == 0)
            return result != KltErrorSuccess ? result : static_cast<KltErrorType>(KltErrorInvalidValue);
    }
    return KltErrorSuccess;
}

KltErrorType CheckRange(ArvGcInteger* node, KltInt64_t value, bool* offIncrement)
{
    Limits<gint64> limits = {G_MININT64, G_MAXINT64, 1};
    const KltErrorType result =
        ReadLimits(node, arv_gc_integer_get_min, arv_gc_integer_get_max, arv_gc_integer_get_inc, limits);
    if (result != KltErrorSuccess || IsMaskOfAllBits(node, limits))
        return result;
    if (value < limits.minimum || value > limits.maximum)
        return KltErrorInvalidValue;
    // As unsigned numbers: the distance can be larger than a signed number can be.
    const guint64 distance = static_cast<guint64>(value) - static_cast<guint64>(limits.minimum);
    return Fit(limits.increment <= 1 || distance % static_cast<guint64>(limits.increment) == 0, offIncrement);
}

KltErrorType CheckRange(ArvGcFloat* node, double value, bool* offIncrement)
{
    Limits<double> limits = {-G_MAXDOUBLE, G_MAXDOUBLE, 0};
    const KltErrorType result =
        ReadLimits(node, arv_gc_float_get_min, arv_gc_float_get_max, arv_gc_float_get_inc, limits);
    if (result != KltErrorSuccess)
        return result;
    if (!(value >= limits.minimum && value <= limits.maximum))
        return KltErrorInvalidValue;
    // Without an increment it is the smallest number that there is, without a minimum that is the largest one.
    return Fit(limits.increment <= G_MINDOUBLE || limits.minimum <= -G_MAXFLOAT ||
                   IsOnIncrement(value, limits.minimum, limits.increment),
        offIncrement);
}

KltErrorType ReadText(ArvGcString* node, std::string& value)
{
    const KltErrorType result = CheckLength(ARV_GC_FEATURE_NODE(node));
    if (result != KltErrorSuccess)
        return result;
    CallError error;
    const char* text = arv_gc_string_get_value(node, error.Out());
    if (error.Get() == nullptr)
        value = text == nullptr ? "" : text;
    return CodeOf(error.Get());
}

KltErrorType ReadBytes(ArvGcRegister* node, UcharVector& value)
{
    guint64 length = 0;
    const KltErrorType result = LengthOf(node, length);
    if (result != KltErrorSuccess)
        return result;
    UcharVector bytes(length);
    CallError error;
    if (length > 0)
        arv_gc_register_get(node, bytes.data(), length, error.Out());
    if (error.Get() == nullptr)
        value.swap(bytes);
    return CodeOf(error.Get());
}

KltErrorType WriteInteger(ArvGcInteger* node, KltInt64_t value)
{
    const KltErrorType result = CheckRange(node, value);
    return result == KltErrorSuccess ? Perform([&](GError** error) { arv_gc_integer_set_value(node, value, error); })
                                     : result;
}

KltErrorType WriteFloat(ArvGcFloat* node, double value)
{
    const KltErrorType result = CheckRange(node, value);
    return result == KltErrorSuccess ? Perform([&](GError** error) { arv_gc_float_set_value(node, value, error); })
                                     : result;
}

KltErrorType WriteText(ArvGcString* node, const char* value)
{
    const KltErrorType result = CheckLength(ARV_GC_FEATURE_NODE(node));
    if (result != KltErrorSuccess)
        return result;
    CallError error;
    const gint64 maximum = arv_gc_string_get_max_length(node, error.Out());
    if (error.Get() != nullptr)
        return CodeOf(error.Get());
    if (maximum > 0 && std::strlen(value) > static_cast<guint64>(maximum))
        return KltErrorInvalidValue;
    return Perform([&](GError** out) { arv_gc_string_set_value(node, value, out); });
}

KltErrorType WriteBytes(ArvGcRegister* node, const UcharVector& value)
{
    guint64 length = 0;
    const KltErrorType result = LengthOf(node, length);
    if (result != KltErrorSuccess)
        return result;
    if (value.size() != length || length == 0)
        return KltErrorInvalidValue;
    return Perform([&](GError** error) { arv_gc_register_set(node, value.data(), length, error); });
}

KltErrorType WriteCopies(ArvGcFeatureNode* node, const Number& value, const ValueCopies& copies)
{
    for (ArvGcFeatureNode* each : copies.empty() ? NodeChain() : ValueChain(node))
    {
        const char* name = arv_gc_feature_node_get_name(each);
        const auto targets = copies.find(name == nullptr ? "" : name);
        if (targets != copies.end())
            for (const std::string& target : targets->second)
            {
                const KltErrorType result =
                    WriteNumber(arv_gc_get_node(arv_gc_node_get_genicam(ARV_GC_NODE(node)), target.c_str()), value);
                if (result != KltErrorSuccess)
                    return result;
            }
        if (ARV_IS_GC_CONVERTER(each)) // What follows has another value.
            break;
    }
    return KltErrorSuccess;
}

} // namespace OPX::KltAPI
