#ifndef UNIFIEDDIFF_H
#define UNIFIEDDIFF_H

#include <string>

/// How \a after differs from \a before, as a patch for the file \a name; empty if they are the same.
std::string UnifiedDiff(const std::string& name, const std::string& before, const std::string& after);

#endif
