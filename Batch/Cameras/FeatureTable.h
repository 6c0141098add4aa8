#ifndef FEATURETABLE_H
#define FEATURETABLE_H

#include "Cameras/CameraReader.h"
#include "Cameras/FeatureRow.h"

#include <vector>

/// What a camera has, in its own order.
std::vector<FeatureRow> RowsOf(const CameraFeatures& camera);

/// What at least one of the cameras has, in the order of the catalogue, and which of them have it. What one class
/// cannot serve is told in warnings.
std::vector<FeatureRow> TableOf(const std::vector<CameraFeatures>& cameras);

#endif
