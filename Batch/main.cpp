#include "CommandLine.h"

#include "QtCompat.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{

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
    // Qt takes its own arguments out of the list it is given.
    int noArguments = 1;
    const QCoreApplication application(noArguments, argv);
    UseUtf8ForLocale();
    CommandLine commandLine;
    return Run(commandLine, argc, argv);
}
