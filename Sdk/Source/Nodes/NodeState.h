#ifndef NODESTATE_H
#define NODESTATE_H

#include "Base/Failure.h"
#include "KoltaCPP/KoltaTypes.h"
#include "Nodes/NodeLinks.h"

#include <arv.h>

#include <functional>
#include <unordered_map>

namespace OPX::KltAPI
{

/// Whether something whose true content is unknown was read from the camera since the last call: a register of a
/// simulated camera that was never written. Empty for real cameras.
typedef std::function<bool()> TakeUnknown;

/// Whether a node can be read and written at all. Every node on the way to the value can forbid it; Aravis asks only
/// the first and the last one.
/// \param chain the node and those that its value comes through
KltFeatureFlagsType FlagsOf(const NodeChain& chain);

/// Whether the camera has this node and all that its value comes through. Only a clear no counts: not a failure, and
/// not an answer that depends on registers with unknown content.
Failure AskImplemented(const NodeChain& chain, const TakeUnknown& takeUnknown, bool& implemented);

/// Whether the node can be used in the camera's present state. \return KltErrorInvalidAccess if not
Failure CheckState(ArvGcFeatureNode* node, bool write, const TakeUnknown& takeUnknown);

/// Whether the camera has an entry of this value now. \return KltErrorInvalidValue if it never has
Failure CheckEntry(ArvGcEnumeration* enumeration, std::int64_t value, const TakeUnknown& takeUnknown);

/// Finds the nodes whose values come with images and events, and not from the camera's registers.
class DeliveredNodes
{
public:
    bool Contain(ArvGcNode* node);

private:
    std::unordered_map<ArvGcNode*, bool> m_known;
};

} // namespace OPX::KltAPI

#endif
