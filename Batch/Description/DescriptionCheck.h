#ifndef DESCRIPTIONCHECK_H
#define DESCRIPTIONCHECK_H

#include "Description/DescriptionNodes.h"
#include "Description/Mistake.h"

#include <vector>

/// Looks for mistakes in a description, in its order.
std::vector<Mistake> FindMistakes(const DescriptionElement& root);

#endif
