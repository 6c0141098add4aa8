#include "Camera/FeatureReader.h"

#include "Base/ErrorCodes.h"
#include "Base/GlibPtr.h"
#include "Camera/Impls.h"
#include "Document/Texts.h"

#include <algorithm>

namespace OPX::KltAPI
{
namespace
{

/// Cameras have three or four levels of categories.
const int MaximumDepth = 32;

/// The kinds of nodes overlap: an enumeration can also be read as an integer, for example. The first that fits counts.
KltFeatureDataType DataTypeOf(ArvGcFeatureNode* node)
{
    if (ARV_IS_GC_ENUMERATION(node))
        return KltFeatureDataEnum;
    if (ARV_IS_GC_BOOLEAN(node))
        return KltFeatureDataBool;
    if (ARV_IS_GC_COMMAND(node))
        return KltFeatureDataCommand;
    if (ARV_IS_GC_FLOAT(node))
        return KltFeatureDataFloat;
    if (ARV_IS_GC_INTEGER(node))
        return KltFeatureDataInt;
    if (ARV_IS_GC_STRING(node))
        return KltFeatureDataString;
    if (ARV_IS_GC_REGISTER(node))
        return KltFeatureDataRaw;
    return KltFeatureDataUnknown;
}

std::string NameOf(ArvGcFeatureNode* node)
{
    const char* name = arv_gc_feature_node_get_name(node);
    return name == nullptr ? std::string() : name;
}

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

KltErrorType FeatureReader::Read(std::vector<FeatureData>& features)
{
    ReadCategory(arv_gc_get_node(m_connection.nodeMap.get(), "Root"), std::string(), 0);
    if (m_result == KltErrorSuccess)
        features.swap(m_features);
    return m_result;
}

void FeatureReader::ReadCategory(ArvGcNode* category, const std::string& path, int depth)
{
    if (!ARV_IS_GC_CATEGORY(category) || depth > MaximumDepth)
        return;
    for (ArvGcFeatureNode* feature : FeaturesOf(category))
    {
        if (m_result != KltErrorSuccess)
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
    data.dataType = DataTypeOf(node);
    data.flags = FlagsOf(chain);
    data.isDelivered = m_delivered.Contain(ARV_GC_NODE(node));
    if (data.dataType == KltFeatureDataEnum)
        data.entries = ReadEntries(ARV_GC_ENUMERATION(node));
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
        Notice(error.Get());
        entries.push_back(EnumEntry(new EnumEntry::Impl{WithoutControls(NameOf(node)), value}));
    }
    // Aravis has them in reverse order.
    std::reverse(entries.begin(), entries.end());
    return entries;
}

bool FeatureReader::IsImplemented(const NodeChain& chain)
{
    if (m_result != KltErrorSuccess)
        return false;
    CallError error;
    const bool implemented = OPX::KltAPI::IsImplemented(chain, m_connection.takeUnknown, error.Out());
    Notice(error.Get());
    return implemented;
}

void FeatureReader::Notice(const GError* error)
{
    if (CodeOf(error) == KltErrorTimeout || std::chrono::steady_clock::now() > m_deadline)
        m_result = KltErrorTimeout;
}

} // namespace OPX::KltAPI
