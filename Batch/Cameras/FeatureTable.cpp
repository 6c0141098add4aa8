#include "Cameras/FeatureTable.h"

#include "Cameras/DescriptionNotes.h"
#include "Schema/Number.h"
#include "SdkReads.h"

#include <algorithm>
#include <cfloat>
#include <map>
#include <optional>
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

/// Notes that \a camera has something with this name, which has no value.
void AddName(std::vector<ValueRow>& rows, const std::string& name, const std::string& camera)
{
    auto known = std::find_if(rows.begin(), rows.end(), [&name](const ValueRow& any) { return any.name == name; });
    if (known == rows.end())
        known = rows.insert(known, {name, {}, {}});
    known->cameras.push_back(camera);
}

/// How many bytes a text has room for, or how many there are.
std::optional<Limit> LengthOf(const FeatureRow& row, NodeStructure& structure)
{
    const Element* const node = row.type == "String" || row.type == "Raw" ? structure.Find(row.name) : nullptr;
    if (node == nullptr)
        return std::nullopt;
    const Element& last = *structure.ChainOf(*node).back();
    const Element* const length = last.Child("Length");
    const Element* const reference = last.Child("pLength");
    if (!last.node->Is(Trait::Register) || (length == nullptr && reference == nullptr))
        return std::nullopt;
    return length != nullptr ? Limit{"Length", std::string(length->Text())}
                             : Limit{"Length", std::string(reference->Target()), false, true};
}

/// Whether a limit forbids nothing that the type can hold.
bool ForbidsNothing(const FeatureRow& row, const Limit& limit)
{
    const bool isInt = row.type == "Int";
    if (limit.name == "Inc" || limit.name == "Length")
        return limit.Number() <= (isInt ? 1 : 0);
    return isInt ? limit.Number() == (limit.name == "Min" ? INT64_MIN : INT64_MAX)
                 : limit.Number() == (limit.name == "Min" ? -DBL_MAX : DBL_MAX);
}

/// Puts what the camera says now beside what the description says, where that is not the same.
void AddPresent(const FeatureRow& row, std::vector<LimitRow>& limits, const std::vector<Limit>& present)
{
    for (const Limit& limit : present)
    {
        auto place = std::find_if(
            limits.begin(), limits.end(), [&limit](const LimitRow& any) { return any.name == limit.name; });
        if (place == limits.end() && row.writable && !ForbidsNothing(row, limit))
            place = limits.insert(place, {{limit.name, "", limit.isReal, false}, "", {}});
        if (place != limits.end() && !place->IsSame(limit))
            place->present = limit.value;
    }
}

bool StandsBefore(const LimitRow& a, const LimitRow& b)
{
    const auto place = [](const LimitRow& row) { return std::find(LimitNames.begin(), LimitNames.end(), row.name); };
    return place(a) < place(b);
}

/// Notes which limits \a camera has for a feature.
void AddLimits(std::vector<LimitRow>& rows, const std::vector<LimitRow>& limits, const std::string& camera)
{
    for (const LimitRow& limit : limits)
    {
        auto place = std::find_if(rows.begin(), rows.end(),
            [&limit](const LimitRow& any)
            { return any.name == limit.name && any.IsSame(limit) && any.present == limit.present; });
        if (place == rows.end())
            place = rows.insert(std::upper_bound(rows.begin(), rows.end(), limit, StandsBefore), limit);
        place->cameras.push_back(camera);
    }
}

/// What one camera says of features.
class CameraTable
{
public:
    explicit CameraTable(const CameraFeatures& camera)
        : m_camera(camera),
          m_structure(camera.description->Root(), camera.Names()),
          m_notes(camera.description->Root(), camera.Names())
    {
    }

    void AddTo(FeatureRow& row, const FeatureInfo& feature)
    {
        row.cameras.push_back(m_camera.label);
        AddName(row.types, TypeName(feature.dataType), m_camera.label);
        // The handle in the family tells of one camera only.
        row.readable |= Has(*feature.feature, KltFeatureFlagsRead);
        AddEntries(row.entries, feature.entries, m_camera.label);
        const auto present = m_camera.present.find(feature.name);
        const PresentState state = present == m_camera.present.end() ? PresentState() : present->second;
        AddLimits(row.limits, LimitsOf(feature, state), m_camera.label);
        if (!state.value.empty() || !state.error.empty())
            row.values.push_back({state.value, state.error, {m_camera.label}});
        AddNotes(row);
    }

private:
    std::vector<LimitRow> LimitsOf(const FeatureInfo& feature, const PresentState& state)
    {
        FeatureRow own = ::RowOf(feature, m_structure.AllLimits());
        if (std::optional<Limit> length = LengthOf(own, m_structure))
            own.limits.push_back({std::move(*length), "", {}});
        Resolve(own.limits, m_structure);
        for (LimitRow& limit : own.limits)
            limit.value = limit.Decimal();
        AddPresent(own, own.limits, state.limits);
        return own.limits;
    }

    void AddNotes(FeatureRow& row)
    {
        FeatureNotes notes = m_notes.Of(row.name);
        row.displayName.Add(notes.displayName);
        row.toolTip.Add(notes.toolTip);
        row.visibility.Add(notes.visibility);
        for (const std::string& selector : notes.selectors)
            AddName(row.selectors, selector, m_camera.label);
        for (ValueRow& entry : row.entries)
            entry.toolTip.Add(notes.toolTips[entry.name]);
    }

    const CameraFeatures& m_camera;
    NodeStructure m_structure;
    const DescriptionNotes m_notes;
};

/// A row as one text.
std::string TextOfRow(const ValueRow& row)
{
    return row.name + (row.value.empty() ? "" : " = " + row.value);
}

template <class Row>
std::string TextOfRow(const Row& row)
{
    return row.Text();
}

/// The cameras stand behind what not all of them have.
template <class Row>
void AddTexts(std::vector<std::string>& texts, const std::vector<Row>& rows, const std::vector<std::string>& cameras)
{
    for (const Row& row : rows)
        texts.push_back(TextOfRow(row) + (row.cameras == cameras ? "" : " (" + Joined(row.cameras) + ")"));
}

} // namespace

std::string LimitRow::Text() const
{
    if (!present.empty())
        return name + " = " + present + " now";
    return name + (varies ? " varies" : " = " + value);
}

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
    AddTexts(texts, values, cameras);
    return Joined(texts);
}

std::string FeatureRow::NotesText() const
{
    // "Exposure Time" says no more than "ExposureTime".
    std::string title = displayName.Text();
    std::string oneWord = title;
    oneWord.erase(std::remove(oneWord.begin(), oneWord.end(), ' '), oneWord.end());
    if (oneWord == name)
        title.clear();
    const std::string text = toolTip.Text();
    std::vector<std::string> marks;
    if (!visibility.Text().empty() && visibility.Text() != "Beginner")
        marks.push_back(visibility.Text());
    std::vector<std::string> selecting;
    AddTexts(selecting, selectors, cameras);
    if (!selecting.empty())
        marks.push_back("selected by " + Joined(selecting));
    const std::string words = title + (title.empty() || text.empty() ? "" : ": ") + text;
    return words + (words.empty() || marks.empty() ? "" : " ") + (marks.empty() ? "" : "(" + Joined(marks) + ")");
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
        row.limits.push_back({limit, "", {}});
    return row;
}

void Resolve(std::vector<LimitRow>& limits, NodeStructure& structure)
{
    for (LimitRow& limit : limits)
    {
        const Element* const node = limit.varies ? structure.Find(limit.value) : nullptr;
        const std::optional<Number> number = node == nullptr ? std::nullopt : structure.ConstantOf(*node);
        if (!number)
            continue;
        limit.varies = false;
        limit.isReal = number->IsReal();
        limit.value = limit.isReal ? DecimalText(number->AsReal()) : std::to_string(number->AsInteger());
    }
}

std::vector<FeatureRow> TableOf(const std::vector<CameraFeatures>& cameras, CameraFamily family)
{
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
    std::unordered_map<std::string, FeatureRow*> places;
    for (FeatureRow& row : rows)
        places.emplace(row.name, &row);
    for (const CameraFeatures& camera : cameras)
    {
        CameraTable table(camera);
        for (const FeatureInfo& feature : camera.features)
            table.AddTo(*places.at(feature.name), feature);
    }
    return rows;
}
