#ifndef NODELINKS_H
#define NODELINKS_H

#include <arv.h>

#include <string>
#include <vector>

namespace OPX::KltAPI
{

/// Calls \a visit with every property of a node and its type: the elements in it that are not nodes themselves.
template <class Visit>
void ForEachProperty(ArvGcNode* node, Visit visit)
{
    for (ArvDomNode* child = arv_dom_node_get_first_child(ARV_DOM_NODE(node)); child != nullptr;
         child = arv_dom_node_get_next_sibling(child))
        if (ARV_IS_GC_PROPERTY_NODE(child))
            visit(ARV_GC_PROPERTY_NODE(child), arv_gc_property_node_get_node_type(ARV_GC_PROPERTY_NODE(child)));
}

/// The name in the description; empty if there is none.
inline std::string NameOf(ArvGcFeatureNode* node)
{
    const char* name = arv_gc_feature_node_get_name(node);
    return name == nullptr ? std::string() : name;
}

/// The node whose value becomes the value of \a node; null if that has a value of its own.
inline ArvGcNode* ValueNode(ArvGcNode* node)
{
    ArvGcPropertyNode* link = nullptr;
    ForEachProperty(node, [&link](ArvGcPropertyNode* property, ArvGcPropertyNodeType type)
        { link = type == ARV_GC_PROPERTY_NODE_TYPE_P_VALUE ? property : link; });
    return link == nullptr ? nullptr : arv_gc_property_node_get_linked_node(link);
}

typedef std::vector<ArvGcFeatureNode*> NodeChain;

/// The node, the one that its pValue names, the one that this one's names, and so on.
inline NodeChain ValueChain(ArvGcFeatureNode* node)
{
    // It has an end: descriptions in which values depend on themselves are not opened.
    NodeChain chain;
    for (ArvGcNode* next = ARV_GC_NODE(node); ARV_IS_GC_FEATURE_NODE(next); next = ValueNode(next))
        chain.push_back(ARV_GC_FEATURE_NODE(next));
    return chain;
}

} // namespace OPX::KltAPI

#endif
