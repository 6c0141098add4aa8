#include "GenerateCommand.h"

#include "BatchWriter.h"
#include "CameraSource.h"
#include "FilePair.h"
#include "NameCheck.h"
#include "UnifiedDiff.h"

#include <QDir>
#include <QSaveFile>

#include <cstdio>

namespace
{

/// A class that is yet to be written: a camera, and options for it.
struct Task
{
    CameraFeatures camera;
    CppOptions options;
};

/// The window's defaults when this camera is selected, but for what was given. The user's stored settings play no part:
/// the same command gives the same files everywhere.
CppOptions OptionsFor(const std::string& cameraName, const CppOptions& given, BatchWriter::Voice voice)
{
    CppOptions options = CppOptions::Defaults();
    BatchWriter writer(options, voice);
    options.SetClassName(given.className.isNull() ? writer.ClassNameFor(cameraName.c_str())
                                                  : writer.GetValidIdentifierName(given.className));
    for (QString CppOptions::*option : {&CppOptions::headerFileName, &CppOptions::sourceFileName,
             &CppOptions::getterPrefix, &CppOptions::getterSuffix, &CppOptions::setterPrefix, &CppOptions::setterSuffix,
             &CppOptions::headerTemplate, &CppOptions::sourceTemplate})
        if (!(given.*option).isNull())
            options.*option = given.*option;
    return options;
}

Task TaskFor(const GenerateOptions& options, BatchWriter::Voice voice)
{
    Task task = {ReadFeatures(options.camera), CppOptions()};
    task.options = OptionsFor(task.camera.name, options.given, voice);
    if (!task.options.IsValid())
        throw CommandError(ExitFile, "A name is empty or a template does not exist. Check the options.");
    if (task.options.headerFileName == task.options.sourceFileName)
        throw CommandError(ExitUsage, "Header and source have the same name. Give them different ones.");
    return task;
}

void Print(const QStringList& problems, const char* kind)
{
    for (const QString& problem : problems)
        std::fprintf(stderr, "kolta-classgen: %s: %s\n", kind, problem.toUtf8().constData());
}

void CheckNamesOf(const Task& task, bool force)
{
    // The writer tells of every name that it changes; it will do so when it writes the class.
    BatchWriter writer(task.options, BatchWriter::Silent);
    const NameProblems problems = CheckNames(writer, task.camera.features);
    Print(problems.warnings, "warning");
    Print(problems.errors, "error");
    if (!problems.errors.isEmpty() && !force)
        throw CommandError(ExitNames,
            "The class would not compile, so nothing was written. Change prefixes or suffixes, or use --force.");
}

struct Pair
{
    FileContent header;
    FileContent source;
};

Pair Expand(const Task& task, const std::string& folder, BatchWriter::Voice voice)
{
    BatchWriter writer(task.options, voice);
    const auto expand = [&](const char* kind, const QString& templatePath, const QString& name)
    {
        const QString path = QDir::cleanPath(QString::fromStdString(folder) + QLatin1Char('/') + name);
        return FileContent{path.toStdString(), writer.Expand(kind, templatePath, path, task.camera.features)};
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

void WriteDepfile(const GenerateOptions& options, const Task& task, const Pair& pair)
{
    std::string rule = EscapedForMake(pair.header.path) + " " + EscapedForMake(pair.source.path) + ":";
    for (const std::string& input : {options.camera.descriptionFile, task.options.headerTemplate.toStdString(),
             task.options.sourceTemplate.toStdString()})
        if (!input.empty())
            rule += " " + EscapedForMake(input);
    QSaveFile file(QString::fromStdString(options.depfile));
    if (!file.open(QIODevice::WriteOnly) || file.write((rule + "\n").c_str()) < 0 || !file.commit())
        throw CommandError(ExitFile, "'" + options.depfile + "' cannot be written. Check the folder.");
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

void Generate(const GenerateOptions& options)
{
    const Task task = TaskFor(options, BatchWriter::Aloud);
    CheckNamesOf(task, options.force);
    if (!QDir().mkpath(QString::fromStdString(options.outputFolder)))
        throw CommandError(ExitFile, "The folder '" + options.outputFolder + "' cannot be made. Check the path.");
    const Pair pair = Expand(task, options.outputFolder, BatchWriter::Aloud);
    ReplacePair(pair.header, pair.source);
    if (!options.depfile.empty())
        WriteDepfile(options, task, pair);
}

ExitCode CheckGenerated(const GenerateOptions& options, const std::string& repair)
{
    const Task task = TaskFor(options, BatchWriter::Silent);
    const Pair pair = Expand(task, options.outputFolder, BatchWriter::Silent);
    const bool headerDiffers = PrintDifference(pair.header);
    const bool sourceDiffers = PrintDifference(pair.source);
    if (!headerDiffers && !sourceDiffers)
        return ExitDone;
    std::fprintf(stderr, "kolta-classgen: The files are not up to date. Run: %s\n", repair.c_str());
    return ExitDiffers;
}
