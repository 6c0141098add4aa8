#include "Base/AcceptList.h"

#include "Base/ExitCodes.h"
#include "Base/Glob.h"
#include "Document/DescriptionFile.h"
#include "Document/Texts.h"

#include <algorithm>
#include <sstream>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

const char* const Wild = "*?[\\";

bool MatchesAny(const std::string& pattern, const std::vector<std::string_view>& texts)
{
    return std::any_of(texts.begin(), texts.end(),
        [&pattern](std::string_view text) { return MatchesGlob(pattern, std::string(text)); });
}

} // namespace

AcceptList::AcceptList(std::string path) : m_path(std::move(path))
{
    std::string content;
    const std::string problem = m_path.empty() ? std::string() : ReadFile(m_path, content);
    if (!problem.empty())
        throw CommandError(ExitFile, "'" + m_path + "' cannot be read: " + problem + ".");
    std::istringstream lines(content);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number)
    {
        line = Trimmed(line);
        if (line.empty() || line[0] == '#')
            continue;
        const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
        Entry entry = {line.substr(0, end), Trimmed(line.substr(end)), number};
        if (entry.place.empty())
            throw CommandError(ExitUsage, "Line " + std::to_string(number) + " of '" + m_path +
                                              "' names no place. Write '" + entry.id + " *' for all.");
        if (line.find_first_of(Wild) != std::string::npos ||
            !m_exact.emplace(entry.id + " " + entry.place, m_entries.size()).second)
            m_patterns.push_back(m_entries.size());
        m_entries.push_back(std::move(entry));
    }
}

bool AcceptList::Accepts(std::string_view id, const std::string& place)
{
    if (m_entries.empty())
        return false;
    const auto exact = m_exact.find(std::string(id) + " " + place);
    bool accepts = exact != m_exact.end();
    if (accepts)
        m_entries[exact->second].isUsed = true;
    for (const std::size_t index : m_patterns)
        if (Entry& entry = m_entries[index]; MatchesGlob(entry.id, std::string(id)) && MatchesGlob(entry.place, place))
            accepts = entry.isUsed = true;
    return accepts;
}

std::vector<AcceptList::Entry> AcceptList::Unused(
    const std::vector<std::string_view>& own, const std::vector<std::string_view>& foreign) const
{
    std::vector<Entry> unused;
    std::copy_if(m_entries.begin(), m_entries.end(), std::back_inserter(unused),
        [&](const Entry& entry)
        { return !entry.isUsed && (MatchesAny(entry.id, own) || !MatchesAny(entry.id, foreign)); });
    return unused;
}

std::string AcceptList::LineFor(std::string_view id, const std::string& place)
{
    std::string line = std::string(id) + " ";
    for (const char character : place)
        line +=
            (std::string_view(Wild).find(character) == std::string_view::npos ? "" : "\\") + std::string(1, character);
    return line;
}
