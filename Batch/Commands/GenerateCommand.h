#ifndef GENERATECOMMAND_H
#define GENERATECOMMAND_H

#include "Base/CameraChoice.h"
#include "Base/ExitCodes.h"
#include "Cameras/CameraFamily.h"
#include "CppOptions.h"

#include <string>
#include <vector>

/// What to generate, and where.
struct GenerateOptions
{
    std::vector<CameraChoice> cameras; ///< One class for all of them.
    FeatureChoice features;
    std::string outputFolder;
    CppOptions given; ///< A null text was not given: the window's default applies.
    std::string depfile;
    std::string acceptFile; ///< Mistakes of the descriptions that nobody need hear of; empty if there is none.
    bool comments = false;  ///< Whether the class says what the descriptions say.
    bool conflictsAreHandles = false; ///< What the cameras do not agree on has no methods but the one for its handle.
    bool force = false;               ///< Generate even what has no features or will not compile.
    bool verbose = false;             ///< Report every step.
};

/// Generates the class, silently unless asked otherwise.
/// Throws CommandError; the output folder is unchanged then.
void Generate(const GenerateOptions& wanted);

/// Prints how the files in the output folder differ from what would be generated. Throws CommandError if that cannot
/// be determined.
/// \param repair the command that makes them the same
/// \return ExitDiffers if they do
ExitCode CheckGenerated(const GenerateOptions& wanted, const std::string& repair);

#endif
