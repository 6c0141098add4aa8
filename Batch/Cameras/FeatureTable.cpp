#include "Cameras/FeatureTable.h"

#include "Base/Messages.h"
#include "Cameras/CameraFamily.h"
#include "Document/Limits.h"
#include "SdkReads.h"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

FeatureRow RowOf(const FeatureInfo& info)
{
    FeatureRow row = {info.category, info.name, TypeName(info.dataType), Has(*info.feature, KltFeatureFlagsRead),
        Has(*info.feature, KltFeatureFlagsWrite)};
    std::vector<EnumEntry> entries = info.entries;
    std::sort(entries.begin(), entries.end(), FeatureInfos::SortEnumEntriesByValue);
    for (const EnumEntry& entry : entries)
        row.entries.push_back({TextOf(entry, &EnumEntry::GetName), std::to_string(ValueOf(entry)), {}});
    return row;
}

std::vector<FeatureRow> RowsOf(const std::vector<FeatureInfo>& features)
{
    std::vector<FeatureRow> rows;
    rows.reserve(features.size());
    for (const FeatureInfo& info : features)
        rows.push_back(RowOf(info));
    return rows;
}

/// The rows of \a features, which are in the same order, in the order of the catalogue.
std::vector<FeatureRow> Arranged(std::vector<FeatureRow> rows, const std::vector<FeatureInfo>& features)
{
    FeatureInfos catalogue;
    catalogue.Arrange(features);
    std::unordered_map<const Feature*, FeatureRow*> places;
    for (std::size_t i = 0; i < rows.size(); ++i)
        places[features[i].feature.get()] = &rows[i];
    std::vector<FeatureRow> arranged;
    for (const auto& category : catalogue.Categories())
        for (const FeaturePtr& feature : category.second)
            arranged.push_back(std::move(*places[feature.get()]));
    return arranged;
}

/// Notes which entries \a camera has. One that has another value there is a row of its own.
void AddEntries(std::vector<ValueRow>& rows, const std::vector<EnumEntry>& entries, const std::string& camera)
{
    std::map<std::pair<std::string, std::string>, bool> isListed;
    for (const EnumEntry& entry : entries)
        isListed.emplace(std::make_pair(TextOf(entry, &EnumEntry::GetName), std::to_string(ValueOf(entry))), false);
    for (ValueRow& row : rows)
    {
        const auto own = isListed.find({row.name, row.value});
        if (own == isListed.end())
            continue;
        row.cameras.push_back(camera);
        own->second = true;
    }
    for (const auto& [entry, listed] : isListed)
        if (!listed)
            rows.push_back({entry.first, entry.second, {camera}});
}

void AddType(std::vector<ValueRow>& types, const std::string& type, const std::string& camera)
{
    auto known = std::find_if(types.begin(), types.end(), [&type](const ValueRow& any) { return any.name == type; });
    if (known == types.end())
        known = types.insert(known, {type, {}, {}});
    known->cameras.push_back(camera);
}

/// Notes that \a camera has the feature.
void AddCamera(FeatureRow& row, const FeatureInfo& feature, const std::string& camera)
{
    row.cameras.push_back(camera);
    AddType(row.types, TypeName(feature.dataType), camera);
    // The handle in the family tells of one camera only.
    row.readable |= Has(*feature.feature, KltFeatureFlagsRead);
    AddEntries(row.entries, feature.entries, camera);
}

bool StandsBefore(const LimitRow& a, const LimitRow& b)
{
    const auto place = [](const LimitRow& row) { return std::find(LimitNames.begin(), LimitNames.end(), row.name); };
    return place(a) < place(b);
}

/// Notes which limits \a camera has for a feature.
void AddLimits(std::vector<LimitRow>& rows, const std::vector<Limit>& limits, const std::string& camera)
{
    for (const Limit& limit : limits)
    {
        auto place = std::find_if(rows.begin(), rows.end(),
            [&limit](const LimitRow& any) { return any.name == limit.name && any.IsSame(limit); });
        if (place == rows.end())
        {
            const LimitRow row = {limit, {}};
            place = rows.insert(std::upper_bound(rows.begin(), rows.end(), row, StandsBefore), row);
        }
        place->cameras.push_back(camera);
    }
}

std::vector<FeatureRow> RowsOf(const CameraFamily& family, const std::vector<CameraFeatures>& cameras)
{
    std::vector<FeatureRow> rows = RowsOf(family.features);
    std::unordered_map<std::string, FeatureRow*> places;
    for (FeatureRow& row : rows)
        places.emplace(row.name, &row);
    for (const CameraFeatures& camera : cameras)
    {
        const Limits limits(camera.description->Root());
        for (const FeatureInfo& feature : camera.features)
        {
            FeatureRow& row = *places.at(feature.name);
            AddCamera(row, feature, camera.label);
            AddLimits(row.limits, limits.Of(feature.name), camera.label);
        }
    }
    return rows;
}

} // namespace

std::vector<FeatureRow> RowsOf(const CameraFeatures& camera)
{
    std::vector<FeatureRow> rows = RowsOf(camera.features);
    const Limits limits(camera.description->Root());
    for (FeatureRow& row : rows)
        for (const Limit& limit : limits.Of(row.name))
            row.limits.push_back({limit, {}});
    return rows;
}

std::vector<FeatureRow> TableOf(const std::vector<CameraFeatures>& cameras)
{
    if (cameras.size() == 1)
        return Arranged(RowsOf(cameras.front()), cameras.front().features);
    const CameraFamily family = Unite(cameras);
    for (const std::string& contradiction : family.contradictions)
        TellWarning(contradiction);
    return Arranged(RowsOf(family, cameras), family.features);
}
