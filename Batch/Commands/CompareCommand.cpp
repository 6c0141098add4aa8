#include "Commands/CompareCommand.h"

#include "Base/PrintJson.h"
#include "Cameras/CameraReader.h"
#include "Cameras/FeatureChanges.h"
#include "Cameras/FeatureTable.h"
#include "Cameras/SdkExtensions.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>
#include <future>

using namespace OPX::KltAPI;

namespace
{

const char* EffectOf(const FeatureChange& change)
{
    return change.isBreaking ? "breaking" : "compatible";
}

/// "+ New (Int, RW)", "~ Width: Max 100 -> 200", "- Mode: entry Off = 0"
std::string TextOf(const FeatureChange& change)
{
    const char* const mark = !change.before ? "+ " : !change.after ? "- " : "~ ";
    const std::string values = change.before && change.after
                                   ? " " + *change.before + " -> " + *change.after
                                   : " = " + change.before.value_or("") + change.after.value_or("");
    if (change.property.empty())
        return mark + change.feature + " (" + change.before.value_or("") + change.after.value_or("") + ")";
    return mark + change.feature + ": " + change.property + (change.entry.empty() ? "" : " " + change.entry) + values;
}

QJsonObject ToJson(const FeatureChange& change)
{
    QJsonObject object{{"effect", EffectOf(change)}, {"feature", QString::fromStdString(change.feature)}};
    const auto add = [&object](const char* key, const std::string& text)
    { object[QLatin1String(key)] = QString::fromStdString(text); };
    if (!change.property.empty())
        add("property", change.property);
    if (!change.entry.empty())
        add("entry", change.entry);
    if (change.before)
        add("before", *change.before);
    if (change.after)
        add("after", *change.after);
    return object;
}

void PrintAsText(const std::vector<FeatureChange>& changes, int breaking, int compatible)
{
    for (const FeatureChange& change : changes)
        std::printf("%-10s  %s\n", EffectOf(change), TextOf(change).c_str());
    if (!changes.empty())
        std::printf("%d breaking, %d compatible\n", breaking, compatible);
}

void PrintAsJson(const std::vector<FeatureChange>& changes, int breaking, int compatible)
{
    QJsonArray array;
    for (const FeatureChange& change : changes)
        array.append(ToJson(change));
    PrintJson(QJsonObject{{"breaking", breaking}, {"compatible", compatible}, {"changes", array}});
}

} // namespace

ExitCode CompareCameras(const CameraChoice& before, const CameraChoice& after, bool json)
{
    // Without them there are no limits to compare.
    RequireDescriptions();
    // Never released, since the program ends soon.
    static const auto& cameras = *new std::vector<CameraFeatures>(ReadFeatures({before, after}));
    auto old = std::async(std::launch::async, [] { return RowsOf(cameras.front()); });
    const std::vector<FeatureRow> rows = RowsOf(cameras.back());
    const std::vector<FeatureChange> changes = ChangesBetween(old.get(), rows);
    const auto breaking = static_cast<int>(
        std::count_if(changes.begin(), changes.end(), [](const FeatureChange& change) { return change.isBreaking; }));
    (json ? PrintAsJson : PrintAsText)(changes, breaking, static_cast<int>(changes.size()) - breaking);
    return changes.empty() ? ExitDone : ExitDiffers;
}
