#ifndef KOLTACPP_KOLTATYPES_H
#define KOLTACPP_KOLTATYPES_H

/// \file
/// The C-level types of the SDK. They live at global scope and are also visible as `OPX::KltAPI::X`.

#include <cstdint>
#include <vector>

/// Result of every SDK call: 0 for success, a negative value for a failure.
typedef int32_t KltErrorType;

/// The values of `KltErrorType`. A connection that fails gives `KltErrorTimeout` or, if the camera's answer makes no
/// sense, `KltErrorInternalFault`; a camera that refuses gives `KltErrorInvalidAccess`, `KltErrorBadParameter`
/// or `KltErrorNotImplemented`.
enum KltErrorCode : int32_t
{
    KltErrorSuccess = 0,            ///< 0: done.
    KltErrorInternalFault = -1,     ///< -1: the library, a driver or the connection to the camera is at fault.
    KltErrorApiNotStarted = -2,     ///< -2: `KoltaSystem::Startup` was not called.
    KltErrorNotFound = -3,          ///< -3: there is no such camera, feature or file.
    KltErrorBadHandle = -4,         ///< -4: a handle is empty.
    KltErrorDeviceNotOpen = -5,     ///< -5: the camera is not open, or was lost since.
    KltErrorInvalidAccess = -6,     ///< -6: not allowed, or not now: the camera is in use, the feature locked.
    KltErrorBadParameter = -7,      ///< -7: a parameter makes no sense, usually a null pointer.
    KltErrorStructSize = -8,        ///< -8: a struct of another version of the SDK.
    KltErrorMoreData = -9,          ///< -9: a buffer or array is too small; its length parameter says what is needed.
    KltErrorWrongType = -10,        ///< -10: the feature is of another type.
    KltErrorInvalidValue = -11,     ///< -11: the value is out of bounds, off the increment, or not an entry.
    KltErrorTimeout = -12,          ///< -12: no answer in time.
    KltErrorOther = -13,            ///< -13: none of the others; a description that cannot be used.
    KltErrorResources = -14,        ///< -14: not enough memory, or an unreasonable length.
    KltErrorInvalidCall = -15,      ///< -15: not from here: the call comes from an observer.
    KltErrorNoTransportLayer = -16, ///< -16: there is no way to reach cameras.
    KltErrorNotImplemented = -17,   ///< -17: the camera or the SDK does not have this.
    KltErrorNotSupported = -18,     ///< -18: not with this camera.
    KltErrorIncomplete = -19        ///< -19: several registers were to be read or written, and some were.
};

/// The SDK's signed 64-bit integer.
typedef long long KltInt64_t;

/// Data type of a feature.
typedef uint32_t KltFeatureDataType;

/// The values of `KltFeatureDataType`.
enum KltFeatureDataTypeValues : uint32_t
{
    KltFeatureDataUnknown = 0, ///< Not known to this version of the SDK.
    KltFeatureDataInt = 1,     ///< `KltInt64_t`
    KltFeatureDataFloat = 2,   ///< `double`
    KltFeatureDataEnum = 3,    ///< The value of one of the feature's entries, as `KltInt64_t`.
    KltFeatureDataString = 4,  ///< `std::string`
    KltFeatureDataBool = 5,    ///< `bool`
    KltFeatureDataCommand = 6, ///< No value: `Feature::RunCommand`.
    KltFeatureDataRaw = 7,     ///< `UcharVector`
    KltFeatureDataNone = 8     ///< No value.
};

/// What may be done with a feature: a set of `KltFeatureFlagsValues`.
typedef uint32_t KltFeatureFlagsType;

/// The bits of `KltFeatureFlagsType`.
enum KltFeatureFlagsValues : uint32_t
{
    KltFeatureFlagsNone = 0, ///< Neither.
    KltFeatureFlagsRead = 1, ///< The value can be read.
    KltFeatureFlagsWrite = 2 ///< The value can be written, or the command run.
};

/// How a camera is opened.
typedef uint32_t KltAccessModeType;

/// The values of `KltAccessModeType`.
enum KltAccessModeValues : uint32_t
{
    KltAccessModeFull = 1 ///< Read and write; for a networked camera, in control of it.
};

/// Why the list of cameras changed. Carried as a plain integer: values of newer libraries pass through.
enum UpdateTriggerType : int32_t
{
    UpdateTriggerCameraArrived = 0,   ///< It was found.
    UpdateTriggerCameraLeft = 1,      ///< It is no longer found.
    UpdateTriggerOpenStateChanged = 2 ///< It was open, and the connection has been lost; see `Camera`.
};

/// The SDK's outer namespace.

namespace OPX
{
/// The SDK's interface.
namespace KltAPI
{

using ::KltAccessModeFull;
using ::KltAccessModeType;
using ::KltAccessModeValues;
using ::KltErrorApiNotStarted;
using ::KltErrorBadHandle;
using ::KltErrorBadParameter;
using ::KltErrorCode;
using ::KltErrorDeviceNotOpen;
using ::KltErrorIncomplete;
using ::KltErrorInternalFault;
using ::KltErrorInvalidAccess;
using ::KltErrorInvalidCall;
using ::KltErrorInvalidValue;
using ::KltErrorMoreData;
using ::KltErrorNotFound;
using ::KltErrorNotImplemented;
using ::KltErrorNoTransportLayer;
using ::KltErrorNotSupported;
using ::KltErrorOther;
using ::KltErrorResources;
using ::KltErrorStructSize;
using ::KltErrorSuccess;
using ::KltErrorTimeout;
using ::KltErrorType;
using ::KltErrorWrongType;
using ::KltFeatureDataBool;
using ::KltFeatureDataCommand;
using ::KltFeatureDataEnum;
using ::KltFeatureDataFloat;
using ::KltFeatureDataInt;
using ::KltFeatureDataNone;
using ::KltFeatureDataRaw;
using ::KltFeatureDataString;
using ::KltFeatureDataType;
using ::KltFeatureDataTypeValues;
using ::KltFeatureDataUnknown;
using ::KltFeatureFlagsNone;
using ::KltFeatureFlagsRead;
using ::KltFeatureFlagsType;
using ::KltFeatureFlagsValues;
using ::KltFeatureFlagsWrite;
using ::KltInt64_t;
using ::UpdateTriggerCameraArrived;
using ::UpdateTriggerCameraLeft;
using ::UpdateTriggerOpenStateChanged;
using ::UpdateTriggerType;

/// The value of a raw (register) feature.
typedef std::vector<unsigned char> UcharVector;

} // namespace KltAPI
} // namespace OPX

#endif
