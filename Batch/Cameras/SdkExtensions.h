#ifndef SDKEXTENSIONS_H
#define SDKEXTENSIONS_H

/// \file
/// What only our own SDK has. The front end uses it nowhere else, and is built without it for an SDK that lacks it.

#include "Document/Limits.h"

#include <KoltaCPP/Camera.h>

#include <string>
#include <vector>

/// Throws CommandError if the SDK has nothing to do with descriptions.
void RequireDescriptions();

/// The camera that is simulated from a description that was checked.
/// \param path the file that it comes from; empty if there is none
OPX::KltAPI::CameraPtr SimulatedCamera(const std::string& xml, const std::string& modelName, const std::string& path);

/// Empty if it cannot be read.
std::string DescriptionOf(const OPX::KltAPI::Camera& camera);

/// Empty if the SDK does not tell.
std::string TransportOf(const OPX::KltAPI::Camera& camera);
std::string AddressOf(const OPX::KltAPI::Camera& camera);

/// The limits that a feature of an open camera has at this moment, with its "Length" if it is a text or bytes; none if
/// the SDK does not tell.
std::vector<OPX::KltAPI::Limit> PresentLimits(const OPX::KltAPI::Feature& feature);

#endif
