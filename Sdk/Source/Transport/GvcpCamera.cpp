#include "Transport/GvcpCamera.h"

namespace OPX::KltAPI
{
namespace
{

using std::chrono::milliseconds;

/// Somebody controls the camera, and may let others read.
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
            while (!IsLost() && end.wait_for(Heartbeat) != std::future_status::ready)
                Touch();
        });
    return KltErrorSuccess;
}

} // namespace OPX::KltAPI
