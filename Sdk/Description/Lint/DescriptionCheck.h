#ifndef DESCRIPTIONCHECK_H
#define DESCRIPTIONCHECK_H

#include "Document/Document.h"
#include "Document/Mistake.h"

#include <vector>

namespace OPX::KltAPI
{

/// Looks for mistakes in a description, in its order.
std::vector<Mistake> FindMistakes(const Element& root);

} // namespace OPX::KltAPI

#endif
