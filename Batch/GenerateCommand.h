#ifndef GENERATECOMMAND_H
#define GENERATECOMMAND_H

#include "CameraSource.h"

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
};

/// Generates the class. The generator's messages go to the standard error output.
/// Throws CommandError; the output folder holds what it held before then.
void Generate(const GenerateOptions& options);

#endif
