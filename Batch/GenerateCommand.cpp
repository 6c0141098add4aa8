#include "GenerateCommand.h"

#include "BatchWriter.h"
#include "CameraSource.h"
#include "NameCheck.h"
#include "ReplaceFiles.h"
#include "UnifiedDiff.h"

#include <QFile>

#include <cstdio>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace
{

/// A class that is yet to be written: a camera, and options for it.
struct Task
{
    CameraFeatures camera;
    CppOptions options;
};

void Warn(const QString& text)
{
    std::fprintf(stderr, "kolta-classgen: warning: %s\n", text.toUtf8().constData());
}

/// The class's name, as the window makes it of the camera's or of what was typed.
QString ClassName(BatchWriter& writer, const std::string& cameraName, const QString& given)
{
    if (given.isNull())
        return writer.ClassNameFor(cameraName.c_str());
    QString name = writer.GetValidIdentifierName(given);
    if (name != given)
        Warn(QLatin1String("The class is called '") + name + QLatin1String("', since '") + given +
             QLatin1String("' is no C++ identifier."));
    return name;
}

/// The window's defaults when this camera is selected, but for what was given. The user's stored settings play no part:
/// the same command gives the same files everywhere.
CppOptions OptionsFor(const std::string& cameraName, const GenerateOptions& wanted)
{
    CppOptions options = CppOptions::Defaults();
    BatchWriter writer(options, wanted.verbose);
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
                                          " lies in the folder that --output names: give its name only.");
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

void CheckNamesOf(const Task& task, bool force)
{
    // The writer tells of every name that it changes; it will do so when it writes the class.
    BatchWriter writer(task.options, false);
    const NameProblems problems = CheckNames(writer, task.camera.features);
    for (const QString& warning : problems.warnings)
        Warn(warning);
    for (const QString& error : problems.errors)
        std::fprintf(stderr, "kolta-classgen: error: %s\n", error.toUtf8().constData());
    if (!problems.errors.isEmpty() && !force)
        throw CommandError(ExitNames,
            "The class would not compile, so nothing was written. Change prefixes or suffixes, or use --force.");
}

Task TaskFor(const GenerateOptions& wanted)
{
    if (wanted.outputFolder.empty())
        throw CommandError(ExitUsage, "The name of the output folder is empty.");
    if (wanted.outputFolder == "-")
        throw CommandError(ExitUsage, "A class is two files, so it cannot go to the standard output. Name a folder.");
    Task task = {ReadFeatures(wanted.camera), CppOptions()};
    task.options = OptionsFor(task.camera.name, wanted);
    CheckOptions(task.options);
    CheckNamesOf(task, wanted.force);
    return task;
}

struct Pair
{
    FileContent header;
    FileContent source;
};

Pair Expand(const Task& task, const GenerateOptions& wanted)
{
    BatchWriter writer(task.options, wanted.verbose);
    const auto expand = [&](const char* kind, const QString& templatePath, const QString& name)
    {
        // The folder in its own bytes: they need not be UTF-8.
        const std::string path = fs::path(wanted.outputFolder + "/" + name.toStdString()).lexically_normal();
        return FileContent{path, writer.Expand(kind, templatePath, QString::fromStdString(path), task.camera.features)};
    };
    Pair pair;
    pair.header = expand("header", task.options.headerTemplate, task.options.headerFileName);
    pair.source = expand("source", task.options.sourceTemplate, task.options.sourceFileName);
    return pair;
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

/// What make has to know: what the files are made from. Each of that is a target, too, so that make does not stop when
/// it is gone.
FileContent Depfile(const GenerateOptions& wanted, const Task& task, const Pair& pair)
{
    std::vector<std::string> inputs = {
        task.options.headerTemplate.toStdString(), task.options.sourceTemplate.toStdString()};
    std::error_code error;
    const std::string values = fs::path(wanted.camera.descriptionFile).replace_extension(".values");
    for (const std::string& input : {values, wanted.camera.descriptionFile})
        if (!wanted.camera.descriptionFile.empty() && fs::is_regular_file(input, error))
            inputs.insert(inputs.begin(), input);
    std::string rule = EscapedForMake(pair.header.path) + " " + EscapedForMake(pair.source.path) + ":";
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
    const std::string difference =
        UnifiedDiff(expected.path, expected.Present().toStdString(), expected.bytes.toStdString());
    std::fwrite(difference.data(), 1, difference.size(), stdout);
    return true;
}

} // namespace

void Generate(const GenerateOptions& wanted)
{
    const Task task = TaskFor(wanted);
    const Pair pair = Expand(task, wanted);
    std::error_code error;
    fs::create_directories(wanted.outputFolder, error);
    if (error)
        throw CommandError(
            ExitFile, "The folder '" + wanted.outputFolder + "' cannot be made: " + error.message() + ".");
    std::vector<FileContent> files = {pair.header, pair.source};
    if (!wanted.depfile.empty())
        files.push_back(Depfile(wanted, task, pair));
    ReplaceFiles(files);
}

ExitCode CheckGenerated(const GenerateOptions& wanted, const std::string& repair)
{
    const Task task = TaskFor(wanted);
    const Pair pair = Expand(task, wanted);
    const bool headerDiffers = PrintDifference(pair.header);
    const bool sourceDiffers = PrintDifference(pair.source);
    if (!headerDiffers && !sourceDiffers)
        return ExitDone;
    std::fprintf(stderr, "kolta-classgen: The files are not up to date. Run: %s\n", repair.c_str());
    return ExitDiffers;
}
