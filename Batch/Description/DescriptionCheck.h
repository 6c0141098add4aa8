#ifndef DESCRIPTIONCHECK_H
#define DESCRIPTIONCHECK_H

#include "Description/DescriptionNodes.h"
#include "Description/Mistake.h"

#include <vector>

/// Looks for mistakes in a description, in its order.
/// \param hasFeatures whether the SDK finds any
std::vector<Mistake> FindMistakes(const DescriptionElement& root, bool hasFeatures);

#endif
