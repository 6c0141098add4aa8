#ifndef DESCRIPTIONCHECK_H
#define DESCRIPTIONCHECK_H

#include "Document/Document.h"
#include "Document/Mistake.h"

#include <vector>

namespace OPX::KltAPI
{

/// Looks for mistakes in a description, in its order.
/// \param hasFeatures whether the SDK finds any
std::vector<Mistake> FindMistakes(const DescriptionElement& root, bool hasFeatures);

} // namespace OPX::KltAPI

#endif
