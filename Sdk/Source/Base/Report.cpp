#include "Base/Report.h"

#include "Base/Texts.h"

#include <cstdio>

namespace OPX
{
namespace KltAPI
{

void Report(const std::string& message)
{
    // Names come from files and cameras. In one call, so that the lines of several threads do not mix.
    std::fprintf(stderr, "KoltaCPP: %.1000s\n", WithoutControls(message).c_str());
}

} // namespace KltAPI
} // namespace OPX
