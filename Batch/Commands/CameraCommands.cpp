#include "Commands/CameraCommands.h"

#include "Base/Glob.h"
#include "Base/Json.h"
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

#include <cstdio>

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

/// Entries or limits.
/// \param several whether to tell which of several cameras have them
template <class Row>
QJsonArray JsonValues(const std::vector<Row>& values, bool several)
{
    QJsonArray array;
    for (const Row& value : values)
    {
        // As text: a number in JSON does not hold 64 bits.
        QJsonObject object{{"name", JsonText(value.name)}, {"value", JsonText(value.value)}};
        if (several)
            object["cameras"] = JsonTexts(value.cameras);
        array.append(object);
    }
    return array;
}

QJsonObject JsonFeature(const FeatureRow& row, bool several)
{
    QJsonObject object{{"category", JsonText(row.category)}, {"name", JsonText(row.name)},
        {"type", JsonText(row.TypeText())}, {"access", JsonText(row.AccessText())}};
    if (!row.entries.empty())
        object["entries"] = JsonValues(row.entries, several);
    if (!row.limits.empty())
        object["limits"] = JsonValues(row.limits, several);
    if (several)
        object["cameras"] = JsonTexts(row.cameras);
    return object;
}

/// One line, with tabs between the columns.
void Print(const FeatureRow& row, bool several)
{
    std::printf("%s\t%s\t%s\t%s\t%s", row.category.c_str(), row.name.c_str(), row.TypeText().c_str(),
        row.AccessText().c_str(), row.ValuesText().c_str());
    if (several)
        std::printf("\t%s", WithoutControls(Joined(row.cameras)).c_str());
    std::puts("");
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
    const std::string& acceptFile, bool json)
{
    QJsonArray array;
    std::vector<CameraFeatures> read = ReadFeatures(cameras);
    WarnOfMistakes(read, acceptFile);
    Select(read, choice);
    const bool several = cameras.size() > 1;
    for (const FeatureRow& row : TableOf(read))
    {
        if (!glob.empty() && !MatchesGlob(glob, row.name))
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
