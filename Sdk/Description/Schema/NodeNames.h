#ifndef NODENAMES_H
#define NODENAMES_H

#include "Document/Document.h"
#include "Document/Mistake.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace OPX::KltAPI
{

/// Which node of a description a name leads to, as the SDK sees it.
class DescriptionNames
{
public:
    /// \param mistakes gets one for each name that is there twice
    DescriptionNames(const DescriptionElement& root, std::vector<Mistake>& mistakes);

    /// Null if the name leads nowhere.
    const DescriptionElement* Find(std::string_view name) const;

    /// Entries of enumerations have a name for the whole description, too: EnumEntry_Enumeration_Entry.
    bool IsEntry(const std::string& name);

    /// The name that was meant by one that leads nowhere; empty if none is near.
    /// \param kind which kind of node it leads to; empty for all
    std::string Nearest(const std::string& name, std::string_view kind);

private:
    struct Named
    {
        const DescriptionElement* node;
        bool isWithin; ///< It is a formula that a register has for its address: nobody asks for its name.
    };

    void Add(const DescriptionElement& node, const DescriptionElement* outer);
    void AddName(const DescriptionElement& node, bool isWithin);

    std::unordered_map<std::string_view, Named> m_nodes;
    bool m_haveEntries = false;
    std::unordered_set<std::string> m_entries; ///< Empty until somebody asks.
    std::size_t m_compared = 0;                ///< How many names others were compared with so far.
    std::vector<Mistake>& m_mistakes;
};

} // namespace OPX::KltAPI

#endif
