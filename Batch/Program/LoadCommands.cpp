#include "Commands/Commands.h"

#include <QCoreApplication>
#include <QLibrary>

const Commands& Commands::Load()
{
    QLibrary library(QCoreApplication::applicationDirPath() + QLatin1String("/" KOLTA_COMMANDS));
    const auto* const commands = reinterpret_cast<const Commands*>(library.resolve("KoltaCommands"));
    if (commands == nullptr)
        throw CommandError(ExitFile, library.errorString().toStdString() + ". Install the program again.");
    return *commands;
}
