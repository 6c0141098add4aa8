#include "Program/CommandLine.h"

#include "Base/Messages.h"
#include "QtCompat.h"
#include "Utf8Locale.h"

#include <QCoreApplication>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string>

namespace
{

/// The next file that is opened would take over a closed descriptor, and the messages would go into that file. Once
/// occupied like this, writing to the descriptor fails.
void OccupyStandardDescriptors()
{
    for (int descriptor : {0, 1, 2})
        if (fcntl(descriptor, F_GETFD) < 0)
            static_cast<void>(open("/dev/null", descriptor == 0 ? O_WRONLY : O_RDONLY));
}

ExitCode Run(int argc, char* argv[])
{
    try
    {
        return CommandLine().Run(argc, argv);
    }
    catch (const CommandError& error)
    {
        TellError(error.what());
        return error.Code();
    }
    catch (const std::exception& error)
    {
        TellError(std::string("Unexpected: ") + error.what());
        return ExitFile;
    }
}

/// Nobody must mistake half of the output for all of it.
ExitCode CheckOutput(ExitCode code)
{
    errno = 0;
    std::fflush(stdout);
    if (std::ferror(stdout) == 0)
        return code;
    if (errno == 0) // It failed before. Another try gives the reason.
    {
        std::clearerr(stdout);
        std::fputc('\n', stdout);
        std::fflush(stdout);
    }
    TellError(std::string("The standard output cannot be written: ") + std::strerror(errno) + ".");
    return code == ExitDone || code == ExitDiffers ? ExitFile : code;
}

} // namespace

int main(int argc, char* argv[])
{
    OccupyStandardDescriptors();
    UseUtf8Locale();
    // Qt takes its own arguments out of the list it is given.
    int noArguments = 1;
    const QCoreApplication application(noArguments, argv);
    UseUtf8ForLocale();
    return CheckOutput(Run(argc, argv));
}
