#include "CommandLine.h"

#include <QApplication>
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#endif

#include <cstdio>
#include <cstdlib>

namespace
{

void ShowOnlyFailures(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
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

/// The same bytes in every locale.
void WriteUtf8Everywhere()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
}

ExitCode Run(CommandLine& commandLine, int argc, char* argv[])
{
    try
    {
        return commandLine.Run(argc, argv);
    }
    catch (const CLI::ParseError& error)
    {
        return commandLine.Exit(error);
    }
    catch (const CommandError& error)
    {
        std::fprintf(stderr, "kolta-classgen: %s\n", error.what());
        return error.Code();
    }
    catch (const std::exception& error)
    {
        std::fprintf(stderr, "kolta-classgen: Unexpected: %s\n", error.what());
        return ExitFile;
    }
}

} // namespace

int main(int argc, char* argv[])
{
    DoWithoutDisplay();
    // Qt takes its own arguments out of the list it is given.
    int noArguments = 1;
    QApplication application(noArguments, argv);
    WriteUtf8Everywhere();
    CommandLine commandLine;
    return Run(commandLine, argc, argv);
}
