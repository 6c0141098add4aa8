#include "Commands/GenerateCommand.h"

#include "Base/Messages.h"
#include "Base/OutputFiles.h"
#include "Cameras/SdkExtensions.h"
#include "Classes/BatchWriter.h"
#include "Classes/NameCheck.h"
#include "Classes/UnifiedDiff.h"
#include "Commands/ValidateCommand.h"

#include <QFile>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace
{

/// The class's name, as the window makes it of the camera's or of what was typed.
QString ClassName(BatchWriter& writer, const std::string& cameraName, const QString& given)
{
    if (given.isNull())
        return writer.ClassNameFor(cameraName.c_str());
    QString name = writer.GetValidIdentifierName(given);
    if (name != given)
        TellWarning("The class is called '" + name.toStdString() + "', since '" + given.toStdString() +
                    "' is not a C++ identifier.");
    return name;
}

/// The window's defaults when this camera is selected, but for what was given. The user's stored settings play no part:
/// the same command gives the same files everywhere.
CppOptions OptionsFor(BatchWriter& writer, const std::string& cameraName, const GenerateOptions& wanted)
{
    CppOptions options = CppOptions::Defaults();
    options.SetClassName(ClassName(writer, cameraName, wanted.given.className));
    for (QString CppOptions::*option : {&CppOptions::headerFileName, &CppOptions::sourceFileName,
             &CppOptions::getterPrefix, &CppOptions::getterSuffix, &CppOptions::setterPrefix, &CppOptions::setterSuffix,
             &CppOptions::headerTemplate, &CppOptions::sourceTemplate})
        if (!(wanted.given.*option).isNull())
            options.*option = wanted.given.*option;
    return options;
}

void CheckFileName(const char* what, const QString& name)
{
    if (name.isEmpty())
        throw CommandError(ExitUsage, std::string("The name of the ") + what + " is empty.");
    if (name.contains(QLatin1Char('/')) || name == QLatin1String(".") || name == QLatin1String(".."))
        throw CommandError(ExitUsage, "'" + name.toStdString() + "' is a path. The " + what +
                                          " goes into the --output folder: give only its name.");
}

void CheckTemplate(const char* kind, const QString& path)
{
    if (!QFile::exists(path))
        throw CommandError(
            ExitFile, std::string("The ") + kind + " template '" + path.toStdString() + "' does not exist.");
}

void CheckOptions(const CppOptions& options)
{
    if (options.className.isEmpty())
        throw CommandError(ExitUsage, "The name of the class is empty.");
    CheckFileName("header", options.headerFileName);
    CheckFileName("source", options.sourceFileName);
    if (options.headerFileName == options.sourceFileName)
        throw CommandError(ExitUsage, "Header and source have the same name. Give them different ones.");
    CheckTemplate("header", options.headerTemplate);
    CheckTemplate("source", options.sourceTemplate);
}

/// Settles what the cameras do not agree on: the class has only the handles of these features.
QSet<QString> KeepHandles(CameraFamily& family)
{
    for (const std::string& contradiction : InWords(family.contradictions, 1))
        TellWarning(contradiction + " The class has only its handle.");
    QSet<QString> handles;
    for (const Contradiction& contradiction : family.contradictions)
        handles.insert(QString::fromStdString(contradiction.feature));
    family.contradictions.clear();
    for (FeatureInfo& feature : family.features)
        if (handles.contains(QString::fromStdString(feature.name)))
            feature.dataType = KltFeatureDataNone; // There is no type for its entries.
    return handles;
}

void TellContradictions(const std::vector<Contradiction>& contradictions, bool force)
{
    if (force)
        for (const Contradiction& contradiction : contradictions)
            TellWarning(contradiction.text + ". The class has " + contradiction.first + ".");
    else
        for (const std::string& contradiction : InWords(contradictions))
            TellError("error: " + contradiction);
}

/// Names all that speaks against the class.
void CheckClass(const CppOptions& options, const FeatureInfos& features,
    const std::vector<Contradiction>& contradictions, bool force)
{
    TellContradictions(contradictions, force);
    const NameProblems problems = CheckNames(options, features);
    for (const std::string& warning : problems.warnings)
        TellWarning(warning);
    for (const std::string& error : problems.errors)
        TellError("error: " + error);
    if (force)
        return;
    if (!contradictions.empty())
        throw CommandError(ExitNames,
            "One class cannot serve all of these cameras. Leave some out, or use --exclude, --conflicts=handle or, for "
            "the first one to decide, --force.");
    if (!problems.errors.empty())
        throw CommandError(ExitNames,
            "The class would not compile. Other prefixes or suffixes may help; --force accepts it as it is.");
}

/// What the class is made of, once nothing speaks against it. The writer gets the options for it.
FeatureInfos Prepare(BatchWriter& writer, const GenerateOptions& wanted)
{
    if (wanted.outputFolder.empty())
        throw CommandError(ExitUsage, "The name of the output folder is empty.");
    if (wanted.outputFolder == "-" || IsStandardOutput(wanted.outputFolder))
        throw CommandError(ExitUsage, "A class is two files, so it cannot go to the standard output. Name a folder.");
    if (wanted.comments)
        RequireDescriptions();
    std::vector<CameraFeatures> cameras = ReadFeatures(wanted.cameras);
    WarnOfMistakes(cameras, wanted.acceptFile);
    Select(cameras, wanted.features);
    const std::string name = cameras.front().name;
    const FamilyNotes notes = wanted.comments ? NotesOf(cameras) : FamilyNotes();
    CameraFamily family = Unite(std::move(cameras));
    const QSet<QString> handles = wanted.conflictsAreHandles ? KeepHandles(family) : QSet<QString>();
    FeatureInfos features;
    features.Arrange(std::move(family.features));
    if (features.Categories().empty() && !wanted.force)
        throw CommandError(ExitCamera, "There are no features. To accept a class without any, use --force.");
    CppOptions options = OptionsFor(writer, name, wanted);
    options.handlesOnly = handles;
    CheckOptions(options);
    CheckClass(options, features, family.contradictions, wanted.force);
    writer.SetOptions(options);
    writer.SetComments(CommentsOf(notes, features, options));
    return features;
}

/// The header and the source.
std::vector<FileContent> Expand(BatchWriter& writer, const GenerateOptions& wanted)
{
    const FeatureInfos features = Prepare(writer, wanted);
    const CppOptions options = writer.Options();
    const auto expand = [&](const char* kind, const QString& templatePath, const QString& name)
    {
        // The folder in its own bytes: they need not be UTF-8.
        const std::string path = fs::path(wanted.outputFolder + "/" + name.toStdString()).lexically_normal();
        return FileContent{path, writer.Expand(kind, templatePath, QString::fromStdString(path), features)};
    };
    return {expand("header", options.headerTemplate, options.headerFileName),
        expand("source", options.sourceTemplate, options.sourceFileName)};
}

std::string EscapedForMake(const std::string& path)
{
    std::string escaped;
    for (char character : path)
    {
        if (character == '$')
            escaped += '$';
        else if (character == '#' || character == ' ')
            escaped += '\\';
        escaped += character;
    }
    return escaped;
}

/// What make has to know: what the files are made from. Each of these is a target, too, so that make does not stop
/// when it is gone.
FileContent Depfile(const GenerateOptions& wanted, const CppOptions& options, const std::vector<FileContent>& files)
{
    std::vector<std::string> inputs;
    std::error_code error;
    for (const CameraChoice& camera : wanted.cameras)
        for (const fs::path& input :
            {fs::path(camera.descriptionFile), fs::path(camera.descriptionFile).replace_extension(".values")})
            if (!camera.descriptionFile.empty() && fs::is_regular_file(input, error))
                inputs.push_back(input);
    inputs.push_back(options.headerTemplate.toStdString());
    inputs.push_back(options.sourceTemplate.toStdString());
    std::string rule;
    for (const FileContent& file : files)
        rule += (rule.empty() ? "" : " ") + EscapedForMake(file.path);
    rule += ":";
    std::string targets;
    for (const std::string& input : inputs)
    {
        rule += " " + EscapedForMake(input);
        targets += EscapedForMake(input) + ":\n";
    }
    return {wanted.depfile, QByteArray::fromStdString(rule + "\n" + targets)};
}

/// \return whether the file is not what it should be
bool PrintDifference(const FileContent& expected)
{
    if (expected.IsThere())
        return false;
    std::error_code error;
    if (fs::status(expected.path, error).type() == fs::file_type::not_found)
    {
        TellError("'" + expected.path + "' does not exist.");
        return true;
    }
    const std::string difference =
        UnifiedDiff(expected.path, expected.Present().toStdString(), expected.bytes.toStdString());
    std::fwrite(difference.data(), 1, difference.size(), stdout);
    return true;
}

} // namespace

void Generate(const GenerateOptions& wanted)
{
    BatchWriter writer(wanted.verbose);
    std::vector<FileContent> files = Expand(writer, wanted);
    std::error_code error;
    fs::create_directories(wanted.outputFolder, error);
    if (error)
        throw CommandError(
            ExitFile, "The folder '" + wanted.outputFolder + "' cannot be created: " + error.message() + ".");
    if (!wanted.depfile.empty())
        files.push_back(Depfile(wanted, writer.Options(), files));
    ReplaceFiles(files);
}

ExitCode CheckGenerated(const GenerateOptions& wanted, const std::string& repair)
{
    BatchWriter writer(wanted.verbose);
    const std::vector<FileContent> files = Expand(writer, wanted);
    if (std::count_if(files.begin(), files.end(), PrintDifference) == 0)
        return ExitDone;
    std::fprintf(stderr, "kolta-classgen: The files are not up to date. Run: %s\n", repair.c_str());
    return ExitDiffers;
}
