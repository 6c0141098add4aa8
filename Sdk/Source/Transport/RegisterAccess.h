#ifndef REGISTERACCESS_H
#define REGISTERACCESS_H

#include "Base/Failure.h"

#include <cstdint>

namespace OPX::KltAPI
{

/// The registers and the memory of a camera. One thread at a time.
class RegisterAccess
{
public:
    RegisterAccess() = default;
    RegisterAccess(const RegisterAccess&) = delete;
    RegisterAccess& operator=(const RegisterAccess&) = delete;
    virtual ~RegisterAccess() = default;

    virtual Failure ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer) = 0;
    virtual Failure WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer) = 0;

    // Commands of their own only of GigE Vision. Other cameras have nothing but memory, and Aravis asks for no more.
    virtual Failure ReadRegister(std::uint64_t /*address*/, std::uint32_t& /*value*/) { return KltErrorNotImplemented; }
    virtual Failure WriteRegister(std::uint64_t /*address*/, std::uint32_t /*value*/) { return KltErrorNotImplemented; }
};

/// The code for the state that a camera answers with. The control protocols of GigE Vision and USB3 Vision have the
/// same ones; for both, zero is success.
KltErrorType CodeOfState(std::uint16_t state);

} // namespace OPX::KltAPI

#endif
