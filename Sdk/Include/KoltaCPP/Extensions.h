#ifndef KOLTACPP_EXTENSIONS_H
#define KOLTACPP_EXTENSIONS_H

/// \file
/// What only this library has: cameras made from descriptions, what it tells of a camera besides its name, and
/// questions about a feature before it is used. Other libraries with the SDK's interface have neither these functions
/// nor this header. A program that is to work with them includes it only where it is there (`__has_include`); generated
/// classes do without it.
///
/// Any thread may call these functions. The SDK need not be started for them, but for `FindCamera`. What they store is
/// unchanged after an error.

#include "KoltaCPP/Camera.h"
#include "KoltaCPP/EnumEntry.h"
#include "KoltaCPP/Feature.h"
#include "KoltaCPP/KoltaExport.h"
#include "KoltaCPP/KoltaTypes.h"

#include <cstddef>
#include <string>

namespace OPX
{
namespace KltAPI
{

/// Why a description cannot be used.
struct DescriptionProblem
{
    std::string text; ///< In UTF-8, in one line: "it holds no XML".
    int line = 0;     ///< Of the file, the first one being 1; 0 if no line is to blame.
};

/// Makes a camera that is simulated from a description file.
///
/// KOLTA_TRANSPORTS does not matter, and the camera is in no list. The file is read and checked in this call, which
/// takes as long as the file system does; what is wrong with the file is reported on standard error. The camera's name
/// is that of the model, its serial number is the name of the file without the extension, and its address is \a path.
/// It is there as long as the file does not change.
/// \param path an .xml or .zip file; any characters
/// \param camera owned by its handles; unchanged after an error
/// \return `KltErrorNotFound` when the file cannot be used, `KltErrorBadParameter` for a null pointer
KOLTACPP_EXPORT KltErrorType FromDescription(const char* path, CameraPtr& camera);

/// The same, but what is wrong with the file is handed out instead of reported.
/// \param path as there
/// \param camera as there
/// \param problem filled with `KltErrorNotFound`, otherwise unchanged
/// \return as there
KOLTACPP_EXPORT KltErrorType FromDescription(const char* path, CameraPtr& camera, DescriptionProblem& problem);

/// Makes a camera that is simulated from the text of a description that has been read and checked already.
///
/// Nothing is checked again: **a text that is not what this library's own check has let pass can end the process.** The
/// camera is made from this text, and stays there whatever becomes of the file that the text was read from.
/// \param xml what the check has let pass: unpacked, from the first element on; copied
/// \param size its length in bytes
/// \param modelName the camera's name
/// \param path the file that the text comes from, which decides on serial number, address and start values as in
///     `FromDescription`. Null if there is none: the serial number is then the name, and the address is empty.
/// \param camera owned by its handles; unchanged after an error
/// \return `KltErrorBadParameter` for a null pointer other than \a path
KOLTACPP_EXPORT KltErrorType FromCheckedDescription(
    const char* xml, std::size_t size, const char* modelName, const char* path, CameraPtr& camera);

/// How the camera is reached: "simulated", "gige" or "usb3". Read like `Feature::GetName`.
KOLTACPP_EXPORT KltErrorType GetTransport(const Camera& camera, char* transport, unsigned int& length);

/// Where the camera is: its address in the network or on the bus, or the description file of a simulated camera. Read
/// like `Feature::GetName`.
KOLTACPP_EXPORT KltErrorType GetAddress(const Camera& camera, char* address, unsigned int& length);

/// The camera's own description (GenICam XML), unpacked, in the encoding that it declares; megabytes for large cameras.
/// Read like `Feature::GetName`. Waits for the calls of other threads.
/// \return `KltErrorDeviceNotOpen` for a closed or lost camera, `KltErrorMoreData` when \a length is too small,
///     `KltErrorTimeout` when other threads kept the camera busy
KOLTACPP_EXPORT KltErrorType GetDescription(const Camera& camera, char* description, unsigned int& length);

/// \name Questions about features
/// For features of an open camera, as a generated class hands them out (`GetExposureTimeFeature`); on a closed camera
/// they give `KltErrorDeviceNotOpen`. Those that say so ask the camera, and can then fail like `Feature::GetValue`.
/// Texts are read like `Feature::GetName`.
/// @{

/// What an integer may be set to now: the limits of its node and of those that its value comes through, worked out by
/// the camera's present registers. Every number from \a minimum to \a maximum in steps of \a increment is accepted, and
/// none beyond, unless the description lists the values (`Feature::GetEntries`), or converts them by a formula that
/// hides the steps of what is behind it. There may be none: then the minimum is above the maximum. Asks the camera.
/// \param feature an integer
/// \param minimum the least number
/// \param maximum the largest one
/// \param increment 1 or more
/// \return `KltErrorWrongType` for another type
KOLTACPP_EXPORT KltErrorType GetRange(
    const Feature& feature, KltInt64_t& minimum, KltInt64_t& maximum, KltInt64_t& increment);

/// The same for a float, in the feature's unit. Where there is no limit, it is that of the type.
/// \param feature a float
/// \param minimum the least number
/// \param maximum the largest one
/// \param increment 0 if any number between the limits is accepted; the nearest that the camera can hold is stored
KOLTACPP_EXPORT KltErrorType GetRange(const Feature& feature, double& minimum, double& maximum, double& increment);

/// How many bytes a string can have, without a zero at its end, or has to have if the feature is `KltFeatureDataRaw`;
/// 0 if nothing limits it. Asks the camera if a register says so.
/// \return `KltErrorWrongType` for another type
KOLTACPP_EXPORT KltErrorType GetLength(const Feature& feature, KltInt64_t& maximum);

/// What can be done at this moment: those of `Feature::GetFlags` that are not locked and not unavailable. Asks the
/// camera.
KOLTACPP_EXPORT KltErrorType GetAccessNow(const Feature& feature, KltFeatureFlagsType& flags);

/// Those of an enumeration's entries that can be set now. Asks the camera. Lists are read like `Feature::GetEntries`.
/// \return `KltErrorWrongType` for another type
KOLTACPP_EXPORT KltErrorType GetAvailableEntries(const Feature& feature, EnumEntry* entries, unsigned int& count);

/// The name of the entry with this value. On a closed camera, too.
/// \return `KltErrorNotFound` if there is none
KOLTACPP_EXPORT KltErrorType GetEntryName(const Feature& feature, KltInt64_t value, char* name, unsigned int& length);

/// The value of the entry with this name. On a closed camera, too.
/// \return `KltErrorNotFound` if there is none, `KltErrorBadParameter` for a null pointer
KOLTACPP_EXPORT KltErrorType GetEntryValue(const Feature& feature, const char* name, KltInt64_t& value);

/// The unit of a number, for example "us"; empty if there is none.
KOLTACPP_EXPORT KltErrorType GetUnit(const Feature& feature, char* unit, unsigned int& length);

/// The name for people, for example "Exposure Time"; the feature's own name if the description has none.
KOLTACPP_EXPORT KltErrorType GetDisplayName(const Feature& feature, char* name, unsigned int& length);

/// What the feature is, in a line; empty if the description does not say.
KOLTACPP_EXPORT KltErrorType GetToolTip(const Feature& feature, char* toolTip, unsigned int& length);

/// What the feature is, at length: the description's `Description`; empty if it has none.
KOLTACPP_EXPORT KltErrorType GetHelp(const Feature& feature, char* help, unsigned int& length);

/// For whom a feature is meant, from everybody to nobody.
enum class FeatureVisibility
{
    Beginner,
    Expert,
    Guru,
    Invisible
};

/// For whom the feature is meant; `Beginner` if the description does not say.
KOLTACPP_EXPORT KltErrorType GetVisibility(const Feature& feature, FeatureVisibility& visibility);

/// The features whose values belong to the present value of this one: those that a selector selects; none for most.
/// Lists are read like `FeatureContainer::GetFeatures`.
KOLTACPP_EXPORT KltErrorType GetSelected(const Feature& feature, FeaturePtr* features, unsigned int& count);

/// @}

/// Waits until a camera with this serial number is in the list.
/// \param serialNumber as `Camera::GetSerialNumber` gives it
/// \param milliseconds how long at most; 0 only looks
/// \param camera unchanged after an error
/// \return `KltErrorNotFound` when it has not appeared, `KltErrorApiNotStarted` when the SDK is not started or is shut
///     down meanwhile, `KltErrorBadParameter` for a null pointer
KOLTACPP_EXPORT KltErrorType FindCamera(const char* serialNumber, unsigned int milliseconds, CameraPtr& camera);

/// What a code means, in an English sentence; for what is none, that it is unknown. Never null; lives for ever.
KOLTACPP_EXPORT const char* ErrorText(KltErrorType code);

} // namespace KltAPI
} // namespace OPX

#endif
