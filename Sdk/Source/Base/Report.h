#ifndef REPORT_H
#define REPORT_H

#include "Document/Texts.h"

#include <cstdio>
#include <string>

namespace OPX::KltAPI
{

/// Writes one line to the standard error output. Any thread.
inline void Report(const std::string& message)
{
    // Names come from files and cameras. In one call, so that the lines of several threads do not mix.
    std::fprintf(stderr, "KoltaCPP: %.1000s\n", WithoutControls(message).c_str());
}

} // namespace OPX::KltAPI

#endif
