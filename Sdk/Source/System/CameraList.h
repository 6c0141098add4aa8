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

    /// Takes over what a scan of \a transport has found.
    /// \return the cameras that came and went
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
