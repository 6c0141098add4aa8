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
    if (m_error->domain == ARV_GC_ERROR)
        return Find(NodeErrors, m_error->code);
    if (m_error->domain == OwnErrorDomain())
        return m_error->code;
    return KltErrorOther;
}

} // namespace OPX::KltAPI
