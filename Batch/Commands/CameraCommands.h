#ifndef CAMERACOMMANDS_H
#define CAMERACOMMANDS_H

#include "Base/CameraChoice.h"
#include "Base/ExitCodes.h"
#include "Cameras/CameraFamily.h"

#include <string>
#include <vector>

/// Commands that look at cameras and generate nothing. All of them print to the standard output and throw CommandError.

/// Model, serial number, transport and address of every camera.
void ListCameras(bool json);

/// What the features are that are chosen and whose names match \a glob, and what they can be set to. For several
/// cameras, all features that any of them has, and which cameras those are. \param acceptFile what of the descriptions
/// nobody need hear of; empty if there is none \param withValues whether cameras are asked for the values as well
void ListFeatures(const std::vector<CameraChoice>& cameras, const FeatureChoice& choice, const std::string& glob,
    const std::string& acceptFile, bool withValues, bool json);

/// The camera's own description; to the standard output if \a file is empty.
void DumpDescription(const CameraChoice& camera, const std::string& file);

#endif
