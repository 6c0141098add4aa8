#include "Session/FeatureReader.h"

#include "Base/ErrorCodes.h"
#include "Base/GlibPtr.h"
#include "Base/Texts.h"
#include "Session/EnumEntryImpl.h"

#include <algorithm>

namespace OPX
{
namespace KltAPI
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

KltFeatureFlagsType FlagsOf(ArvGcFeatureNode* node)
{
    if (ARV_IS_GC_COMMAND(node))
        return KltFeatureFlagsWrite;
    // The device's own answer to this question is wrong in Aravis 0.8.26; the node's is right.
    switch (arv_gc_feature_node_get_actual_access_mode(node))
    {
    case ARV_GC_ACCESS_MODE_RO:
        return KltFeatureFlagsRead;
    case ARV_GC_ACCESS_MODE_WO:
        return KltFeatureFlagsWrite;
    default:
        return KltFeatureFlagsRead | KltFeatureFlagsWrite;
    }
}

std::string NameOf(ArvGcFeatureNode* node)
{
    const char* name = arv_gc_feature_node_get_name(node);
    return name == nullptr ? std::string() : name;
}

/// The nodes that a category names. Aravis' own list takes a time that grows with the square of its length.
std::vector<ArvGcFeatureNode*> LinksOf(ArvGcNode* category)
{
    std::vector<ArvGcFeatureNode*> links;
    ArvDomNode* child = arv_dom_node_get_first_child(ARV_DOM_NODE(category));
    for (; child != nullptr; child = arv_dom_node_get_next_sibling(child))
    {
        if (!ARV_IS_GC_PROPERTY_NODE(child))
            continue;
        ArvGcPropertyNode* property = ARV_GC_PROPERTY_NODE(child);
        if (arv_gc_property_node_get_node_type(property) != ARV_GC_PROPERTY_NODE_TYPE_P_FEATURE)
            continue;
        ArvGcNode* node = arv_gc_property_node_get_linked_node(property);
        if (ARV_IS_GC_FEATURE_NODE(node))
            links.push_back(ARV_GC_FEATURE_NODE(node));
    }
    return links;
}

} // namespace

FeatureReader::FeatureReader(ArvGc* description, std::chrono::steady_clock::duration patience)
    : m_description(description),
      m_deadline(std::chrono::steady_clock::now() + patience)
{
}

KltErrorType FeatureReader::Read(std::vector<FeatureData>& features)
{
    ReadCategory("Root", std::string(), 0);
    if (m_result == KltErrorSuccess)
        features.swap(m_features);
    return m_result;
}

void FeatureReader::ReadCategory(const std::string& nodeName, const std::string& path, int depth)
{
    ArvGcNode* category = arv_gc_get_node(m_description, nodeName.c_str());
    if (!ARV_IS_GC_CATEGORY(category) || depth > MaximumDepth)
        return;
    for (ArvGcFeatureNode* node : LinksOf(category))
    {
        if (m_result != KltErrorSuccess)
            return;
        // Links may lead back to where they came from, or to what another category has already.
        const std::string link = NameOf(node);
        if (!m_seen.insert(link).second)
            continue;
        if (ARV_IS_GC_CATEGORY(node))
            ReadCategory(link, path + '/' + WithoutControls(link), depth + 1);
        else
            ReadFeature(node, path.empty() ? "/" : path);
    }
}

void FeatureReader::ReadFeature(ArvGcFeatureNode* node, const std::string& path)
{
    if (!IsImplemented(node))
        return;
    FeatureData data;
    data.nodeName = NameOf(node);
    data.name = WithoutControls(data.nodeName);
    data.category = path;
    data.dataType = DataTypeOf(node);
    data.flags = FlagsOf(node);
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
        if (!IsImplemented(node))
            continue;
        CallError error;
        const gint64 value = arv_gc_enum_entry_get_value(ARV_GC_ENUM_ENTRY(node), error.Out());
        Notice(error.Get());
        entries.push_back(EnumEntry(new EnumEntry::Impl{WithoutControls(NameOf(node)), value}));
    }
    // Aravis has them in reverse.
    std::reverse(entries.begin(), entries.end());
    return entries;
}

bool FeatureReader::IsImplemented(ArvGcFeatureNode* node)
{
    if (m_result != KltErrorSuccess)
        return false;
    CallError error;
    const bool implemented = arv_gc_feature_node_is_implemented(node, error.Out()) != FALSE;
    Notice(error.Get());
    // Only a clear no counts: a feature is not to be missing because the camera could not be asked.
    return implemented || error.Get() != nullptr;
}

void FeatureReader::Notice(const GError* error)
{
    if (CodeOf(error) == KltErrorTimeout || std::chrono::steady_clock::now() > m_deadline)
        m_result = KltErrorTimeout;
}

} // namespace KltAPI
} // namespace OPX
