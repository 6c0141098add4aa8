#include "Nodes/NodeLinks.h"

namespace OPX::KltAPI
{

ArvGcNode* ValueNode(ArvGcNode* node)
{
    ArvGcPropertyNode* link = nullptr;
    ForEachProperty(node, [&link](ArvGcPropertyNode* property, ArvGcPropertyNodeType type)
        { link = type == ARV_GC_PROPERTY_NODE_TYPE_P_VALUE ? property : link; });
    return link == nullptr ? nullptr : arv_gc_property_node_get_linked_node(link);
}

NodeChain ValueChain(ArvGcFeatureNode* node)
{
    // It has an end: descriptions in which values depend on themselves are not opened.
    NodeChain chain;
    for (ArvGcNode* next = ARV_GC_NODE(node); ARV_IS_GC_FEATURE_NODE(next); next = ValueNode(next))
        chain.push_back(ARV_GC_FEATURE_NODE(next));
    return chain;
}

} // namespace OPX::KltAPI
