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
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ending = true;
    }
    m_wakeUp.notify_all();
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
    Failure failure = WriteRegister(ControlRegister, Controlled);
    if (!failure)
        m_heart = std::thread([this] { Beat(); });
    return failure;
}

void GvcpCamera::Beat()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_wakeUp.wait_for(lock, Heartbeat, [this] { return m_ending; }))
        Touch(ControlRegister);
}

} // namespace OPX::KltAPI
