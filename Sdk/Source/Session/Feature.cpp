#include "KoltaCPP/Feature.h"

#include "Base/ErrorCodes.h"
#include "Base/GlibPtr.h"
#include "Base/TwoCalls.h"
#include "Session/FeatureImpl.h"
#include "Session/RegisterLength.h"
#include "Session/Session.h"

#include <algorithm>
#include <cstring>

namespace OPX
{
namespace KltAPI
{
namespace
{

/// Whether the feature can be read or written at all and in the camera's present state.
KltErrorType CheckAccess(ArvGcFeatureNode* node, const FeatureData& data, KltFeatureFlagsType wanted)
{
    if ((data.flags & wanted) == 0)
        return KltErrorInvalidAccess;
    CallError error;
    const bool available = arv_gc_feature_node_is_available(node, error.Out()) != FALSE;
    if (error.Get() != nullptr)
        return CodeOf(error.Get());
    const bool locked = wanted == KltFeatureFlagsWrite && arv_gc_feature_node_is_locked(node, error.Out()) != FALSE;
    if (error.Get() != nullptr)
        return CodeOf(error.Get());
    return available && !locked ? KltErrorSuccess : KltErrorInvalidAccess;
}

/// Checks type and access, then calls \a access with the node.
template <class Access>
KltErrorType Use(const Feature::Impl& feature, bool rightType, KltFeatureFlagsType wanted, Access access)
{
    if (!rightType)
        return KltErrorWrongType;
    return feature.session->Use(feature.data.nodeName,
        [&](ArvGcFeatureNode* node)
        {
            const KltErrorType result = CheckAccess(node, feature.data, wanted);
            return result == KltErrorSuccess ? access(node) : result;
        });
}

/// Reads through a call of Aravis; \a value is set only if that succeeds.
template <class Read, class Value>
KltErrorType Deliver(Read read, Value& value)
{
    CallError error;
    const Value delivered = read(error.Out());
    if (error.Get() == nullptr)
        value = delivered;
    return CodeOf(error.Get());
}

template <class Write>
KltErrorType Perform(Write write)
{
    CallError error;
    write(error.Out());
    return CodeOf(error.Get());
}

bool HasEntry(const FeatureData& data, KltInt64_t value)
{
    return std::any_of(data.entries.begin(), data.entries.end(),
        [value](const EnumEntry& entry)
        {
            KltInt64_t entryValue = 0;
            entry.GetValue(entryValue);
            return entryValue == value;
        });
}

KltErrorType WriteInteger(ArvGcInteger* node, KltInt64_t value)
{
    CallError error;
    const gint64 minimum = arv_gc_integer_get_min(node, error.Out());
    const gint64 maximum = error.Get() == nullptr ? arv_gc_integer_get_max(node, error.Out()) : 0;
    const gint64 increment = error.Get() == nullptr ? arv_gc_integer_get_inc(node, error.Out()) : 0;
    if (error.Get() != nullptr)
        return CodeOf(error.Get());
    if (value < minimum || value > maximum)
        return KltErrorInvalidValue;
    // As unsigned numbers: the distance can be larger than a signed number.
    const guint64 distance = static_cast<guint64>(value) - static_cast<guint64>(minimum);
    if (increment > 1 && distance % static_cast<guint64>(increment) != 0)
        return KltErrorInvalidValue;
    return Perform([&](GError** out) { arv_gc_integer_set_value(node, value, out); });
}

KltErrorType WriteFloat(ArvGcFloat* node, double value)
{
    CallError error;
    const double minimum = arv_gc_float_get_min(node, error.Out());
    const double maximum = error.Get() == nullptr ? arv_gc_float_get_max(node, error.Out()) : 0;
    if (error.Get() != nullptr)
        return CodeOf(error.Get());
    if (!(value >= minimum && value <= maximum))
        return KltErrorInvalidValue;
    return Perform([&](GError** out) { arv_gc_float_set_value(node, value, out); });
}

KltErrorType WriteString(ArvGcString* node, const char* value)
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

} // namespace

Feature::Feature(Impl* impl) : m_impl(impl)
{
}

Feature::~Feature()
{
    delete m_impl;
}

KltErrorType Feature::GetName(char* name, unsigned int& length) const
{
    return DeliverText(m_impl->data.name, name, length);
}

KltErrorType Feature::GetCategory(char* category, unsigned int& length) const
{
    return DeliverText(m_impl->data.category, category, length);
}

KltErrorType Feature::GetDataType(KltFeatureDataType& dataType) const
{
    dataType = m_impl->data.dataType;
    return KltErrorSuccess;
}

KltErrorType Feature::GetFlags(KltFeatureFlagsType& flags) const
{
    flags = m_impl->data.flags;
    return KltErrorSuccess;
}

KltErrorType Feature::GetEntries(EnumEntry* entries, unsigned int& count)
{
    if (m_impl->data.dataType != KltFeatureDataEnum)
        return KltErrorWrongType;
    return DeliverList(m_impl->data.entries, entries, count);
}

KltErrorType Feature::GetValue(KltInt64_t& value) const
{
    const bool isEnum = m_impl->data.dataType == KltFeatureDataEnum;
    return Use(*m_impl, isEnum || m_impl->data.dataType == KltFeatureDataInt, KltFeatureFlagsRead,
        [&](ArvGcFeatureNode* node)
        {
            return Deliver(
                [&](GError** error) -> KltInt64_t
                {
                    return isEnum ? arv_gc_enumeration_get_int_value(ARV_GC_ENUMERATION(node), error)
                                  : arv_gc_integer_get_value(ARV_GC_INTEGER(node), error);
                },
                value);
        });
}

KltErrorType Feature::GetValue(double& value) const
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataFloat, KltFeatureFlagsRead,
        [&](ArvGcFeatureNode* node)
        { return Deliver([&](GError** error) { return arv_gc_float_get_value(ARV_GC_FLOAT(node), error); }, value); });
}

KltErrorType Feature::GetValue(std::string& value) const
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataString, KltFeatureFlagsRead,
        [&](ArvGcFeatureNode* node)
        {
            const KltErrorType result = CheckLength(node);
            if (result != KltErrorSuccess)
                return result;
            return Deliver(
                [&](GError** error) -> std::string
                {
                    const char* text = arv_gc_string_get_value(ARV_GC_STRING(node), error);
                    return text == nullptr || *error != nullptr ? std::string() : text;
                },
                value);
        });
}

KltErrorType Feature::GetValue(bool& value) const
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataBool, KltFeatureFlagsRead,
        [&](ArvGcFeatureNode* node)
        {
            return Deliver([&](GError** error) -> bool
                { return arv_gc_boolean_get_value(ARV_GC_BOOLEAN(node), error) != FALSE; },
                value);
        });
}

KltErrorType Feature::GetValue(UcharVector& value) const
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataRaw, KltFeatureFlagsRead,
        [&](ArvGcFeatureNode* node)
        {
            guint64 length = 0;
            const KltErrorType result = LengthOf(ARV_GC_REGISTER(node), length);
            if (result != KltErrorSuccess)
                return result;
            return Deliver(
                [&](GError** error)
                {
                    UcharVector bytes(length);
                    if (length > 0)
                        arv_gc_register_get(ARV_GC_REGISTER(node), bytes.data(), length, error);
                    return bytes;
                },
                value);
        });
}

KltErrorType Feature::SetValue(KltInt64_t value)
{
    const bool isEnum = m_impl->data.dataType == KltFeatureDataEnum;
    return Use(*m_impl, isEnum || m_impl->data.dataType == KltFeatureDataInt, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node)
        {
            if (!isEnum)
                return WriteInteger(ARV_GC_INTEGER(node), value);
            if (!HasEntry(m_impl->data, value))
                return static_cast<KltErrorType>(KltErrorInvalidValue);
            return Perform(
                [&](GError** error) { arv_gc_enumeration_set_int_value(ARV_GC_ENUMERATION(node), value, error); });
        });
}

KltErrorType Feature::SetValue(double value)
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataFloat, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node) { return WriteFloat(ARV_GC_FLOAT(node), value); });
}

KltErrorType Feature::SetValue(const char* value)
{
    if (value == nullptr)
        return KltErrorBadParameter;
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataString, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node) { return WriteString(ARV_GC_STRING(node), value); });
}

KltErrorType Feature::SetValue(bool value)
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataBool, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node)
        {
            return Perform(
                [&](GError** error) { arv_gc_boolean_set_value(ARV_GC_BOOLEAN(node), value ? TRUE : FALSE, error); });
        });
}

KltErrorType Feature::SetValue(const UcharVector& value)
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataRaw, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node)
        {
            guint64 length = 0;
            const KltErrorType result = LengthOf(ARV_GC_REGISTER(node), length);
            if (result != KltErrorSuccess)
                return result;
            if (value.size() != length || length == 0)
                return static_cast<KltErrorType>(KltErrorInvalidValue);
            return Perform(
                [&](GError** error) { arv_gc_register_set(ARV_GC_REGISTER(node), value.data(), length, error); });
        });
}

KltErrorType Feature::RunCommand()
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataCommand, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node)
        { return Perform([&](GError** error) { arv_gc_command_execute(ARV_GC_COMMAND(node), error); }); });
}

} // namespace KltAPI
} // namespace OPX
