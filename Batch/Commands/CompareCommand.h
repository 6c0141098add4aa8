#ifndef COMPARECOMMAND_H
#define COMPARECOMMAND_H

#include "Base/CameraChoice.h"
#include "Base/ExitCodes.h"

/// Prints the differences between two versions of a camera, and what they do to code that uses the class. If there are
/// none, it prints nothing or, in JSON, an object. Throws CommandError.
/// \return ExitDiffers if anything is different
ExitCode CompareCameras(const CameraChoice& before, const CameraChoice& after, bool json);

#endif
