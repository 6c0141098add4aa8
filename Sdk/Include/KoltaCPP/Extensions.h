#ifndef KOLTACPP_EXTENSIONS_H
#define KOLTACPP_EXTENSIONS_H

/// \file
/// What only this library has: cameras made from descriptions, and what it tells of a camera besides its name. Other
/// libraries with the SDK's interface have neither these functions nor this header. A program that is to work with them
/// includes it only where it is there (`__has_include`); generated classes do without it.
///
/// Any thread may call these functions. The SDK need not be started for them.

#include "KoltaCPP/Camera.h"
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

} // namespace KltAPI
} // namespace OPX

#endif
