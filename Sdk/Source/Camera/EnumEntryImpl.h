#ifndef ENUMENTRYIMPL_H
#define ENUMENTRYIMPL_H

#include "KoltaCPP/EnumEntry.h"

#include <string>

namespace OPX::KltAPI
{

struct EnumEntry::Impl
{
    std::string name;
    KltInt64_t value;
};

} // namespace OPX::KltAPI

#endif
