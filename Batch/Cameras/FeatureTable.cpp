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

FeatureRow RowOf(const FeatureInfo& info, const std::string& category, const std::vector<EnumEntry>& entries)
{
    FeatureRow row = {category, info.name, TypeName(info.dataType), Has(*info.feature, KltFeatureFlagsRead),
        Has(*info.feature, KltFeatureFlagsWrite)};
    for (const EnumEntry& entry : entries)
        row.entries.push_back({TextOf(entry, &EnumEntry::GetName), std::to_string(ValueOf(entry)), {}});
    return row;
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

/// Notes what \a camera says of the features.
void AddCamera(std::vector<FeatureRow>& rows, const CameraFeatures& camera)
{
    std::unordered_map<std::string, FeatureRow*> places;
    for (FeatureRow& row : rows)
        places.emplace(row.name, &row);
    const Limits limits(camera.description->Root(), camera.Names());
    for (const FeatureInfo& feature : camera.features)
    {
        FeatureRow& row = *places.at(feature.name);
        row.cameras.push_back(camera.label);
        AddType(row.types, TypeName(feature.dataType), camera.label);
        // The handle in the family tells of one camera only.
        row.readable |= Has(*feature.feature, KltFeatureFlagsRead);
        AddEntries(row.entries, feature.entries, camera.label);
        AddLimits(row.limits, limits.Of(feature.name), camera.label);
    }
}

/// The cameras stand behind what not all of them have.
template <class Row>
void AddTexts(std::vector<std::string>& texts, const std::vector<Row>& rows, const std::vector<std::string>& cameras)
{
    for (const Row& row : rows)
        texts.push_back(row.name + (row.value.empty() ? "" : " = " + row.value) +
                        (row.cameras == cameras ? "" : " (" + Joined(row.cameras) + ")"));
}

} // namespace

std::string FeatureRow::TypeText() const
{
    std::vector<std::string> texts;
    AddTexts(texts, types, cameras);
    return texts.empty() ? type : Joined(texts);
}

std::string FeatureRow::AccessText() const
{
    return readable ? (writable ? "RW" : "RO") : (writable ? "WO" : "--");
}

std::string FeatureRow::ValuesText() const
{
    std::vector<std::string> texts;
    AddTexts(texts, entries, cameras);
    AddTexts(texts, limits, cameras);
    return Joined(texts);
}

std::string Joined(const std::vector<std::string>& texts)
{
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}

FeatureRow RowOf(const FeatureInfo& info, const Limits& limits)
{
    FeatureRow row = RowOf(info, info.category, info.entries);
    for (const Limit& limit : limits.Of(info.name))
        row.limits.push_back({limit, {}});
    return row;
}

std::vector<FeatureRow> TableOf(const std::vector<CameraFeatures>& cameras)
{
    CameraFamily family = Unite(cameras);
    for (const std::string& contradiction : InWords(family.contradictions))
        TellWarning(contradiction);
    FeatureInfos catalogue;
    catalogue.Arrange(std::move(family.features));
    std::vector<FeatureRow> rows;
    for (const auto& category : catalogue.Categories())
        for (const FeaturePtr& feature : category.second)
        {
            const FeatureInfo info(feature);
            const auto entries = catalogue.Enums().find(info.name);
            rows.push_back(RowOf(
                info, category.first, entries == catalogue.Enums().end() ? std::vector<EnumEntry>() : entries->second));
        }
    for (const CameraFeatures& camera : cameras)
        AddCamera(rows, camera);
    return rows;
}
