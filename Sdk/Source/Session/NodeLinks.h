#ifndef NODELINKS_H
#define NODELINKS_H

#include <arv.h>

#include <functional>
#include <vector>

namespace OPX
{
namespace KltAPI
{

/// Calls \a visit with every property of a node: the elements in it that are no nodes themselves.
void ForEachProperty(
    ArvGcNode* node, const std::function<void(ArvGcPropertyNode* property, ArvGcPropertyNodeType type)>& visit);

/// The node that the first property of this type names; null if there is none.
ArvGcNode* LinkedNode(ArvGcNode* node, ArvGcPropertyNodeType type);

/// The node, the one that its pValue names, the one that this one's names, and so on.
std::vector<ArvGcFeatureNode*> ValueChain(ArvGcFeatureNode* node);

} // namespace KltAPI
} // namespace OPX

#endif
