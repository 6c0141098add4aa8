#include "Camera/FeatureReader.h"

#include "Camera/Impls.h"
#include "Document/Texts.h"
#include "Nodes/NodeRange.h"
#include "Nodes/NodeValues.h"

#include <algorithm>

namespace OPX::KltAPI
{
namespace
{

/// Cameras have three or four levels of categories.
const int MaximumDepth = 32;

/// The nodes that a category names, in its order, without those that do not exist. The time that Aravis' own list of
/// the names takes grows with the square of its length: half a minute for 90,000.
std::vector<ArvGcFeatureNode*> FeaturesOf(ArvGcNode* category)
{
    std::vector<ArvGcFeatureNode*> features;
    ForEachProperty(category,
        [&](ArvGcPropertyNode* property, ArvGcPropertyNodeType type)
        {
            ArvGcNode* feature =
                type == ARV_GC_PROPERTY_NODE_TYPE_P_FEATURE ? arv_gc_property_node_get_linked_node(property) : nullptr;
            if (ARV_IS_GC_FEATURE_NODE(feature))
                features.push_back(ARV_GC_FEATURE_NODE(feature));
        });
    return features;
}

} // namespace

FeatureReader::FeatureReader(const Connection& connection)
    : m_connection(connection),
      m_deadline(std::min(Connection::Clock::now() + connection.patience, *connection.deadline))
{
}

Failure FeatureReader::Read(std::vector<FeatureData>& features)
{
    ReadCategory(arv_gc_get_node(m_connection.nodeMap.get(), "Root"), std::string(), 0);
    if (!m_failure)
        features.swap(m_features);
    return m_failure;
}

void FeatureReader::ReadCategory(ArvGcNode* category, const std::string& path, int depth)
{
    if (!ARV_IS_GC_CATEGORY(category) || depth > MaximumDepth)
        return;
    for (ArvGcFeatureNode* feature : FeaturesOf(category))
    {
        if (m_failure)
            return;
        // Links may lead back to where they came from, or to what is already in another category.
        if (!m_seen.insert(feature).second)
            continue;
        if (ARV_IS_GC_CATEGORY(feature))
            ReadCategory(ARV_GC_NODE(feature), path + '/' + WithoutControls(NameOf(feature)), depth + 1);
        else
            ReadFeature(feature, path.empty() ? "/" : path);
    }
}

void FeatureReader::ReadFeature(ArvGcFeatureNode* node, const std::string& path)
{
    const NodeChain chain = ValueChain(node);
    if (!IsImplemented(chain))
        return;
    FeatureData data;
    data.nodeName = NameOf(node);
    data.name = WithoutControls(data.nodeName);
    data.category = WithoutLineEnd(path);
    data.dataType = DataTypeOf(ARV_GC_NODE(node));
    data.flags = FlagsOf(chain);
    data.isDelivered = m_delivered.Contain(ARV_GC_NODE(node));
    if (data.dataType == KltFeatureDataEnum)
        data.entries = ReadEntries(ARV_GC_ENUMERATION(node));
    else if (data.dataType == KltFeatureDataInt)
        for (const std::int64_t value : ValidValuesOf(ARV_GC_NODE(node)))
            data.entries.push_back(EnumEntry(new EnumEntry::Impl{std::to_string(value), value}));
    m_features.push_back(std::move(data));
}

std::vector<EnumEntry> FeatureReader::ReadEntries(ArvGcEnumeration* enumeration)
{
    std::vector<EnumEntry> entries;
    for (const GSList* entry = arv_gc_enumeration_get_entries(enumeration); entry != nullptr; entry = entry->next)
    {
        ArvGcFeatureNode* node = ARV_GC_FEATURE_NODE(entry->data);
        if (!IsImplemented(ValueChain(node)))
            continue;
        CallError error;
        const gint64 value = arv_gc_enum_entry_get_value(ARV_GC_ENUM_ENTRY(node), error.Out());
        Notice(error.Code());
        entries.push_back(EnumEntry(new EnumEntry::Impl{WithoutControls(NameOf(node)), value}));
    }
    // Aravis has them in reverse order.
    std::reverse(entries.begin(), entries.end());
    return entries;
}

bool FeatureReader::IsImplemented(const NodeChain& chain)
{
    if (m_failure)
        return false;
    bool implemented = true;
    Notice(AskImplemented(chain, m_connection.takeUnknown, implemented));
    return implemented;
}

void FeatureReader::Notice(const Failure& failure)
{
    if (failure.code == KltErrorDeviceNotOpen)
        m_failure = failure;
    else if (failure.code == KltErrorTimeout || std::chrono::steady_clock::now() > m_deadline)
        m_failure = KltErrorTimeout;
}

} // namespace OPX::KltAPI
