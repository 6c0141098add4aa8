#include "Session/NodeLinks.h"

namespace OPX
{
namespace KltAPI
{

void ForEachProperty(
    ArvGcNode* node, const std::function<void(ArvGcPropertyNode* property, ArvGcPropertyNodeType type)>& visit)
{
    for (ArvDomNode* child = arv_dom_node_get_first_child(ARV_DOM_NODE(node)); child != nullptr;
         child = arv_dom_node_get_next_sibling(child))
        if (ARV_IS_GC_PROPERTY_NODE(child))
            visit(ARV_GC_PROPERTY_NODE(child), arv_gc_property_node_get_node_type(ARV_GC_PROPERTY_NODE(child)));
}

ArvGcNode* LinkedNode(ArvGcNode* node, ArvGcPropertyNodeType type)
{
    ArvGcNode* linked = nullptr;
    ForEachProperty(node,
        [&](ArvGcPropertyNode* property, ArvGcPropertyNodeType each)
        {
            if (each == type && linked == nullptr)
                linked = arv_gc_property_node_get_linked_node(property);
        });
    return linked;
}

std::vector<ArvGcFeatureNode*> ValueChain(ArvGcFeatureNode* node)
{
    // It has an end: descriptions in which values depend on themselves are not opened.
    std::vector<ArvGcFeatureNode*> chain;
    for (ArvGcNode* next = ARV_GC_NODE(node); ARV_IS_GC_FEATURE_NODE(next);
         next = LinkedNode(next, ARV_GC_PROPERTY_NODE_TYPE_P_VALUE))
        chain.push_back(ARV_GC_FEATURE_NODE(next));
    return chain;
}

} // namespace KltAPI
} // namespace OPX
