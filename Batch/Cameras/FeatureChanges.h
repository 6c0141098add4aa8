#ifndef FEATURECHANGES_H
#define FEATURECHANGES_H

#include "Cameras/CameraReader.h"
#include "Cameras/ChangeKinds.h"

#include <optional>
#include <string>
#include <vector>

/// What an update changes in one feature.
struct FeatureChange
{
    const ChangeKind* kind;
    Effect effect; ///< That of its kind, unless there is no code that it could have an effect on.
    std::string feature;
    std::string property;              ///< "type", "entry", "Min", ...; empty if the whole feature came or went.
    std::string entry;                 ///< The name of an entry.
    std::optional<std::string> before; ///< Not there if it came, or is worked out in another way.
    std::optional<std::string> after;  ///< Not there if it went, or is worked out in another way.

    bool IsText() const { return kind->id == "text"; }

    /// For lists of what is accepted: "Width", "Width.Max", "Mode.Off".
    std::string Place() const;
};

/// What is different between two versions of a camera, by the names of the features.
std::vector<FeatureChange> ChangesBetween(const CameraFeatures& before, const CameraFeatures& after);

#endif
