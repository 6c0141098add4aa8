#include "KoltaCPP/Feature.h"

#include "Base/TwoCalls.h"
#include "Camera/Impls.h"
#include "Nodes/NodeRange.h"
#include "Nodes/NodeValues.h"

#include <algorithm>

namespace OPX::KltAPI
{
namespace
{

/// Checks type and access, then calls \a access with the node. \return its code
template <class Access>
KltErrorType Use(const Feature::Impl& feature, bool rightType, KltFeatureFlagsType wanted, Access access)
{
    if (!rightType)
        return KltErrorWrongType;
    const auto use = [&](ArvGcFeatureNode* node, const Connection& connection) -> Failure
    {
        if ((feature.data.flags & wanted) == 0 || feature.data.isDelivered)
            return KltErrorInvalidAccess;
        if (Failure failure = CheckState(node, wanted == KltFeatureFlagsWrite, connection.takeUnknown))
            return failure;
        return access(node, connection);
    };
    return feature.session->Use(feature.data.nodeName, use);
}

/// Reads a number; \a take gets it if that succeeds.
template <class Take>
KltErrorType GetNumber(const Feature::Impl& feature, bool rightType, Take take)
{
    return Use(feature, rightType, KltFeatureFlagsRead,
        [&](ArvGcFeatureNode* node, const Connection&)
        {
            Number number;
            Failure failure = Perform([&](GError** error) { number = ReadNumber(ARV_GC_NODE(node), error); });
            if (!failure)
                take(number);
            return failure;
        });
}

/// Writes a number that is in the node's range, and its copies.
Failure SetNumber(ArvGcFeatureNode* node, Number value)
{
    if (Failure failure = FitIntoRange(ARV_GC_NODE(node), value))
        return failure;
    if (Failure failure = Perform([&](GError** error) { WriteNumber(ARV_GC_NODE(node), value, error); }))
        return failure;
    return WriteCopies(node, value);
}

/// Whether the camera has this entry, and has it now.
Failure CheckKnownEntry(
    ArvGcEnumeration* enumeration, const FeatureData& data, KltInt64_t value, const TakeUnknown& takeUnknown)
{
    const bool isEntry = std::any_of(data.entries.begin(), data.entries.end(),
        [value](const EnumEntry& entry) { return EnumEntry::Impl::Of(entry).value == value; });
    return isEntry ? CheckEntry(enumeration, value, takeUnknown) : KltErrorInvalidValue;
}

} // namespace

EnumEntry::EnumEntry() : m_impl(new Impl{std::string(), 0})
{
}

EnumEntry::EnumEntry(Impl* impl) : m_impl(impl)
{
}

EnumEntry::EnumEntry(const EnumEntry& other) : m_impl(new Impl(*other.m_impl))
{
}

EnumEntry& EnumEntry::operator=(const EnumEntry& other)
{
    if (this != &other)
        *m_impl = *other.m_impl;
    return *this;
}

EnumEntry::~EnumEntry()
{
    delete m_impl;
}

KltErrorType EnumEntry::GetName(char* name, unsigned int& length) const
{
    return DeliverText(m_impl->name, name, length);
}

KltErrorType EnumEntry::GetValue(KltInt64_t& value) const
{
    value = m_impl->value;
    return KltErrorSuccess;
}

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
    if (m_impl->data.dataType != KltFeatureDataEnum && m_impl->data.entries.empty())
        return KltErrorWrongType;
    return DeliverList(m_impl->data.entries, entries, count);
}

KltErrorType Feature::GetValue(KltInt64_t& value) const
{
    const bool rightType = m_impl->data.dataType == KltFeatureDataEnum || m_impl->data.dataType == KltFeatureDataInt;
    return GetNumber(*m_impl, rightType, [&](const Number& number) { value = number.AsInteger(); });
}

KltErrorType Feature::GetValue(double& value) const
{
    return GetNumber(
        *m_impl, m_impl->data.dataType == KltFeatureDataFloat, [&](const Number& number) { value = number.AsReal(); });
}

KltErrorType Feature::GetValue(bool& value) const
{
    return GetNumber(*m_impl, m_impl->data.dataType == KltFeatureDataBool,
        [&](const Number& number) { value = number.AsInteger() != 0; });
}

KltErrorType Feature::GetValue(std::string& value) const
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataString, KltFeatureFlagsRead,
        [&](ArvGcFeatureNode* node, const Connection&) { return ReadText(ARV_GC_STRING(node), value); });
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
            Failure failure;
            if (isEnum)
                failure = CheckKnownEntry(ARV_GC_ENUMERATION(node), m_impl->data, value, connection.takeUnknown);
            return failure ? failure : SetNumber(node, Number(static_cast<std::int64_t>(value)));
        });
}

KltErrorType Feature::SetValue(double value)
{
    return Use(*m_impl, m_impl->data.dataType == KltFeatureDataFloat, KltFeatureFlagsWrite,
        [&](ArvGcFeatureNode* node, const Connection&) { return SetNumber(node, Number(value)); });
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
