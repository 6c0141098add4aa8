#ifndef COMPARECOMMAND_H
#define COMPARECOMMAND_H

#include "Base/CameraChoice.h"
#include "Base/ExitCodes.h"

/// Prints what is different between two versions of a camera, and what that does to code that uses the class. Nothing
/// is printed if they are the same, but for an object in JSON. Throws CommandError.
/// \return ExitDiffers if anything is different
ExitCode CompareCameras(const CameraChoice& before, const CameraChoice& after, bool json);

#endif
