#ifndef ERRORTEXTS_H
#define ERRORTEXTS_H

/// \file
/// The texts of the SDK's codes: the tool's, which also works over libraries of the SDK that have none, and those of
/// our own library.

namespace OPX
{
namespace KltAPI
{

/// An English sentence; null for what is no code.
inline const char* TextOfCode(int code)
{
    static const char* const texts[] = {
        "No error.",
        "Unexpected fault in KltApi or driver.",
        "KltStartup was not called before the current command.",
        "The designated instance (camera, feature etc.) cannot be found.",
        "The given handle is not valid.",
        "Device was not opened for usage.",
        "Operation is invalid with the current access mode.",
        "One of the parameters was invalid (usually an illegal pointer).",
        "The given struct size is not valid for this version of the API.",
        "More data was returned in a string/list than space was provided.",
        "The feature type for this access function was wrong.",
        "The value was not valid; either out of bounds or not an increment of the minimum.",
        "Timeout during wait.",
        "Other error.",
        "Resources not available (e.g memory).",
        "Call is invalid in the current context (e.g callback).",
        "No transport layers were found.",
        "API feature is not implemented.",
        "API feature is not supported.",
        "A multiple registers reads or writes was partially completed.",
    };
    const int count = static_cast<int>(sizeof texts / sizeof texts[0]);
    return code <= 0 && code > -count ? texts[-code] : nullptr;
}

} // namespace KltAPI
} // namespace OPX

#endif
