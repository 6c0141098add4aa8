#include "Base/Report.h"

#include "Document/Texts.h"

#include <cstdio>

namespace OPX::KltAPI
{

void Report(const std::string& message)
{
    // Names come from files and cameras. In one call, so that the lines of several threads do not mix.
    std::fprintf(stderr, "KoltaCPP: %.1000s\n", WithoutControls(message).c_str());
}

} // namespace OPX::KltAPI
