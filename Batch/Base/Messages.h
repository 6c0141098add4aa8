#ifndef MESSAGES_H
#define MESSAGES_H

#include "Base/Printable.h"

#include <cstdio>
#include <string>

/// Informs the user, on standard error.
inline void TellError(const std::string& text)
{
    std::fprintf(stderr, "kolta-classgen: %s\n", Printable(text).c_str());
}

inline void TellWarning(const std::string& text)
{
    TellError("warning: " + text);
}

#endif
