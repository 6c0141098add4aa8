#ifndef CONNECTION_H
#define CONNECTION_H

#include "Base/Failure.h"
#include "Nodes/NodeMap.h"
#include "Nodes/NodeState.h"
#include "Safety/SafeDescription.h"

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace OPX::KltAPI
{

/// An open connection to a camera. The node map goes first.
struct Connection
{
    typedef std::chrono::steady_clock Clock;

    /// When the call that is under way has to end. Moved on by every call; the device looks at it.
    std::shared_ptr<Clock::time_point> deadline = std::make_shared<Clock::time_point>();

    ObjectPtr<ArvDevice> device;
    std::shared_ptr<const SafeDescription> description;
    ObjectPtr<ArvGc> nodeMap; ///< Made from what was checked, and from nothing else.

    /// How long the listing of all features may take.
    std::chrono::seconds patience{10};

    TakeUnknown takeUnknown; ///< For simulated cameras.

    /// Whether the camera is still there, and still ours.
    std::function<bool()> isThere = [] { return true; };

    bool hasEnded = false; ///< The camera was gone; whether it is back does not matter.
    bool isEndTold = false;

    /// Makes the node map of a description, which may have a problem. For connections with a device.
    Failure Use(std::shared_ptr<const SafeDescription> checked)
    {
        if (checked->problem)
            return {KltErrorOther, checked->problem};
        description = std::move(checked);
        nodeMap = NewNodeMap(device.get(), *description);
        return nodeMap ? KltErrorSuccess : KltErrorOther;
    }
};

/// Connects to one camera. If there is a reason why it cannot, it is what is wrong with the camera's description.
typedef std::function<Failure(Connection& connection)> Connector;

} // namespace OPX::KltAPI

#endif
