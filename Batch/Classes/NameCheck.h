#ifndef NAMECHECK_H
#define NAMECHECK_H

#include "CppOptions.h"
#include "FeatureInfos.h"

#include <QString>
#include <QStringList>

/// What is wrong with the names in a class that has yet to be generated.
struct NameProblems
{
    QStringList errors;   ///< The class would not compile.
    QStringList warnings; ///< It would, but something in it would not work.
};

/// Looks at all names of the class as a whole.
NameProblems CheckNames(const CppOptions& options, const FeatureInfos& features);

#endif
