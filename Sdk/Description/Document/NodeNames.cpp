#include "Document/NodeNames.h"

namespace OPX::KltAPI
{
namespace
{

/// Of several nodes with one name, the SDK has the last that it reads.
bool IsRead(const Element& node)
{
    return node.node != nullptr && node.node->Is(Trait::Read);
}

bool IsEntry(const Element& node)
{
    return node.node != nullptr && node.node->Is(Trait::Entry);
}

} // namespace

NodeNames::NodeNames(const Element& root)
{
    std::size_t count = 0;
    for (const Element& node : root)
        count += node.name.empty() ? 0 : 1;
    m_nodes.reserve(count);
    for (const Element& node : root)
        Add(node, nullptr);
}

const Element* NodeNames::Find(std::string_view name) const
{
    const auto found = m_nodes.find(name);
    return found == m_nodes.end() ? nullptr : found->second.node;
}

std::vector<std::string_view> NodeNames::Names(std::string_view tag) const
{
    std::vector<std::string_view> names;
    for (const auto& [name, named] : m_nodes)
        if (tag.empty() || named.node->tag == tag)
            names.push_back(name);
    return names;
}

void NodeNames::Add(const Element& node, const Element* outer)
{
    // What is taken for an unknown kind of node has a name, too, so that nobody is told of it twice.
    if (outer == nullptr || node.node != nullptr)
        AddName(node, outer != nullptr && node.node->Is(Trait::Knife));
    if (!IsRead(node) && node.tag != "Group")
        return;
    // Entries of enumerations have names of their own.
    for (const Element& child : node)
        if ((!child.name.empty() || child.tag == "Group") && !IsEntry(child))
            Add(child, &node);
}

void NodeNames::AddName(const Element& node, bool isWithin)
{
    if (node.name.empty() || IsEntry(node))
        return;
    const auto [at, added] = m_nodes.emplace(node.name, Named{&node, isWithin});
    if (added)
        return;
    const bool overrides = IsRead(node);
    if (!isWithin || !at->second.isWithin)
        m_duplicates.push_back({at->second.node, &node, overrides && IsRead(*at->second.node)});
    if (overrides)
        at->second = {&node, isWithin};
}

} // namespace OPX::KltAPI
