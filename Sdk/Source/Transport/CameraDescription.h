#ifndef CAMERADESCRIPTION_H
#define CAMERADESCRIPTION_H

#include "Safety/SafeDescription.h"
#include "Transport/RegisterAccess.h"

#include <cstdint>
#include <string>
#include <utility>

namespace OPX::KltAPI
{

/// Fills \a bytes, which have the size that is to be read.
/// \return KltErrorTimeout or KltErrorDeviceNotOpen if the camera does not answer; KltErrorOther, with the reason, for
/// everything else
Failure ReadBytes(RegisterAccess& camera, std::uint64_t address, std::string& bytes);

/// Reads the description that is said to be here, and checks it.
/// \return as ReadBytes(); KltErrorOther, with the reason, also if the description cannot be used
Failure FetchDescriptionAt(
    RegisterAccess& camera, std::uint64_t address, std::uint64_t size, SafeDescription& description);

/// What \a fetch returns for the first of \a places where there is a description that can be used, or where the camera
/// no longer answers; if there is none, what is wrong in the first one.
/// \param places not empty
template <class Places, class Fetch>
Failure FetchFirst(const Places& places, Fetch fetch)
{
    Failure first;
    for (const auto& place : places)
    {
        Failure failure = fetch(place);
        if (failure.code != KltErrorOther)
            return failure;
        if (!first)
            first = std::move(failure);
    }
    return first;
}

} // namespace OPX::KltAPI

#endif
