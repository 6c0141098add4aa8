#ifndef GENERATECOMMAND_H
#define GENERATECOMMAND_H

#include "Base/CameraChoice.h"
#include "Base/ExitCodes.h"
#include "CppOptions.h"

#include <string>
#include <vector>

/// What is to be generated, and where to.
struct GenerateOptions
{
    std::vector<CameraChoice> cameras; ///< One class for all of them.
    std::string outputFolder;
    CppOptions given; ///< A null text was not given: it is the window's default then.
    std::string depfile;
    bool force = false;   ///< Generate also what has no features or will not compile.
    bool verbose = false; ///< Tell every step.
};

/// Generates the class. Nothing is said of it, unless that is asked for.
/// Throws CommandError; the output folder holds what it held before then.
void Generate(const GenerateOptions& wanted);

/// Prints how the files in the output folder differ from what would be generated. Throws CommandError where that cannot
/// be told.
/// \param repair the command that makes them the same
/// \return ExitDiffers if they do
ExitCode CheckGenerated(const GenerateOptions& wanted, const std::string& repair);

#endif
