#ifndef GENERATECOMMAND_H
#define GENERATECOMMAND_H

#include "CameraSource.h"
#include "ExitCodes.h"

#include <map>
#include <string>

/// What is to be generated, and where to. Options that are not given are the window's defaults.
struct GenerateOptions
{
    CameraChoice camera;
    std::string outputFolder;
    std::map<std::string, std::string> texts; ///< Texts for edits of the options page, by object name.
    std::string headerTemplate;
    std::string sourceTemplate;
    std::string depfile;
    bool force = false; ///< Generate also what will not compile.
};

/// Generates the class. The generator's messages go to the standard error output.
/// Throws CommandError; the output folder holds what it held before then.
void Generate(const GenerateOptions& options);

/// Prints how the files in the output folder differ from what would be generated.
/// \param repair the command that makes them the same
/// \return ExitDiffers if they do
ExitCode Check(const GenerateOptions& options, const std::string& repair);

#endif
