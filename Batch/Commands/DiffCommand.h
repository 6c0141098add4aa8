#ifndef DIFFCOMMAND_H
#define DIFFCOMMAND_H

#include "Base/CameraChoice.h"
#include "Base/ExitCodes.h"
#include "Commands/ValidateCommand.h"

/// Prints the differences between two versions of a camera, and what they do to code that uses the class. If there are
/// none, it prints nothing or, in JSON, an object.
/// \return ExitDiffers if there are any of those that \a options name
ExitCode CompareCameras(const CameraChoice& before, const CameraChoice& after, const ReviewOptions& options);

#endif
