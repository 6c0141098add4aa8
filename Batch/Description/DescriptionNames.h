#ifndef DESCRIPTIONNAMES_H
#define DESCRIPTIONNAMES_H

#include "Description/DescriptionNodes.h"
#include "Description/Mistake.h"

#include <string_view>
#include <unordered_map>
#include <vector>

/// Which node of a description a name leads to, as the SDK sees it.
class DescriptionNames
{
public:
    /// \param mistakes gets one for each name that is there twice
    DescriptionNames(const DescriptionElement& root, std::vector<Mistake>& mistakes);

    /// Null if the name leads nowhere.
    const DescriptionElement* Find(std::string_view name) const;

private:
    struct Named
    {
        const DescriptionElement* node;
        bool isWithin; ///< It is a formula that a register has for its address: nobody asks for its name.
    };

    void Add(const DescriptionElement& node, const DescriptionElement* outer);
    void AddName(const DescriptionElement& node, bool isWithin);

    std::unordered_map<std::string_view, Named> m_nodes;
    std::vector<Mistake>& m_mistakes;
};

#endif
