#include "Nodes/NodeState.h"

namespace OPX::KltAPI
{
namespace
{

const KltFeatureFlagsType BothFlags = KltFeatureFlagsRead | KltFeatureFlagsWrite;

KltFeatureFlagsType OwnFlagsOf(ArvGcFeatureNode* node)
{
    // The device's own answer to this question is wrong in Aravis 0.8.26; the node's is right.
    switch (arv_gc_feature_node_get_actual_access_mode(node))
    {
    case ARV_GC_ACCESS_MODE_RO:
        return KltFeatureFlagsRead;
    case ARV_GC_ACCESS_MODE_WO:
        return KltFeatureFlagsWrite;
    default:
        return BothFlags;
    }
}

/// The answer of \a ask, or \a unknown if registers with unknown content had a part in it.
template <class Ask>
bool Known(Ask ask, bool unknown, const TakeUnknown& takeUnknown)
{
    if (takeUnknown)
        takeUnknown();
    const bool answer = ask() != FALSE;
    return answer == unknown || !takeUnknown || !takeUnknown() ? answer : unknown;
}

} // namespace

KltFeatureFlagsType FlagsOf(const NodeChain& chain)
{
    if (ARV_IS_GC_COMMAND(chain.front()))
        return KltFeatureFlagsWrite;
    KltFeatureFlagsType flags = BothFlags;
    for (ArvGcFeatureNode* each : chain)
        flags &= OwnFlagsOf(each);
    return flags;
}

Failure AskImplemented(const NodeChain& chain, const TakeUnknown& takeUnknown, bool& implemented)
{
    implemented = true;
    for (ArvGcFeatureNode* each : chain)
    {
        CallError error;
        const bool answer =
            Known([&] { return arv_gc_feature_node_is_implemented(each, error.Out()); }, true, takeUnknown);
        if (error.Get() != nullptr)
            return error.Code();
        if (!answer)
        {
            implemented = false;
            break;
        }
    }
    return KltErrorSuccess;
}

Failure CheckState(ArvGcFeatureNode* node, bool write, const TakeUnknown& takeUnknown)
{
    CallError error;
    const NodeChain chain = ValueChain(node);
    bool usable = true;
    if (Failure failure = AskImplemented(chain, takeUnknown, usable))
        return failure;
    for (ArvGcFeatureNode* each : chain)
    {
        usable = usable && arv_gc_feature_node_is_available(each, error.Out()) != FALSE;
        if (error.Get() == nullptr && write)
            usable = usable && arv_gc_feature_node_is_locked(each, error.Out()) == FALSE;
        if (error.Get() != nullptr)
            return error.Code();
    }
    return usable ? KltErrorSuccess : KltErrorInvalidAccess;
}

Failure CheckEntry(ArvGcEnumeration* enumeration, std::int64_t value, const TakeUnknown& takeUnknown)
{
    Failure result = KltErrorInvalidValue;
    for (const GSList* entry = arv_gc_enumeration_get_entries(enumeration); entry != nullptr && result;
         entry = entry->next)
    {
        CallError error;
        if (arv_gc_enum_entry_get_value(ARV_GC_ENUM_ENTRY(entry->data), error.Out()) == value && error.Get() == nullptr)
            result = CheckState(ARV_GC_FEATURE_NODE(entry->data), false, takeUnknown);
    }
    return result;
}

bool DeliveredNodes::Contain(ArvGcNode* node)
{
    if (!ARV_IS_GC_NODE(node))
        return false;
    const auto known = m_known.emplace(node, false);
    if (!known.second)
        return known.first->second;
    bool comesWithData = false;
    bool isElsewhere = ARV_IS_GC_STRUCT_ENTRY_NODE(node);
    bool delivered = isElsewhere && Contain(ARV_GC_NODE(arv_dom_node_get_parent_node(ARV_DOM_NODE(node))));
    ForEachProperty(node,
        [&](ArvGcPropertyNode* property, ArvGcPropertyNodeType type)
        {
            switch (type)
            {
            case ARV_GC_PROPERTY_NODE_TYPE_CHUNK_ID:
            case ARV_GC_PROPERTY_NODE_TYPE_EVENT_ID:
                comesWithData = true;
                break;
            case ARV_GC_PROPERTY_NODE_TYPE_VALUE:
            case ARV_GC_PROPERTY_NODE_TYPE_FORMULA:
                isElsewhere = true;
                break;
            case ARV_GC_PROPERTY_NODE_TYPE_P_VALUE:
            case ARV_GC_PROPERTY_NODE_TYPE_P_VARIABLE:
            case ARV_GC_PROPERTY_NODE_TYPE_P_VALUE_INDEXED:
            case ARV_GC_PROPERTY_NODE_TYPE_P_VALUE_DEFAULT:
            case ARV_GC_PROPERTY_NODE_TYPE_P_PORT:
                isElsewhere = true;
                delivered = delivered || Contain(arv_gc_property_node_get_linked_node(property));
                break;
            default:
                break;
            }
        });
    // A node whose value is elsewhere only tells which data belongs to it: an integer with the number of an event.
    return m_known[node] = delivered || (comesWithData && !isElsewhere);
}

} // namespace OPX::KltAPI
