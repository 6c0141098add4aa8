#ifndef VALIDATECOMMAND_H
#define VALIDATECOMMAND_H

#include "Base/ExitCodes.h"
#include "Cameras/CameraReader.h"

#include <vector>

/// Prints the mistakes in the descriptions of these cameras, with their lines, and what cannot be used.
/// \return ExitDiffers if there are any, ExitCamera if a description cannot be used
ExitCode Validate(const std::vector<CameraChoice>& cameras, bool json);

/// Tells of each camera how many mistakes its description has, if any, and how to see them.
void WarnOfMistakes(const std::vector<CameraFeatures>& cameras);

#endif
