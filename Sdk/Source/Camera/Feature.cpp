#include "KoltaCPP/Feature.h"

#include "Base/ErrorCodes.h"
#include "Base/GlibPtr.h"
#include "Base/TwoCalls.h"
#include "Camera/Impls.h"
#include "Nodes/NodeValues.h"

#include <algorithm>

namespace OPX::KltAPI
{
namespace
{

/// Checks type and access, then calls \a access with the node.
template <class Access>
KltErrorType Use(const Feature::Impl& feature, bool rightType, KltFeatureFlagsType wanted, Access access)
{
    if (!rightType)
        return KltErrorWrongType;
    return feature.session->Use(feature.data.nodeName,
        [&](ArvGcFeatureNode* node, const Connection& connection)
        {
            if ((feature.data.flags & wanted) == 0 || feature.data.isDelivered)
                return static_cast<KltErrorType>(KltErrorInvalidAccess);
            const KltErrorType result = CheckState(node, wanted == KltFeatureFlagsWrite, connection.takeUnknown);
            return result == KltErrorSuccess ? access(node, connection) : result;
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

/// Whether the camera has this entry, and has it now.
KltErrorType CheckEntry(
    ArvGcEnumeration* enumeration, const FeatureData& data, KltInt64_t value, const TakeUnknown& takeUnknown)
{
    const bool isEntry = std::any_of(data.entries.begin(), data.entries.end(),
        [value](const EnumEntry& entry)
        {
            KltInt64_t entryValue = 0;
            entry.GetValue(entryValue);
            return entryValue == value;
        });
    KltErrorType result = KltErrorInvalidValue;
    const GSList* entry = isEntry ? arv_gc_enumeration_get_entries(enumeration) : nullptr;
    for (; entry != nullptr && result != KltErrorSuccess; entry = entry->next)
    {
        CallError error;
        if (arv_gc_enum_entry_get_value(ARV_GC_ENUM_ENTRY(entry->data), error.Out()) == value && error.Get() == nullptr)
            result = CheckState(ARV_GC_FEATURE_NODE(entry->data), false, takeUnknown);
    }
    return result;
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
        [&](ArvGcFeatureNode* node, const Connection&)
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
        [&](ArvGcFeatureNode* node, const Connection&)
        { return Deliver([&](GError** error) { return arv_gc_float_get_value(ARV_GC_FLOAT(node), error); }, value); });
}

KltErrorType Feature::GetValue(std::string& value) const
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataString, KltFeatureFlagsRead,
        [&](ArvGcFeatureNode* node, const Connection&) { return ReadText(ARV_GC_STRING(node), value); });
}

KltErrorType Feature::GetValue(bool& value) const
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataBool, KltFeatureFlagsRead,
        [&](ArvGcFeatureNode* node, const Connection&)
        {
            return Deliver([&](GError** error) -> bool
                { return arv_gc_boolean_get_value(ARV_GC_BOOLEAN(node), error) != FALSE; },
                value);
        });
}

KltErrorType Feature::GetValue(UcharVector& value) const
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataRaw, KltFeatureFlagsRead,
        [&](ArvGcFeatureNode* node, const Connection&) { return ReadBytes(ARV_GC_REGISTER(node), value); });
}

KltErrorType Feature::SetValue(KltInt64_t value)
{
    const bool isEnum = m_impl->data.dataType == KltFeatureDataEnum;
    return Use(*m_impl, isEnum || m_impl->data.dataType == KltFeatureDataInt, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node, const Connection& connection)
        {
            KltErrorType result = KltErrorSuccess;
            if (!isEnum)
                result = WriteInteger(ARV_GC_INTEGER(node), value);
            else
                result = CheckEntry(ARV_GC_ENUMERATION(node), m_impl->data, value, connection.takeUnknown);
            if (isEnum && result == KltErrorSuccess)
                result = Perform(
                    [&](GError** error) { arv_gc_enumeration_set_int_value(ARV_GC_ENUMERATION(node), value, error); });
            return result == KltErrorSuccess
                       ? WriteCopies(node, Number(static_cast<std::int64_t>(value)), connection.copies)
                       : result;
        });
}

KltErrorType Feature::SetValue(double value)
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataFloat, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node, const Connection& connection)
        {
            const KltErrorType result = WriteFloat(ARV_GC_FLOAT(node), value);
            return result == KltErrorSuccess ? WriteCopies(node, Number(value), connection.copies) : result;
        });
}

KltErrorType Feature::SetValue(const char* value)
{
    if (value == nullptr)
        return KltErrorBadParameter;
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataString, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node, const Connection&) { return WriteText(ARV_GC_STRING(node), value); });
}

KltErrorType Feature::SetValue(bool value)
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataBool, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node, const Connection&)
        {
            return Perform(
                [&](GError** error) { arv_gc_boolean_set_value(ARV_GC_BOOLEAN(node), value ? TRUE : FALSE, error); });
        });
}

KltErrorType Feature::SetValue(const UcharVector& value)
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataRaw, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node, const Connection&) { return WriteBytes(ARV_GC_REGISTER(node), value); });
}

KltErrorType Feature::RunCommand()
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataCommand, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node, const Connection&)
        { return Perform([&](GError** error) { arv_gc_command_execute(ARV_GC_COMMAND(node), error); }); });
}

} // namespace OPX::KltAPI
