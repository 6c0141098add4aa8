#include "Commands/ValidateCommand.h"

#include "Base/Json.h"
#include "Base/Messages.h"
#include "Cameras/ChangeKinds.h"
#include "CppNames.h"
#include "Lint/DescriptionCheck.h"

#include <QJsonArray>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <set>

using namespace OPX::KltAPI;

namespace
{

/// As compilers call it.
std::string FileOf(const CameraChoice& camera)
{
    return camera.Text() == "-" ? "<stdin>" : camera.Text();
}

/// The command that shows the mistakes of this camera.
std::string HintFor(const std::string& label, const std::string& acceptFile)
{
    const bool looksLikeOption = label.size() > 1 && label[0] == '-';
    return "kolta-classgen validate " + (acceptFile.empty() ? "" : "--accept " + ShellWord(acceptFile) + " ") +
           (looksLikeOption ? "-- " : "") + ShellWord(label);
}

/// Those that nobody has accepted.
std::vector<Mistake> MistakesIn(const Document& description, AcceptList& accepted)
{
    std::vector<Mistake> mistakes;
    if (!description.WhyNot())
        mistakes = FindMistakes(description.Root(),
            [](const std::string& name) { return CppNames::Clean(QString::fromStdString(name)).toStdString(); });
    mistakes.erase(std::remove_if(mistakes.begin(), mistakes.end(),
                       [&](const Mistake& mistake) { return accepted.Accepts(mistake.rule->id, mistake.place); }),
        mistakes.end());
    return mistakes;
}

class Validation
{
public:
    explicit Validation(const ReviewOptions& options) : m_options(options), m_accepted(options.acceptFile) {}

    ExitCode Check(const std::vector<CameraChoice>& cameras)
    {
        for (const CameraChoice& camera : cameras)
        {
            try
            {
                CheckOne(camera);
            }
            catch (const CommandError& error) // The others may be better.
            {
                TellError(error.what());
                if (m_options.json)
                    m_array.append(JsonOf(FileOf(camera), {&RuleOf("unusable"), {}, {}, error.what()}));
                m_result = std::max(m_result, error.Code());
            }
        }
        if (!m_options.printAccept)
            for (const Mistake& unused : UnusedEntries(m_accepted, false))
                Tell(m_accepted.Path(), unused);
        if (m_options.json)
            PrintJson(m_array);
        return m_result;
    }

private:
    void CheckOne(const CameraChoice& camera)
    {
        Problem problem;
        const std::shared_ptr<const Document> description = ReadDescription(camera, problem);
        if (problem)
        {
            Tell(FileOf(camera),
                {&RuleOf("unusable"), {problem.line, 0}, {}, "The description cannot be used: " + problem.text + "."});
            m_result = std::max(m_result, ExitCamera);
            return;
        }
        for (const Mistake& mistake : MistakesIn(*description, m_accepted))
            if (!m_options.printAccept)
                Tell(FileOf(camera), mistake);
            else if (const std::string line = AcceptList::LineFor(mistake.rule->id, mistake.place);
                     m_printed.insert(line).second)
                std::puts(line.c_str());
    }

    void Tell(const std::string& file, const Mistake& mistake)
    {
        if (!mistake.rule->IsNote())
            m_result = std::max(m_result, ExitDiffers);
        if (m_options.json)
            m_array.append(JsonOf(file, mistake));
        else
            std::printf("%s\n", LineOf(file, mistake).c_str());
    }

    const ReviewOptions& m_options;
    AcceptList m_accepted;
    QJsonArray m_array;
    std::set<std::string> m_printed;
    ExitCode m_result = ExitDone;
};

} // namespace

std::string LineOf(const std::string& file, const Mistake& mistake)
{
    return InFile(file, mistake.position, mistake.rule->severity, mistake.text) + " [" + std::string(mistake.rule->id) +
           "]";
}

QJsonObject JsonOf(const std::string& file, const Mistake& mistake)
{
    const Rule& rule = *mistake.rule;
    QJsonObject object{{"file", JsonText(file)}, {"identifier", JsonText(std::string(rule.id))},
        {std::string(rule.severity).c_str(), JsonText(mistake.text)}};
    if (!mistake.place.empty())
        object["place"] = JsonText(mistake.place);
    if (mistake.position.line > 0)
        object["line"] = mistake.position.line;
    if (mistake.position.column > 0)
        object["column"] = mistake.position.column;
    return object;
}

std::vector<Mistake> UnusedEntries(const AcceptList& accepted, bool ofChanges)
{
    std::vector<std::string_view> rules;
    for (const Rule& rule : Rules())
        rules.push_back(rule.id);
    std::vector<std::string_view> changes;
    for (const ChangeKind& kind : ChangeKinds())
        changes.push_back(kind.id);
    std::vector<Mistake> mistakes;
    for (const AcceptList::Entry& entry : accepted.Unused(ofChanges ? changes : rules, ofChanges ? rules : changes))
        mistakes.push_back(
            {&RuleOf("unused-entry"), {entry.line, 0}, {}, Quoted(entry.id + " " + entry.place) + " matches nothing."});
    return mistakes;
}

ExitCode Validate(const std::vector<CameraChoice>& cameras, const ReviewOptions& options)
{
    return Validation(options).Check(cameras);
}

void WarnOfMistakes(const std::vector<CameraFeatures>& cameras, const std::string& acceptFile)
{
    AcceptList accepted(acceptFile);
    for (const CameraFeatures& camera : cameras)
    {
        const std::vector<Mistake> mistakes = MistakesIn(*camera.description, accepted);
        const auto count = std::count_if(
            mistakes.begin(), mistakes.end(), [](const Mistake& mistake) { return !mistake.rule->IsNote(); });
        if (count > 0)
            TellWarning("The description of " + Named(camera.label) + " has " +
                        (count == 1 ? "1 mistake. To see it" : std::to_string(count) + " mistakes. To see them") +
                        ", run: " + HintFor(camera.label, acceptFile));
    }
}
