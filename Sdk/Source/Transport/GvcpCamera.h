#ifndef GVCPCAMERA_H
#define GVCPCAMERA_H

#include "Transport/GvcpChannel.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace OPX::KltAPI
{

/// A GigE Vision camera, of which one program at a time has control.
class GvcpCamera : public GvcpChannel
{
public:
    using GvcpChannel::GvcpChannel;

    /// Gives up control, which takes half a second at most.
    ~GvcpCamera() override;

    /// \return KltErrorInvalidAccess if another program has control
    Failure CheckUnused();

    /// Takes control, and keeps it by being heard from. Once.
    Failure TakeControl();

private:
    void Beat();

    std::mutex m_mutex; ///< Around the end.
    std::condition_variable m_wakeUp;
    bool m_ending = false;
    std::thread m_heart;
};

} // namespace OPX::KltAPI

#endif
