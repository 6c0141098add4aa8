#include "CameraCommands.h"

#include "CameraSource.h"
#include "FeatureTable.h"
#include "Printable.h"
#include "ReplaceFiles.h"
#include "SdkReads.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <fnmatch.h>

#include <cstdio>
#include <map>

using namespace OPX::KltAPI;

namespace
{

void Print(const QJsonArray& array)
{
    std::fputs(QJsonDocument(array).toJson().constData(), stdout);
}

QJsonObject ToJson(const FeatureRow& row)
{
    QJsonArray entries;
    for (const auto& entry : row.entries)
        // As text: a number in JSON does not hold 64 bits.
        entries.append(
            QJsonObject{{"name", QString::fromStdString(entry.first)}, {"value", QString::number(entry.second)}});
    QJsonObject object{{"category", QString::fromStdString(row.category)}, {"name", QString::fromStdString(row.name)},
        {"type", QString::fromStdString(row.type)}, {"access", QString::fromStdString(row.access)}};
    if (!entries.isEmpty())
        object["entries"] = entries;
    return object;
}

std::map<std::string, FeatureRow> ByName(const FeatureInfos& features)
{
    std::map<std::string, FeatureRow> rows;
    for (const FeatureRow& row : TableOf(features))
        rows[row.name] = row;
    return rows;
}

/// Prints one line for a feature whose property changed.
bool PrintChange(const std::string& name, const char* property, const std::string& before, const std::string& after)
{
    if (before != after)
        std::printf("~ %s: %s %s -> %s\n", name.c_str(), property, before.c_str(), after.c_str());
    return before != after;
}

bool PrintChanges(const FeatureRow& before, const FeatureRow& after)
{
    bool differs = PrintChange(after.name, "type", before.type, after.type);
    differs |= PrintChange(after.name, "access", before.access, after.access);
    differs |= PrintChange(after.name, "entries", before.EntriesText(), after.EntriesText());
    return differs;
}

} // namespace

void ListCameras(bool json)
{
    const SdkSession session;
    QJsonArray array;
    for (const CameraPtr& camera : session.AllCameras())
    {
        const std::string model = TextOf(*camera, &Camera::GetName);
        const std::string serialNumber = TextOf(*camera, &Camera::GetSerialNumber);
        const std::string transport = TextOf(*camera, &Camera::GetTransport);
        const std::string address = TextOf(*camera, &Camera::GetAddress);
        if (json)
            array.append(QJsonObject{{"model", QString::fromStdString(model)},
                {"serialNumber", QString::fromStdString(serialNumber)},
                {"transport", QString::fromStdString(transport)}, {"address", QString::fromStdString(address)}});
        else
            std::printf(
                "%s\t%s\t%s\t%s\n", model.c_str(), serialNumber.c_str(), transport.c_str(), Printable(address).c_str());
    }
    if (json)
        Print(array);
}

void ListFeatures(const CameraChoice& camera, const std::string& glob, bool json)
{
    QJsonArray array;
    for (const FeatureRow& row : TableOf(ReadFeatures(camera).features))
    {
        if (!glob.empty() && fnmatch(glob.c_str(), row.name.c_str(), 0) != 0)
            continue;
        if (json)
            array.append(ToJson(row));
        else
            std::printf("%s\t%s\t%s\t%s\t%s\n", row.category.c_str(), row.name.c_str(), row.type.c_str(),
                row.access.c_str(), row.EntriesText().c_str());
    }
    if (json)
        Print(array);
}

ExitCode CompareCameras(const CameraChoice& before, const CameraChoice& after)
{
    std::map<std::string, FeatureRow> old = ByName(ReadFeatures(before).features);
    bool differs = false;
    for (const auto& row : ByName(ReadFeatures(after).features))
    {
        const auto same = old.find(row.first);
        if (same == old.end())
        {
            std::printf("+ %s (%s, %s)\n", row.first.c_str(), row.second.type.c_str(), row.second.access.c_str());
            differs = true;
            continue;
        }
        differs |= PrintChanges(same->second, row.second);
        old.erase(same);
    }
    for (const auto& row : old)
        std::printf("- %s (%s, %s)\n", row.first.c_str(), row.second.type.c_str(), row.second.access.c_str());
    return differs || !old.empty() ? ExitDiffers : ExitDone;
}

void DumpDescription(const CameraChoice& camera, const std::string& file)
{
    if (file == "-")
        throw CommandError(ExitUsage, "'-' is no file. The description goes to the standard output without --output.");
    const std::string description = ReadDescription(camera);
    if (file.empty())
    {
        std::fwrite(description.data(), 1, description.size(), stdout);
        return;
    }
    ReplaceFiles({{file, QByteArray::fromStdString(description)}});
}
