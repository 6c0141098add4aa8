#ifndef CAMERAFAMILY_H
#define CAMERAFAMILY_H

#include "Cameras/CameraReader.h"

#include <string>
#include <vector>

/// Several cameras that share a class, as if they were one.
struct CameraFamily
{
    /// What at least one camera has: the features of the first camera in its order, then what the second one adds, and
    /// so on. A feature is writable if one camera writes it, and has the entries of all cameras; its category is the
    /// one that it has in the first.
    std::vector<FeatureInfo> features;

    /// What one class cannot serve, in words. \a features has what the first camera says of it.
    std::vector<std::string> contradictions;
};

/// A data type as users see it: "Int", "Float", ...
std::string TypeName(KltFeatureDataType dataType);

/// Makes a family of at least one camera.
CameraFamily Unite(std::vector<CameraFeatures> cameras);

#endif
