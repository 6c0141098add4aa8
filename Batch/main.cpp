#include "ExitCodes.h"
#include "GenerateCommand.h"
#include "ListCommands.h"

#include <CLI/CLI.hpp>
#include <QApplication>
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#endif

#include <cstdio>
#include <cstdlib>

namespace
{

void AddText(CLI::App* command, GenerateOptions& options, const char* option, const char* edit, const char* what)
{
    command->add_option_function<std::string>(
        option, [&options, edit](const std::string& text) { options.texts[edit] = text; }, what);
}

void AddGenerate(CLI::App& program, GenerateOptions& options)
{
    CLI::App* generate = program.add_subcommand("generate", "Generates the class of a camera");
    CLI::Option_group* camera = generate->add_option_group("Camera");
    camera->add_option("--camera", options.camera.serialNumber, "Serial number of the camera");
    camera->add_option("--xml", options.camera.descriptionFile, "Description file of a camera that is not there");
    camera->require_option(1);
    generate->add_option("--output", options.outputFolder, "Folder for the two files")->required();
    AddText(generate, options, "--class", "m_editClassName", "Name of the class");
    AddText(generate, options, "--header", "m_editHeaderFileName", "Name of the header file");
    AddText(generate, options, "--source", "m_editSourceFileName", "Name of the source file");
    AddText(generate, options, "--getter-prefix", "m_editGetterPrefix", "Before the name in a getter");
    AddText(generate, options, "--getter-suffix", "m_editGetterSuffix", "After the name in a getter");
    AddText(generate, options, "--setter-prefix", "m_editSetterPrefix", "Before the name in a setter");
    AddText(generate, options, "--setter-suffix", "m_editSetterSuffix", "After the name in a setter");
    generate->add_option("--header-template", options.headerTemplate, "Template of the header");
    generate->add_option("--source-template", options.sourceTemplate, "Template of the source");
    generate->callback([&options] { Generate(options); });
}

void ShowOnlyFailures(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", message.toUtf8().constData());
}

/// The generator keeps its options in widgets, but none is ever shown. Nobody waits for the traces of the window.
void DoWithoutDisplay()
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    qInstallMessageHandler(ShowOnlyFailures);
}

} // namespace

int main(int argc, char* argv[])
{
    DoWithoutDisplay();
    QApplication application(argc, argv);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    // The same bytes in every locale.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
    CLI::App program("Generates C++ classes for the cameras of the Kolta SDK", "kolta-classgen");
    program.require_subcommand(1);
    GenerateOptions options;
    AddGenerate(program, options);
    program.add_subcommand("list", "Lists the cameras: serial number and name")->callback([] { ListCameras(); });
    try
    {
        program.parse(argc, argv);
        return ExitDone;
    }
    catch (const CLI::ParseError& error)
    {
        return program.exit(error) == 0 ? ExitDone : ExitUsage;
    }
    catch (const CommandError& error)
    {
        std::fprintf(stderr, "kolta-classgen: %s\n", error.what());
        return error.Code();
    }
}
