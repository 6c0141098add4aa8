#include "Commands/ValidateCommand.h"

#include "Base/Json.h"
#include "Base/Messages.h"
#include "Lint/DescriptionCheck.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>
#include <memory>

using namespace OPX::KltAPI;

namespace
{

/// As compilers call it.
std::string FileOf(const CameraChoice& camera)
{
    return camera.Text() == "-" ? "<stdin>" : camera.Text();
}

/// \param severity "warning" or "error"
QJsonObject JsonMistake(const std::string& file, int line, const char* severity, const std::string& sentence)
{
    QJsonObject object{{"file", JsonText(file)}, {severity, JsonText(sentence)}};
    if (line > 0)
        object["line"] = line;
    return object;
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
    const auto tell = [&](const CameraChoice& camera, int line, const char* severity, const std::string& sentence)
    {
        if (json)
            array.append(JsonMistake(FileOf(camera), line, severity, sentence));
        else
            std::printf("%s\n", InFile(FileOf(camera), line, severity, sentence).c_str());
    };
    for (const CameraChoice& camera : cameras)
    {
        try
        {
            Problem problem;
            const std::shared_ptr<const Document> description = ReadDescription(camera, problem);
            if (problem)
                tell(camera, problem.line, "error", "The description cannot be used: " + problem.text + ".");
            const std::vector<Mistake> mistakes = problem ? std::vector<Mistake>() : FindMistakes(description->Root());
            for (const Mistake& mistake : mistakes)
                tell(camera, mistake.line, "warning", mistake.text);
            result = std::max(result, problem ? ExitCamera : mistakes.empty() ? ExitDone : ExitDiffers);
        }
        catch (const CommandError& error) // The others may be better.
        {
            TellError(error.what());
            if (json)
                array.append(JsonMistake(FileOf(camera), 0, "error", error.what()));
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
        const Document& description = *camera.description;
        const std::size_t count = description.WhyNot() ? 0 : FindMistakes(description.Root()).size();
        if (count > 0)
            TellWarning("The description of " + Named(camera.label) + " has " +
                        (count == 1 ? "1 mistake. To see it" : std::to_string(count) + " mistakes. To see them") +
                        ", run: " + HintFor(camera.label));
    }
}
