#ifndef ACCEPTLIST_H
#define ACCEPTLIST_H

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What somebody has looked at and accepts. Each line of the file holds an identifier and a place, "no-effect
/// Width.Max", both patterns as shells have them; what follows a # at the beginning of a line is a comment.
class AcceptList
{
public:
    struct Entry
    {
        std::string id;
        std::string place;
        int line = 0;
        bool isUsed = false;
    };

    AcceptList() = default;

    /// An empty path stands for an empty list. Throws CommandError.
    explicit AcceptList(std::string path);

    /// Also notes which entries are of use.
    bool Accepts(std::string_view id, const std::string& place);

    /// The entries that have been of no use, but for those that are about other commands: their identifiers are none of
    /// \a own, but of \a foreign.
    std::vector<Entry> Unused(
        const std::vector<std::string_view>& own, const std::vector<std::string_view>& foreign) const;

    const std::string& Path() const { return m_path; }

    /// The line that accepts exactly this.
    static std::string LineFor(std::string_view id, const std::string& place);

private:
    std::string m_path;
    std::vector<Entry> m_entries;
    std::unordered_map<std::string, std::size_t> m_exact; ///< Lines that are no patterns, and their entries.
    std::vector<std::size_t> m_patterns;
};

#endif
