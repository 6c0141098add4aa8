#ifndef GLOB_H
#define GLOB_H

#include <fnmatch.h>

#include <string>

/// Whether \a text matches a pattern as shells have them.
inline bool MatchesGlob(const std::string& pattern, const std::string& text)
{
    return fnmatch(pattern.c_str(), text.c_str(), 0) == 0;
}

#endif
