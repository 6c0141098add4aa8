#include "Classes/UnifiedDiff.h"

#include <dtl/dtl.hpp>

#include <sstream>
#include <vector>

namespace
{

typedef std::vector<std::string> Lines;

Lines LinesOf(const std::string& text)
{
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    if (!text.empty() && text.back() != '\n')
        lines.back() += "\n\\ No newline at end of file";
    return lines;
}

} // namespace

std::string UnifiedDiff(const std::string& name, const std::string& before, const std::string& after)
{
    if (before == after)
        return std::string();
    dtl::Diff<std::string, Lines> diff(LinesOf(before), LinesOf(after));
    diff.compose();
    diff.composeUnifiedHunks();
    std::ostringstream text;
    text << "--- " << name << "\n+++ " << name << " (as generated)\n";
    diff.printUnifiedFormat(text);
    std::string patch = text.str();
    // Line 0 of a file without lines: the library counts from 1.
    for (const char* empty : {"@@ -1,0 +", " +1,0 @@"})
        if (patch.find(empty) != std::string::npos && (before.empty() || after.empty()))
            patch[patch.find("1,0", patch.find(empty))] = '0';
    return patch;
}
