#ifndef COMMANDS_H
#define COMMANDS_H

#include "Commands/CameraCommands.h"
#include "Commands/CompareCommand.h"
#include "Commands/GenerateCommand.h"
#include "Commands/ValidateCommand.h"

/// What the program does with cameras.
///
/// A library of its own, which is loaded for the first command: it brings the camera libraries with it, which take
/// longer to load than the program needs to print its version or its options.
struct Commands
{
    /// Throws CommandError if the library is not beside the executable.
    static const Commands& Load();

    decltype(&ListCameras) listCameras;
    decltype(&ListFeatures) listFeatures;
    decltype(&CompareCameras) compareCameras;
    decltype(&DumpDescription) dumpDescription;
    decltype(&Generate) generate;
    decltype(&CheckGenerated) checkGenerated;
    decltype(&Validate) validate;
};

#endif
