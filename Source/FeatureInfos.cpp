#include "FeatureInfos.h"

#include "SdkReads.h"

#include <algorithm>
#include <utility>

using namespace OPX::KltAPI;

FeatureInfo::FeatureInfo(const FeaturePtr& handle)
    : feature(handle),
      name(TextOf(*handle, &Feature::GetName)),
      category(TextOf(*handle, &Feature::GetCategory))
{
    handle->GetDataType(dataType);
    if (dataType == KltFeatureDataEnum)
        ReadList(*handle, &Feature::GetEntries, entries);
}

// By value: the camera stays alive for as long as it is read, whatever becomes of the caller's handle.
int FeatureInfos::Create(shared_ptr<Camera> camera) // NOLINT(performance-unnecessary-value-param)
{
    std::vector<FeatureInfo> features;
    const int result = Read(*camera, features);
    Arrange(std::move(features));
    return result;
}

int FeatureInfos::Read(Camera& camera, std::vector<FeatureInfo>& features)
{
    std::vector<FeaturePtr> handles;
    const KltErrorType result = ReadList(camera, &Camera::GetFeatures, handles);
    for (const FeaturePtr& handle : handles)
        if (handle.get() != nullptr)
            features.emplace_back(handle);
    return result;
}

void FeatureInfos::Arrange(std::vector<FeatureInfo> features)
{
    m_categories.clear();
    m_enums.clear();
    for (FeatureInfo& info : features)
    {
        m_categories[info.category].push_back(info.feature);
        if (info.dataType != KltFeatureDataEnum)
            continue;
        std::sort(info.entries.begin(), info.entries.end(), SortEnumEntriesByValue);
        m_enums[info.name].swap(info.entries);
    }
    for (CategoryMap::value_type& category : m_categories)
        std::sort(category.second.begin(), category.second.end(), SortFeaturesByName);
}

int FeatureInfos::FeatureCount() const
{
    int count = 0;
    for (const CategoryMap::value_type& category : m_categories)
        count += static_cast<int>(category.second.size());
    return count;
}

bool FeatureInfos::SortFeaturesByName(const FeaturePtr& a, const FeaturePtr& /*b*/)
{
    // Compares the name of a with nothing, so that no feature ever comes before another one. Categories of more than
    // 16 features get their order from what std::sort does then, and the classes that users have generated so far
    // list their methods in it. A comparison that works would reorder every one of them.
    std::string name;
    std::string nothing;
    ReadString(*a, &Feature::GetName, name);
    ReadString(*a, &Feature::GetName, name);
    return name < nothing;
}

bool FeatureInfos::SortEnumEntriesByValue(const EnumEntry& a, const EnumEntry& b)
{
    return ValueOf(a) < ValueOf(b);
}
