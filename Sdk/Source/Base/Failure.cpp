#include "Base/Failure.h"

#include <arv.h>

namespace OPX::KltAPI
{
namespace
{

struct Row
{
    int foreign;
    KltErrorType code;
};

const Row DeviceErrors[] = {
    {ARV_DEVICE_ERROR_WRONG_FEATURE, KltErrorWrongType},
    {ARV_DEVICE_ERROR_FEATURE_NOT_FOUND, KltErrorNotFound},
    {ARV_DEVICE_ERROR_NOT_CONNECTED, KltErrorDeviceNotOpen},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR, KltErrorInternalFault},
    {ARV_DEVICE_ERROR_TRANSFER_ERROR, KltErrorInternalFault},
    {ARV_DEVICE_ERROR_TIMEOUT, KltErrorTimeout},
    {ARV_DEVICE_ERROR_NOT_FOUND, KltErrorNotFound},
    {ARV_DEVICE_ERROR_INVALID_PARAMETER, KltErrorBadParameter},
    {ARV_DEVICE_ERROR_GENICAM_NOT_FOUND, KltErrorNotFound},
    {ARV_DEVICE_ERROR_NO_STREAM_CHANNEL, KltErrorResources},
    {ARV_DEVICE_ERROR_NOT_CONTROLLER, KltErrorInvalidAccess},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_NOT_IMPLEMENTED, KltErrorNotImplemented},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_PARAMETER, KltErrorBadParameter},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS, KltErrorInternalFault},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT, KltErrorInvalidAccess},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_BAD_ALIGNMENT, KltErrorInternalFault},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED, KltErrorInvalidAccess},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_BUSY, KltErrorInvalidAccess},
};

const Row NodeErrors[] = {
    {ARV_GC_ERROR_EMPTY_ENUMERATION, KltErrorInvalidValue},
    {ARV_GC_ERROR_OUT_OF_RANGE, KltErrorInvalidValue},
    {ARV_GC_ERROR_NODE_NOT_FOUND, KltErrorNotFound},
    {ARV_GC_ERROR_ENUM_ENTRY_NOT_FOUND, KltErrorInvalidValue},
    {ARV_GC_ERROR_INVALID_LENGTH, KltErrorInvalidValue},
    {ARV_GC_ERROR_READ_ONLY, KltErrorInvalidAccess},
};

template <std::size_t Size>
KltErrorType Find(const Row (&rows)[Size], int foreign)
{
    for (const Row& row : rows)
        if (row.foreign == foreign)
            return row.code;
    return KltErrorOther;
}

} // namespace

GQuark OwnErrorDomain()
{
    return g_quark_from_static_string("kolta-error");
}

bool PassOn(const Failure& failure, GError** error)
{
    if (failure)
        g_set_error_literal(error, OwnErrorDomain(), failure.code, failure.reason.text.c_str());
    return !failure;
}

KltErrorType CallError::Code() const
{
    if (m_error == nullptr)
        return KltErrorSuccess;
    if (m_error->domain == ARV_DEVICE_ERROR)
        return Find(DeviceErrors, m_error->code);
    if (m_error->domain == ARV_GC_ERROR)
        return Find(NodeErrors, m_error->code);
    if (m_error->domain == OwnErrorDomain())
        return m_error->code;
    return KltErrorOther;
}

} // namespace OPX::KltAPI
