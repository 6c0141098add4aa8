#ifndef CAMERACOMMANDS_H
#define CAMERACOMMANDS_H

#include "CameraChoice.h"
#include "ExitCodes.h"

#include <string>

/// Commands that look at cameras and generate nothing. All of them print to the standard output and throw CommandError.

/// Model, serial number, transport and address of every camera.
void ListCameras(bool json);

/// Category, name, type, access and entries of the features whose name fits \a glob.
void ListFeatures(const CameraChoice& camera, const std::string& glob, bool json);

/// What is different between two cameras. \return ExitDiffers if anything is
ExitCode CompareCameras(const CameraChoice& before, const CameraChoice& after);

/// The camera's own description; to the standard output if \a file is empty.
void DumpDescription(const CameraChoice& camera, const std::string& file);

#endif
