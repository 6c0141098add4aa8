#ifndef NODENAMES_H
#define NODENAMES_H

#include "Document/Document.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace OPX::KltAPI
{

/// Which node of a description a name leads to, as the SDK sees it. Refers to the document.
class NodeNames
{
public:
    /// A name that is there twice.
    struct Duplicate
    {
        const Element* first;
        const Element* second;
        bool secondCounts; ///< Of the two, although the first one would do.
    };

    explicit NodeNames(const Element& root);

    /// Null if the name leads nowhere.
    const Element* Find(std::string_view name) const;

    /// The node that an element names; null if there is no element.
    const Element* Find(const Element* reference) const
    {
        return reference == nullptr ? nullptr : Find(reference->Target());
    }

    const std::vector<Duplicate>& Duplicates() const { return m_duplicates; }

    /// All names, in no order, of nodes of one kind; an empty \a tag stands for all.
    std::vector<std::string_view> Names(std::string_view tag) const;

private:
    struct Named
    {
        const Element* node;
        bool isWithin; ///< It is a formula that a register has for its address: nobody asks for its name.
    };

    void Add(const Element& node, const Element* outer);
    void AddName(const Element& node, bool isWithin);

    std::unordered_map<std::string_view, Named> m_nodes;
    std::vector<Duplicate> m_duplicates;
};

} // namespace OPX::KltAPI

#endif
