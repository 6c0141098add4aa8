#include "Commands/CameraCommands.h"

#include "Base/ExitCodes.h"
#include "Base/OutputFiles.h"
#include "Base/PrintJson.h"
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
#include <fnmatch.h>

#include <cstdio>

using namespace OPX::KltAPI;

namespace
{

QJsonArray ToJson(const std::vector<std::string>& texts)
{
    QJsonArray array;
    for (const std::string& text : texts)
        array.append(QString::fromStdString(text));
    return array;
}

/// Entries or limits.
template <class Row>
QJsonArray ToJson(const std::vector<Row>& values)
{
    QJsonArray array;
    for (const Row& value : values)
    {
        // As text: a number in JSON does not hold 64 bits.
        QJsonObject object{
            {"name", QString::fromStdString(value.name)}, {"value", QString::fromStdString(value.value)}};
        if (!value.cameras.empty())
            object["cameras"] = ToJson(value.cameras);
        array.append(object);
    }
    return array;
}

QJsonObject ToJson(const FeatureRow& row)
{
    QJsonObject object{{"category", QString::fromStdString(row.category)}, {"name", QString::fromStdString(row.name)},
        {"type", QString::fromStdString(row.TypeText())}, {"access", QString::fromStdString(row.AccessText())}};
    const auto add = [&object](const char* key, const QJsonArray& array)
    {
        if (!array.isEmpty())
            object[QLatin1String(key)] = array;
    };
    add("entries", ToJson(row.entries));
    add("limits", ToJson(row.limits));
    add("cameras", ToJson(row.cameras));
    return object;
}

/// One line, with tabs between the columns.
void Print(const FeatureRow& row)
{
    std::printf("%s\t%s\t%s\t%s\t%s", row.category.c_str(), row.name.c_str(), row.TypeText().c_str(),
        row.AccessText().c_str(), row.ValuesText().c_str());
    if (!row.cameras.empty())
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
            array.append(QJsonObject{{"model", QString::fromStdString(model)},
                {"serialNumber", QString::fromStdString(serialNumber)},
                {"transport", QString::fromStdString(transport)}, {"address", QString::fromStdString(address)}});
        else
            std::printf("%s\t%s\t%s\t%s\n", model.c_str(), serialNumber.c_str(), transport.c_str(),
                WithoutControls(address).c_str());
    }
    if (json)
        PrintJson(array);
}

void ListFeatures(const std::vector<CameraChoice>& cameras, const std::string& glob, bool json)
{
    QJsonArray array;
    const std::vector<CameraFeatures> read = ReadFeatures(cameras);
    WarnOfMistakes(read);
    for (const FeatureRow& row : TableOf(read))
    {
        if (!glob.empty() && fnmatch(glob.c_str(), row.name.c_str(), 0) != 0)
            continue;
        if (json)
            array.append(ToJson(row));
        else
            Print(row);
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
