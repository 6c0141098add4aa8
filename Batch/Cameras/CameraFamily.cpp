#include "Cameras/CameraFamily.h"

#include "KoltaHelper.h"
#include "SdkReads.h"

#include <unordered_map>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

/// Where a feature of the family comes from.
struct Origin
{
    struct Entry
    {
        KltInt64_t value;
        const std::string* camera;
    };

    const std::string* camera;
    std::unordered_map<std::string, Entry> entries; ///< By name. Filled when a second camera has the feature, too.
};

class Union
{
public:
    /// The camera's label is referred to until the end.
    void Add(CameraFeatures& camera)
    {
        // Only what came with the cameras before: if this one has a name twice, the check of names is to see both.
        for (; m_indexed < m_family.features.size(); ++m_indexed)
            m_indices.emplace(m_family.features[m_indexed].name, m_indexed);
        for (FeatureInfo& feature : camera.features)
        {
            const auto known = m_indices.find(feature.name);
            if (known != m_indices.end())
                Merge(known->second, feature, camera.label);
            else
            {
                m_family.features.push_back(std::move(feature));
                m_origins.push_back({&camera.label, {}});
            }
        }
    }

    CameraFamily Result() { return std::move(m_family); }

private:
    void Merge(std::size_t index, const FeatureInfo& feature, const std::string& camera)
    {
        FeatureInfo& common = m_family.features[index];
        if (common.dataType != feature.dataType)
            return Contradict("'" + feature.name + "'", TypeName(common.dataType), *m_origins[index].camera,
                TypeName(feature.dataType), camera);
        // Whether the class has a setter is asked of the handle.
        if (!Has(*common.feature, KltFeatureFlagsWrite) && Has(*feature.feature, KltFeatureFlagsWrite))
            common.feature = feature.feature;
        MergeEntries(common, m_origins[index], feature.entries, camera);
    }

    void MergeEntries(
        FeatureInfo& common, Origin& origin, const std::vector<EnumEntry>& entries, const std::string& camera)
    {
        if (origin.entries.empty())
            for (const EnumEntry& entry : common.entries)
                origin.entries.emplace(
                    TextOf(entry, &EnumEntry::GetName), Origin::Entry{ValueOf(entry), origin.camera});
        for (const EnumEntry& entry : entries)
        {
            const std::string name = TextOf(entry, &EnumEntry::GetName);
            const KltInt64_t value = ValueOf(entry);
            const auto place = origin.entries.emplace(name, Origin::Entry{value, &camera});
            const Origin::Entry& known = place.first->second;
            if (place.second)
                common.entries.push_back(entry);
            else if (known.value != value)
                Contradict("Entry '" + name + "' of '" + common.name + "'", std::to_string(known.value), *known.camera,
                    std::to_string(value), camera);
        }
    }

    void Contradict(const std::string& what, const std::string& before, const std::string& first,
        const std::string& after, const std::string& second)
    {
        m_family.contradictions.push_back(
            what + " is " + before + " in '" + first + "' and " + after + " in '" + second + "'.");
    }

    CameraFamily m_family;
    std::vector<Origin> m_origins; ///< Of the features, one each.
    std::unordered_map<std::string, std::size_t> m_indices;
    std::size_t m_indexed = 0;
};

} // namespace

std::string TypeName(KltFeatureDataType dataType)
{
    return KoltaHelper::DataTypeToString(dataType).remove(QLatin1String("KltFeatureData")).toStdString();
}

CameraFamily Unite(std::vector<CameraFeatures> cameras)
{
    Union all;
    for (CameraFeatures& camera : cameras)
        all.Add(camera);
    return all.Result();
}
