#ifndef KOLTACPP_KOLTATYPES_H
#define KOLTACPP_KOLTATYPES_H

/// \file
/// The C-level types of the SDK. They live at global scope and are also visible as `OPX::KltAPI::X`.

#include <cstdint>
#include <vector>

/// Result of every SDK call: 0 for success, a negative value for a failure.
typedef int32_t KltErrorType;

/// The values of `KltErrorType`.
enum KltErrorCode : int32_t
{
    KltErrorSuccess = 0,
    KltErrorInternalFault = -1,
    KltErrorApiNotStarted = -2,
    KltErrorNotFound = -3,
    KltErrorBadHandle = -4,
    KltErrorDeviceNotOpen = -5,
    KltErrorInvalidAccess = -6,
    KltErrorBadParameter = -7,
    KltErrorStructSize = -8,
    KltErrorMoreData = -9,
    KltErrorWrongType = -10,
    KltErrorInvalidValue = -11,
    KltErrorTimeout = -12,
    KltErrorOther = -13,
    KltErrorResources = -14,
    KltErrorInvalidCall = -15,
    KltErrorNoTransportLayer = -16,
    KltErrorNotImplemented = -17,
    KltErrorNotSupported = -18,
    KltErrorIncomplete = -19
};

/// The SDK's signed 64-bit integer.
typedef long long KltInt64_t;

/// Data type of a feature.
typedef uint32_t KltFeatureDataType;

/// The values of `KltFeatureDataType`.
enum KltFeatureDataTypeValues : uint32_t
{
    KltFeatureDataUnknown = 0,
    KltFeatureDataInt = 1,
    KltFeatureDataFloat = 2,
    KltFeatureDataEnum = 3,
    KltFeatureDataString = 4,
    KltFeatureDataBool = 5,
    KltFeatureDataCommand = 6,
    KltFeatureDataRaw = 7,
    KltFeatureDataNone = 8
};

/// What may be done with a feature: a set of `KltFeatureFlagsValues`.
typedef uint32_t KltFeatureFlagsType;

/// The bits of `KltFeatureFlagsType`.
enum KltFeatureFlagsValues : uint32_t
{
    KltFeatureFlagsNone = 0,
    KltFeatureFlagsRead = 1,
    KltFeatureFlagsWrite = 2
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
    UpdateTriggerCameraArrived = 0,
    UpdateTriggerCameraLeft = 1,
    UpdateTriggerOpenStateChanged = 2
};

namespace OPX
{
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
