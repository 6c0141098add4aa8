#include "GenerateCommand.h"

#include "FilePair.h"
#include "HiddenPage.h"
#include "NameCheck.h"

#include <QDir>
#include <QProcess>
#include <QSaveFile>
#include <QTemporaryDir>

#include <cstdio>

namespace
{

void Print(const QStringList& problems, const char* kind)
{
    for (const QString& problem : problems)
        std::fprintf(stderr, "kolta-classgen: %s: %s\n", kind, problem.toUtf8().constData());
}

/// The page, filled in, and the catalogue.
struct Prepared
{
    explicit Prepared(const GenerateOptions& options) : camera(Read(options.camera))
    {
        page.Fill(options, camera.name);
        if (!page.Generator().OptionsValid())
            throw CommandError(ExitFile, "A name is empty or a template does not exist. Check the options.");
        if (page.HeaderName() == page.SourceName())
            throw CommandError(ExitUsage, "Header and source have the same name. Give them different ones.");
    }

    ReadCamera camera;
    HiddenPage page;
};

void CheckNamesOf(Prepared& prepared, bool force)
{
    const NameProblems problems =
        CheckNames(prepared.page.Generator(), prepared.page.ClassName(), prepared.camera.features);
    Print(problems.warnings, "warning");
    Print(problems.errors, "error");
    if (!problems.errors.isEmpty() && !force)
        throw CommandError(ExitNames,
            "The class would not compile, so nothing was written. Change prefixes or suffixes, or use --force.");
}

/// Runs the generator into \a folder, telling of \a shown instead.
void RunInto(Prepared& prepared, const QString& folder, const QString& shown)
{
    prepared.page.ShowInstead(folder, shown);
    prepared.page.Generator().Run(folder.toLocal8Bit().constData(), true, prepared.camera.features);
    if (!prepared.page.Generator().AllWritten())
        throw CommandError(ExitFile, "The files could not be written whole. See the messages above; is the disk full?");
}

QByteArray EscapedForMake(const QString& path)
{
    return path.toUtf8().replace("$", "$$").replace("#", "\\#").replace(" ", "\\ ");
}

void WriteDepfile(const GenerateOptions& options, const HiddenPage& page)
{
    const QString folder = QString::fromStdString(options.outputFolder) + QLatin1Char('/');
    QByteArray rule =
        EscapedForMake(folder + page.HeaderName()) + " " + EscapedForMake(folder + page.SourceName()) + ":";
    if (!options.camera.descriptionFile.empty())
        rule += " " + EscapedForMake(QString::fromStdString(options.camera.descriptionFile));
    rule += " " + EscapedForMake(page.HeaderTemplate()) + " " + EscapedForMake(page.SourceTemplate()) + "\n";
    QSaveFile file(QString::fromStdString(options.depfile));
    if (!file.open(QIODevice::WriteOnly) || file.write(rule) < 0 || !file.commit())
        throw CommandError(ExitFile, "'" + options.depfile + "' cannot be written. Check the folder.");
}

/// \return whether the two differ
bool PrintDifference(const QString& present, const QString& expected)
{
    if (HaveSameContent(present, expected))
        return false;
    QProcess diff;
    diff.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    diff.start(QLatin1String("diff"),
        {"-u", "-N", "--label", present, "--label", present + " (as generated)", present, expected});
    diff.waitForFinished(-1);
    std::fputs(diff.readAllStandardOutput().constData(), stdout);
    return true;
}

} // namespace

void Generate(const GenerateOptions& options)
{
    Prepared prepared(options);
    CheckNamesOf(prepared, options.force);
    const QString folder = QString::fromStdString(options.outputFolder);
    if (!QDir().mkpath(folder))
        throw CommandError(ExitFile, "The folder '" + options.outputFolder + "' cannot be made. Check the path.");
    // On the same file system, so that the files can be moved into their place.
    const QTemporaryDir fresh(folder + QLatin1String("/.kolta-classgen-XXXXXX"));
    if (!fresh.isValid())
        throw CommandError(ExitFile, "Nothing can be written into '" + options.outputFolder + "'. Check the folder.");
    RunInto(prepared, fresh.path(), QDir::cleanPath(folder));
    ReplacePair(fresh.path(), folder, prepared.page.HeaderName(), prepared.page.SourceName());
    if (!options.depfile.empty())
        WriteDepfile(options, prepared.page);
}

ExitCode Check(const GenerateOptions& options, const std::string& repair)
{
    Prepared prepared(options);
    const QTemporaryDir fresh;
    if (!fresh.isValid())
        throw CommandError(ExitFile, "No temporary folder can be made. Check TMPDIR.");
    prepared.page.BeQuiet();
    RunInto(prepared, fresh.path(), QString::fromStdString(options.outputFolder));
    bool differs = false;
    for (const QString& name : {prepared.page.HeaderName(), prepared.page.SourceName()})
        differs |= PrintDifference(
            QString::fromStdString(options.outputFolder) + QLatin1Char('/') + name, fresh.filePath(name));
    if (!differs)
        return ExitDone;
    std::fprintf(stderr, "kolta-classgen: The files are not up to date. Run: %s\n", repair.c_str());
    return ExitDiffers;
}
