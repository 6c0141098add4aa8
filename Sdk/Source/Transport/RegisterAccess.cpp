#include "Transport/RegisterAccess.h"

#include <iterator>

namespace OPX::KltAPI
{
namespace
{

const std::uint16_t FirstRefusal = 0x8001;

/// For the states from that one on.
const KltErrorType Refusals[] = {
    KltErrorNotImplemented,
    KltErrorBadParameter,  // The parameter is invalid,
    KltErrorInternalFault, // the address is,
    KltErrorInvalidAccess, // it cannot be written,
    KltErrorInternalFault, // it is not aligned;
    KltErrorInvalidAccess, // the access is denied,
    KltErrorInvalidAccess, // or the camera is busy.
};

} // namespace

KltErrorType CodeOfState(std::uint16_t state)
{
    if (state == 0)
        return KltErrorSuccess;
    const bool isKnown = state >= FirstRefusal && state - FirstRefusal < static_cast<int>(std::size(Refusals));
    return isKnown ? Refusals[state - FirstRefusal] : static_cast<KltErrorType>(KltErrorInternalFault);
}

} // namespace OPX::KltAPI
