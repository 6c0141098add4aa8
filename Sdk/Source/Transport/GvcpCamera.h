#ifndef GVCPCAMERA_H
#define GVCPCAMERA_H

#include "Transport/GvcpChannel.h"

#include <future>
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
    std::promise<void> m_end; ///< Of the heart.
    std::thread m_heart;
};

} // namespace OPX::KltAPI

#endif
