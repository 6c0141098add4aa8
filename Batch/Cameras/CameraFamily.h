#ifndef CAMERAFAMILY_H
#define CAMERAFAMILY_H

#include "Cameras/CameraReader.h"

#include <string>
#include <vector>

/// Which features a class is to have, by the patterns that shells have for files.
struct FeatureChoice
{
    std::vector<std::string> only;    ///< If there are any: those that match one of them,
    std::vector<std::string> exclude; ///< and none of these.
};

/// Something about a feature that the cameras of a family do not agree on: its type, or the value of an entry.
struct Contradiction
{
    std::string feature;
    std::string text;  ///< "'Mode': entry 'Off' is 0 in A, C and 1 in B"
    std::string first; ///< What it is for the first camera that has it.
};

/// Several cameras that share a class, as if they were one.
struct CameraFamily
{
    /// What at least one camera has: the features of the first camera in its order, then what the second one adds, and
    /// so on. A feature is writable if one camera writes it, and has the entries of all cameras; its category is the
    /// one that it has in the first.
    std::vector<FeatureInfo> features;

    /// What one class cannot serve, in the order of the features. \a features has what the first camera says of it.
    std::vector<Contradiction> contradictions;
};

/// A data type as users see it: "Int", "Float", ...
std::string TypeName(KltFeatureDataType dataType);

/// Leaves the cameras only the features that the class is to have. Warns of patterns that match nothing.
void Select(std::vector<CameraFeatures>& cameras, const FeatureChoice& choice);

/// Makes a family of at least one camera.
CameraFamily Unite(std::vector<CameraFeatures> cameras);

/// The contradictions as sentences. Of a feature with more than \a most there is only the first, with how many more
/// there are.
std::vector<std::string> InWords(const std::vector<Contradiction>& contradictions, std::size_t most = 5);

#endif
