#include "KoltaCPP/EnumEntry.h"

#include "Base/TwoCalls.h"
#include "Camera/Impls.h"

namespace OPX::KltAPI
{

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

} // namespace OPX::KltAPI
