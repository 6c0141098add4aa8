#include "Commands/CameraCommands.h"

#include "Base/Glob.h"
#include "Base/Json.h"
#include "Base/Messages.h"
#include "Base/OutputFiles.h"
#include "Cameras/CameraReader.h"
#include "Cameras/FeatureTable.h"
#include "Cameras/SdkExtensions.h"
#include "Cameras/SdkSession.h"
#include "Commands/ValidateCommand.h"
#include "Document/Texts.h"
#include "SdkReads.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <unistd.h>

#include <cstdio>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

QJsonArray JsonTexts(const std::vector<std::string>& texts)
{
    QJsonArray array;
    for (const std::string& text : texts)
        array.append(JsonText(text));
    return array;
}

/// Leaves out what is not there.
void Insert(QJsonObject& object, const char* key, const std::string& text)
{
    if (!text.empty())
        object[QLatin1String(key)] = JsonText(text);
}

QJsonObject JsonRow(const ValueRow& entry)
{
    QJsonObject object{{"name", JsonText(entry.name)}, {"value", JsonText(entry.value)}};
    Insert(object, "toolTip", entry.toolTip.Text());
    return object;
}

QJsonObject JsonRow(const LimitRow& limit)
{
    QJsonObject object{{"name", JsonText(limit.name)}};
    if (limit.varies)
        object["varies"] = true;
    Insert(object, "node", limit.varies ? limit.value : std::string());
    if (!limit.present.empty())
        object["present"] = true;
    Insert(object, "value", !limit.present.empty() ? limit.present : limit.varies ? std::string() : limit.value);
    return object;
}

QJsonObject JsonRow(const PresentRow& present)
{
    const bool isKnown = present.error.empty();
    return {{isKnown ? "value" : "error", JsonText(isKnown ? present.value : present.error)}};
}

/// \param several whether to tell which of several cameras have them
template <class Row>
void Insert(QJsonObject& object, const char* key, const std::vector<Row>& rows, bool several)
{
    QJsonArray array;
    for (const Row& row : rows)
    {
        // Numbers as text: a number in JSON does not hold 64 bits.
        QJsonObject element = JsonRow(row);
        if (several)
            element["cameras"] = JsonTexts(row.cameras);
        array.append(element);
    }
    if (!array.isEmpty())
        object[QLatin1String(key)] = array;
}

QJsonObject JsonFeature(const FeatureRow& row, bool several)
{
    QJsonObject object{{"category", JsonText(row.category)}, {"name", JsonText(row.name)},
        {"type", JsonText(row.TypeText())}, {"access", JsonText(row.AccessText())}};
    Insert(object, "displayName", row.displayName.Text());
    Insert(object, "toolTip", row.toolTip.Text());
    Insert(object, "visibility", row.visibility.Text());
    Insert(object, "entries", row.entries, several);
    Insert(object, "limits", row.limits, several);
    Insert(object, "values", row.values, several);
    QJsonArray selectors;
    for (const ValueRow& selector : row.selectors)
        selectors.append(JsonText(selector.name));
    if (!selectors.isEmpty())
        object["selectedBy"] = selectors;
    if (several)
        object["cameras"] = JsonTexts(row.cameras);
    return object;
}

/// One line, with tabs between the columns. People read long lines badly: on a terminal the words are a line of their
/// own.
void Print(const FeatureRow& row, bool several)
{
    static const bool forPeople = isatty(STDOUT_FILENO) == 1;
    const std::string notes = row.NotesText();
    std::printf("%s\t%s\t%s\t%s\t%s", row.category.c_str(), row.name.c_str(), row.TypeText().c_str(),
        row.AccessText().c_str(), row.ValuesText().c_str());
    if (!forPeople)
        std::printf("\t%s", notes.c_str());
    if (several)
        std::printf("\t%s", WithoutControls(Joined(row.cameras)).c_str());
    std::puts("");
    if (forPeople && !notes.empty())
        std::printf("    %s\n", notes.c_str());
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
        const std::string transport = TransportOf(*camera);
        const std::string address = AddressOf(*camera);
        if (json)
            array.append(QJsonObject{{"model", JsonText(model)}, {"serialNumber", JsonText(serialNumber)},
                {"transport", JsonText(transport)}, {"address", JsonText(address)}});
        else
            std::printf("%s\t%s\t%s\t%s\n", model.c_str(), serialNumber.c_str(), transport.c_str(),
                WithoutControls(address).c_str());
    }
    if (json)
        PrintJson(array);
}

void ListFeatures(const std::vector<CameraChoice>& cameras, const FeatureChoice& choice, const std::string& glob,
    const std::string& acceptFile, bool withValues, bool json)
{
    const auto matches = [&glob](const std::string& name) { return glob.empty() || MatchesGlob(glob, name); };
    const auto ask = [&](CameraFeatures& camera)
    {
        for (const FeatureInfo& feature : camera.features)
            if (matches(feature.name))
                camera.present[feature.name] = AskPresent(feature, withValues);
    };
    QJsonArray array;
    std::vector<CameraFeatures> read = ReadFeatures(cameras, Extent::All, ask);
    WarnOfMistakes(read, acceptFile);
    Select(read, choice);
    CameraFamily family = Unite(read);
    for (const std::string& contradiction : InWords(family.contradictions))
        TellWarning(contradiction);
    const bool several = cameras.size() > 1;
    const std::vector<FeatureRow> rows = TableOf(read, std::move(family));
    for (const FeatureRow& row : rows)
    {
        if (!matches(row.name))
            continue;
        if (json)
            array.append(JsonFeature(row, several));
        else
            Print(row, several);
    }
    if (json)
        PrintJson(array);
}

void DumpDescription(const CameraChoice& camera, const std::string& file)
{
    if (file == "-")
        throw CommandError(ExitUsage, "'-' is not a file. Without --output the description goes to standard output.");
    Problem problem;
    const std::shared_ptr<const Document> description = ReadDescription(camera, problem);
    if (problem)
        throw CannotBeUsed(camera, problem);
    const std::string& xml = description->Xml();
    if (file.empty())
        std::fwrite(xml.data(), 1, xml.size(), stdout);
    else
        ReplaceFiles({{file, QByteArray::fromStdString(xml)}});
}
