#ifndef DESCRIPTIONCHECK_H
#define DESCRIPTIONCHECK_H

#include "Document/Document.h"
#include "Lint/Rules.h"

#include <functional>
#include <string>
#include <vector>

namespace OPX::KltAPI
{

/// Makes the name that generated code has for a name of the camera's.
typedef std::function<std::string(const std::string& name)> NameCleaner;

/// Looks for mistakes in a description, in its order.
std::vector<Mistake> FindMistakes(const Element& root, const NameCleaner& clean);

} // namespace OPX::KltAPI

#endif
