#include "Commands/ValidateCommand.h"

#include "Base/Messages.h"
#include "Base/PrintJson.h"
#include "Base/ShellText.h"
#include "Lint/DescriptionCheck.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>

using namespace OPX::KltAPI;

namespace
{

/// As compilers call it.
std::string FileOf(const CameraChoice& camera)
{
    return camera.Text() == "-" ? "<stdin>" : camera.Text();
}

QJsonObject ToJson(const std::string& file, const Mistake& mistake)
{
    return {{"file", QString::fromStdString(file)}, {"line", mistake.line},
        {"warning", QString::fromStdString(mistake.text)}};
}

/// It can be told no better: the SDK tells the reason and its line on the terminal only.
QJsonObject ToJson(const std::string& file, const CommandError& error)
{
    return {{"file", QString::fromStdString(file)}, {"error", QString::fromStdString(error.what())}};
}

/// The command that shows the mistakes of this camera.
std::string HintFor(const std::string& label)
{
    const bool looksLikeOption = label.size() > 1 && label[0] == '-';
    return "kolta-classgen validate " + std::string(looksLikeOption ? "-- " : "") + ShellWord(label);
}

} // namespace

ExitCode Validate(const std::vector<CameraChoice>& cameras, bool json)
{
    ExitCode result = ExitDone;
    QJsonArray array;
    for (const CameraChoice& camera : cameras)
    {
        try
        {
            const CameraNodes nodes = ReadNodes(camera);
            for (const Mistake& mistake : FindMistakes(nodes.root, nodes.hasFeatures))
            {
                result = std::max(result, ExitDiffers);
                if (json)
                    array.append(ToJson(FileOf(camera), mistake));
                else
                    std::printf("%s\n", mistake.In(FileOf(camera)).c_str());
            }
        }
        catch (const CommandError& error) // The others may be better.
        {
            TellError(error.what());
            if (json)
                array.append(ToJson(FileOf(camera), error));
            result = std::max(result, error.Code());
        }
    }
    if (json)
        PrintJson(array);
    return result;
}

void WarnOfMistakes(const std::vector<CameraFeatures>& cameras)
{
    for (const CameraFeatures& camera : cameras)
    {
        if (camera.description->tag.empty()) // There is none.
            continue;
        const std::size_t count = FindMistakes(*camera.description, !camera.features.empty()).size();
        if (count > 0)
            TellWarning("The description of '" + camera.label + "' has " +
                        (count == 1 ? "1 mistake. To see it" : std::to_string(count) + " mistakes. To see them") +
                        ", run: " + HintFor(camera.label));
    }
}
