#ifndef CAMERALIST_H
#define CAMERALIST_H

#include "KoltaCPP/Camera.h"
#include "Transport/Transport.h"

#include <mutex>
#include <utility>
#include <vector>

namespace OPX::KltAPI
{

/// The cameras that were found, one object for each as long as it is there. Any thread.
class CameraList
{
public:
    typedef std::vector<std::pair<CameraPtr, UpdateTriggerType>> Changes;

    /// Takes over what a scan of \a transport has found, and looks after the sessions. A camera that others talk to, or
    /// that answers a program, has not gone, whatever a scan misses. One thread at a time.
    /// \return the cameras that came and went, and those that an open session has lost
    Changes Update(const Transport& transport, const std::vector<CameraRecord>& found);

    CameraPtrVector Cameras() const;

    void Clear();

private:
    struct Known
    {
        const Transport* transport;
        std::string id;
        CameraPtr camera;
        int misses;
    };

    mutable std::mutex m_mutex;
    std::vector<Known> m_known;
};

} // namespace OPX::KltAPI

#endif
