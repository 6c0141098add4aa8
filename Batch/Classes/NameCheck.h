#ifndef NAMECHECK_H
#define NAMECHECK_H

#include "CppOptions.h"
#include "FeatureInfos.h"

#include <string>
#include <vector>

/// What is wrong with the names in a class that has yet to be generated.
struct NameProblems
{
    std::vector<std::string> errors;   ///< The class would not compile.
    std::vector<std::string> warnings; ///< It would, but something in it would not work.
};

/// Looks at all names of the class as a whole.
NameProblems CheckNames(const CppOptions& options, const FeatureInfos& features);

#endif
