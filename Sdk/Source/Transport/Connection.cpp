#include "Transport/Connection.h"

#include "Nodes/NodeMap.h"

#include <utility>

namespace OPX::KltAPI
{

Failure Connection::Use(std::shared_ptr<const SafeDescription> checked)
{
    if (checked->problem)
        return {KltErrorOther, checked->problem};
    description = std::move(checked);
    nodeMap = NewNodeMap(device.get(), description->xml);
    return nodeMap ? KltErrorSuccess : KltErrorOther;
}

} // namespace OPX::KltAPI
