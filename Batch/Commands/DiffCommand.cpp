#include "Commands/DiffCommand.h"

#include "Base/Json.h"
#include "Cameras/FeatureChanges.h"
#include "Cameras/SdkExtensions.h"

#include <QJsonArray>

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

/// "~ Width: Max 100 -> 200", "- Mode: entry Off = 0", "+ New (Int, RW)"
std::string LineOfChange(const FeatureChange& change)
{
    const bool isOther = !change.before && !change.after;
    const char* const mark = isOther || (change.before && change.after) ? "~ " : change.before ? "- " : "+ ";
    const std::string value = change.before.value_or("") + change.after.value_or("");
    if (change.property.empty())
        return mark + change.feature + " (" + value + ")";
    return mark + change.feature + ": " + change.property + (change.entry.empty() ? "" : " " + change.entry) +
           (isOther                            ? " is worked out in another way"
               : change.before && change.after ? " " + *change.before + " -> " + *change.after
                                               : " = " + value);
}

QJsonObject JsonChange(const FeatureChange& change)
{
    QJsonObject object{{"effect", EffectNames[static_cast<std::size_t>(change.effect)]},
        {"feature", JsonText(change.feature)}, {"identifier", JsonText(std::string(change.kind->id))}};
    if (!change.property.empty())
        object["property"] = JsonText(change.property);
    if (!change.entry.empty())
        object["entry"] = JsonText(change.entry);
    if (change.before)
        object["before"] = JsonText(*change.before);
    if (change.after)
        object["after"] = JsonText(*change.after);
    return object;
}

/// More of one kind in one feature are one line.
const std::ptrdiff_t MostLines = 5;

/// Prints the changes, a line each or, of many that are alike, one for all.
void PrintChanges(const std::vector<FeatureChange>& changes, bool verbose)
{
    std::map<std::pair<std::string, const ChangeKind*>, std::vector<const FeatureChange*>> alike;
    for (const FeatureChange& change : changes)
        alike[{change.feature, change.kind}].push_back(&change);
    for (const FeatureChange& change : changes)
    {
        const std::vector<const FeatureChange*>& all = alike[{change.feature, change.kind}];
        const bool isFolded = !verbose && all.size() > MostLines && !change.kind->many.empty();
        if (isFolded && all.front() != &change)
            continue;
        const std::string line =
            isFolded ? "~ " + change.feature + ": " + std::to_string(all.size()) + " " + std::string(change.kind->many)
                     : LineOfChange(change);
        std::printf("%-10s  %s [%s]\n", EffectNames[static_cast<std::size_t>(change.effect)], line.c_str(),
            std::string(change.kind->id).c_str());
    }
}

/// How many have each of the effects.
typedef std::array<int, EffectNames.size()> Counts;

void PrintJson(const std::vector<FeatureChange>& changes, const std::vector<Mistake>& unused,
    const std::string& acceptFile, const Counts& counts)
{
    QJsonObject object;
    for (std::size_t i = 0; i < counts.size(); ++i)
        object[EffectNames[i]] = counts[i];
    QJsonArray array;
    for (const FeatureChange& change : changes)
        array.append(JsonChange(change));
    object["changes"] = array;
    QJsonArray entries;
    for (const Mistake& entry : unused)
        entries.append(JsonOf(acceptFile, entry));
    if (!entries.empty())
        object["unused"] = entries;
    PrintJson(object);
}

void PrintAccept(const std::vector<FeatureChange>& changes)
{
    std::set<std::string> lines;
    for (const FeatureChange& change : changes)
        if (const auto [line, isNew] = lines.insert(AcceptList::LineFor(change.kind->id, change.Place())); isNew)
            std::puts(line->c_str());
}

} // namespace

ExitCode CompareCameras(const CameraChoice& before, const CameraChoice& after, const ReviewOptions& options)
{
    // Without them there are no limits to compare.
    RequireDescriptions();
    AcceptList accepted(options.acceptFile);
    // Never released, since the program ends soon.
    static const auto& cameras = *new std::vector<CameraFeatures>(ReadFeatures({before, after}, Extent::Catalogue));
    std::vector<FeatureChange> changes = ChangesBetween(cameras.front(), cameras.back());
    changes.erase(
        std::remove_if(changes.begin(), changes.end(),
            [&](const FeatureChange& change)
            { return (change.IsText() && !options.verbose) || accepted.Accepts(change.kind->id, change.Place()); }),
        changes.end());
    if (options.printAccept)
        return PrintAccept(changes), ExitDone;
    Counts counts = {};
    for (const FeatureChange& change : changes)
        ++counts[static_cast<std::size_t>(change.effect)];
    const auto [compatible, unclear, breaking] = counts;
    const std::vector<Mistake> unused = UnusedEntries(accepted, true);
    if (options.json)
        PrintJson(changes, unused, options.acceptFile, counts);
    else
    {
        PrintChanges(changes, options.verbose);
        for (const Mistake& entry : unused)
            std::printf("%s\n", LineOf(options.acceptFile, entry).c_str());
        if (!changes.empty())
            std::printf("%d breaking, %d unclear, %d compatible\n", breaking, unclear, compatible);
    }
    const int count =
        breaking + (options.failOn == "breaking" ? 0 : unclear) + (options.failOn == "any" ? compatible : 0);
    return count > 0 ? ExitDiffers : ExitDone;
}
