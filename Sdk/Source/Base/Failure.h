#ifndef FAILURE_H
#define FAILURE_H

#include "Document/Problem.h"
#include "KoltaCPP/KoltaTypes.h"

#include <glib.h>

#include <exception>
#include <utility>

namespace OPX::KltAPI
{

/// Why something could not be done; with the code for success it was done.
struct Failure
{
    Failure(KltErrorType itsCode = KltErrorSuccess, Problem itsReason = Problem())
        : code(itsCode),
          reason(std::move(itsReason))
    {
    }

    Failure(bool) = delete; ///< It would be a code.

    explicit operator bool() const { return code != KltErrorSuccess; }

    KltErrorType code;
    Problem reason; ///< What the code does not say, if there is more to say.
};

/// The domain of GLib's errors that are our own: their codes are the SDK's.
GQuark OwnErrorDomain();

/// Tells GLib. \return whether nothing failed
bool PassOn(const Failure& failure, GError** error);

/// The error of a call into GLib or Aravis: pass Out() to the call.
class CallError
{
public:
    CallError() = default;
    CallError(CallError&& other) noexcept : m_error(std::exchange(other.m_error, nullptr)) {}
    ~CallError() { g_clear_error(&m_error); }

    GError** Out() { return &m_error; }
    const GError* Get() const { return m_error; }
    void MoveTo(GError** error) { g_propagate_error(error, std::exchange(m_error, nullptr)); }

    /// The SDK's code for the error; success for none.
    KltErrorType Code() const;

private:
    GError* m_error = nullptr;
};

/// Makes a call with room for an error, and throws that.
template <class Call>
auto Checked(Call call)
{
    CallError error;
    const auto result = call(error.Out());
    if (error.Get() != nullptr)
        throw CallError(std::move(error));
    return result;
}

/// Makes a call with room for an error.
template <class Call>
Failure Perform(Call call)
{
    CallError error;
    call(error.Out());
    return error.Code();
}

/// What \a work returns. No exception leaves the library, nor goes through one that is written in C.
template <class Work>
auto Caught(Work work) -> decltype(work())
try
{
    return work();
}
catch (const std::exception&) // Out of memory.
{
    return KltErrorResources;
}

} // namespace OPX::KltAPI

#endif
