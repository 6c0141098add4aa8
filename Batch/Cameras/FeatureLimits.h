#ifndef FEATURELIMITS_H
#define FEATURELIMITS_H

#include "Cameras/FeatureRow.h"
#include "Description/DescriptionNodes.h"

#include <string>
#include <unordered_map>
#include <vector>

/// The limits of features, by the feature's name. A feature without limits need not be there.
typedef std::unordered_map<std::string, std::vector<ValueRow>> FeatureLimits;

/// Reads what a description holds of limits; the SDK does not tell it.
FeatureLimits LimitsOf(const DescriptionElement& description);

/// Adds the limits that \a camera has for a feature.
void AddLimits(std::vector<ValueRow>& limits, const std::vector<ValueRow>& more, const std::string& camera);

#endif
