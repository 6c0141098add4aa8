#include "FeatureTable.h"

#include "KoltaHelper.h"
#include "SdkReads.h"

using namespace OPX::KltAPI;

namespace
{

std::string TypeOf(const Feature& feature)
{
    static const std::string Prefix = "KltFeatureData";
    KltFeatureDataType dataType = KltFeatureDataUnknown;
    feature.GetDataType(dataType);
    const std::string name = KoltaHelper::DataTypeToString(dataType).toStdString();
    return name.compare(0, Prefix.size(), Prefix) == 0 ? name.substr(Prefix.size()) : name;
}

std::string AccessOf(const Feature& feature)
{
    KltFeatureFlagsType flags = KltFeatureFlagsNone;
    feature.GetFlags(flags);
    const bool readable = (flags & KltFeatureFlagsRead) != 0;
    const bool writable = (flags & KltFeatureFlagsWrite) != 0;
    return readable ? (writable ? "RW" : "RO") : (writable ? "WO" : "--");
}

FeatureRow RowOf(const std::string& category, const Feature& feature, const FeatureInfos& features)
{
    FeatureRow row;
    row.category = category;
    row.name = TextOf(feature, &Feature::GetName);
    row.type = TypeOf(feature);
    row.access = AccessOf(feature);
    const auto entries = features.Enums().find(row.name);
    if (row.type != "Enum" || entries == features.Enums().end())
        return row;
    for (const EnumEntry& entry : entries->second)
    {
        KltInt64_t value = 0;
        entry.GetValue(value);
        row.entries.emplace_back(TextOf(entry, &EnumEntry::GetName), value);
    }
    return row;
}

} // namespace

std::string FeatureRow::EntriesText() const
{
    std::string text;
    for (const auto& entry : entries)
        text += (text.empty() ? "" : ", ") + entry.first + " = " + std::to_string(entry.second);
    return text;
}

std::vector<FeatureRow> TableOf(const FeatureInfos& features)
{
    std::vector<FeatureRow> table;
    for (const auto& category : features.Categories())
        for (const FeaturePtr& feature : category.second)
            table.push_back(RowOf(category.first, *feature, features));
    return table;
}
