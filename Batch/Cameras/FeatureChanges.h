#ifndef FEATURECHANGES_H
#define FEATURECHANGES_H

#include "Cameras/FeatureTable.h"

#include <optional>
#include <string>
#include <vector>

/// What an update changes in one feature.
struct FeatureChange
{
    std::string feature;
    std::string
        property;      ///< "type", "access", "category", "entry", "Min", ...; empty if the whole feature came or went.
    std::string entry; ///< The name of an entry.
    std::optional<std::string> before; ///< Not there if it came.
    std::optional<std::string> after;  ///< Not there if it went.

    /// Whether code that uses the class does not compile any more, or fails or does something else when it runs.
    bool isBreaking;
};

/// What is different between two versions of a camera, by the names of the features.
std::vector<FeatureChange> ChangesBetween(const std::vector<FeatureRow>& before, const std::vector<FeatureRow>& after);

#endif
