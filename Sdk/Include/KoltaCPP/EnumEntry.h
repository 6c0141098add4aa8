#ifndef KOLTACPP_ENUMENTRY_H
#define KOLTACPP_ENUMENTRY_H

#include "KoltaCPP/KoltaExport.h"
#include "KoltaCPP/KoltaTypes.h"

namespace OPX
{
namespace KltAPI
{

/// One entry of an enumeration feature: a name and a signed 64-bit value. A value type.
class KOLTACPP_EXPORT EnumEntry
{
public:
    struct Impl;

    /// An entry with an empty name and the value 0.
    EnumEntry();

    /// For the library: takes over \a impl.
    explicit EnumEntry(Impl* impl);

    /// The same name and value.
    EnumEntry(const EnumEntry& other);

    /// Copies name and value of \a other.
    EnumEntry& operator=(const EnumEntry& other);

    ~EnumEntry();

    /// The symbolic name, UTF-8, read like `Feature::GetName`.
    KltErrorType GetName(char* name, unsigned int& length) const;

    /// The value that stands for the entry in the camera.
    KltErrorType GetValue(KltInt64_t& value) const;

private:
    Impl* m_impl;
};

} // namespace KltAPI
} // namespace OPX

#endif
