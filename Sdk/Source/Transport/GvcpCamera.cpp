#include "Transport/GvcpCamera.h"

namespace OPX::KltAPI
{
namespace
{

using std::chrono::milliseconds;

/// Who controls the camera: nobody, somebody, or somebody who does not let others read either.
const std::uint32_t ControlRegister = 0xA00;
const std::uint32_t Controlled = 2;
const std::uint32_t ControlBits = 3;

/// A camera drops a controller that it has not heard from for three seconds. Some of what is sent gets lost.
const milliseconds Heartbeat(500);

/// A camera that is gone has dropped us anyway.
const milliseconds Goodbye(500);

} // namespace

GvcpCamera::~GvcpCamera()
{
    if (!m_heart.joinable())
        return;
    m_end.set_value();
    m_heart.join();
    SetDeadline(std::make_shared<const Clock::time_point>(Clock::now() + Goodbye));
    GvcpChannel::WriteRegister(ControlRegister, 0);
}

Failure GvcpCamera::CheckUnused()
{
    std::uint32_t control = 0;
    if (Failure failure = ReadRegister(ControlRegister, control))
        return failure;
    return (control & ControlBits) != 0 ? KltErrorInvalidAccess : KltErrorSuccess;
}

Failure GvcpCamera::TakeControl()
{
    if (Failure failure = WriteRegister(ControlRegister, Controlled))
        return failure;
    m_heart = std::thread(
        [this, end = m_end.get_future()]
        {
            while (end.wait_for(Heartbeat) != std::future_status::ready)
                Touch(ControlRegister);
        });
    return KltErrorSuccess;
}

} // namespace OPX::KltAPI
