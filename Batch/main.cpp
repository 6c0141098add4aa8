#include "CommandLine.h"

#include "Printable.h"
#include "QtCompat.h"

#include <QCoreApplication>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <iostream>

namespace
{

/// What is closed would be given to the first file that is opened, which then got the messages. Like this, writing to
/// it fails.
void OccupyStandardDescriptors()
{
    for (int descriptor : {0, 1, 2})
        if (fcntl(descriptor, F_GETFD) < 0)
            static_cast<void>(open("/dev/null", descriptor == 0 ? O_WRONLY : O_RDONLY));
}

ExitCode Run(CommandLine& commandLine, int argc, char* argv[])
{
    try
    {
        return commandLine.Run(argc, argv);
    }
    catch (const CommandError& error)
    {
        std::fprintf(stderr, "kolta-classgen: %s\n", Printable(error.what()).c_str());
        return error.Code();
    }
    catch (const std::exception& error)
    {
        std::fprintf(stderr, "kolta-classgen: Unexpected: %s\n", error.what());
        return ExitFile;
    }
}

/// Nobody is to take half of an output for the whole.
ExitCode CheckOutput(ExitCode code)
{
    errno = 0;
    std::cout.flush();
    std::fflush(stdout);
    if (std::cout && std::ferror(stdout) == 0)
        return code;
    std::fprintf(stderr, "kolta-classgen: The standard output cannot be written%s%s.\n", errno != 0 ? ": " : "",
        errno != 0 ? std::strerror(errno) : "");
    return code == ExitDone || code == ExitDiffers ? ExitFile : code;
}

} // namespace

int main(int argc, char* argv[])
{
    OccupyStandardDescriptors();
    // Qt takes its own arguments out of the list it is given.
    int noArguments = 1;
    const QCoreApplication application(noArguments, argv);
    UseUtf8ForLocale();
    CommandLine commandLine;
    return CheckOutput(Run(commandLine, argc, argv));
}
