#ifndef CONNECTION_H
#define CONNECTION_H

#include "Base/GlibPtr.h"
#include "KoltaCPP/KoltaTypes.h"
#include "Nodes/NodeState.h"
#include "Safety/ValueCopies.h"

#include <arv.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace OPX::KltAPI
{

/// An open connection to a camera. The node map goes first.
struct Connection
{
    typedef std::chrono::steady_clock Clock;

    /// When the call that is under way has to end. Moved on by every call; the device looks at it.
    std::shared_ptr<Clock::time_point> deadline = std::make_shared<Clock::time_point>();

    ObjectPtr<ArvDevice> device;
    ObjectPtr<ArvGc> nodeMap;
    std::string xml; ///< What the node map was made from.

    /// How long the listing of all features may take.
    std::chrono::seconds patience{10};

    TakeUnknown takeUnknown; ///< For simulated cameras.

    /// Whether the camera is still there. Empty for cameras that do not answer when they are gone.
    std::function<bool()> isThere;

    ValueCopies copies;
};

/// Connects to one camera.
typedef std::function<KltErrorType(Connection& connection)> Connector;

} // namespace OPX::KltAPI

#endif
