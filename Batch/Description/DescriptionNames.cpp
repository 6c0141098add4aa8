#include "Description/DescriptionNames.h"

#include "Description/DescriptionSchema.h"

namespace
{

bool IsRead(const DescriptionElement& node)
{
    const NodeKind* const kind = FindNodeKind(node.tag);
    return kind != nullptr && kind->isRead;
}

} // namespace

DescriptionNames::DescriptionNames(const DescriptionElement& root, std::vector<Mistake>& mistakes)
    : m_mistakes(mistakes)
{
    m_nodes.reserve(root.children.size());
    for (const DescriptionElement& node : root.children)
        Add(node, nullptr);
}

const DescriptionElement* DescriptionNames::Find(std::string_view name) const
{
    const auto found = m_nodes.find(name);
    return found == m_nodes.end() ? nullptr : found->second.node;
}

void DescriptionNames::Add(const DescriptionElement& node, const DescriptionElement* outer)
{
    // What is taken for an unknown kind of node has a name, too, so that nobody is told of it twice.
    if (outer == nullptr || FindNodeKind(node.tag) != nullptr)
        AddName(node, outer != nullptr && node.tag.find("SwissKnife") != std::string::npos);
    if (node.tag != "Group" && !IsRead(node))
        return;
    // Entries of enumerations have names of their own.
    for (const DescriptionElement& child : node.children)
        if ((!child.name.empty() || child.tag == "Group") && child.tag != "EnumEntry")
            Add(child, &node);
}

void DescriptionNames::AddName(const DescriptionElement& node, bool isWithin)
{
    if (node.name.empty() || node.tag == "EnumEntry")
        return;
    const auto [at, added] = m_nodes.emplace(node.name, Named{&node, isWithin});
    if (added)
        return;
    const bool overrides = IsRead(node);
    if (!isWithin || !at->second.isWithin)
        m_mistakes.push_back({node.line, "The name '" + node.name + "' is taken already, in line " +
                                             std::to_string(at->second.node->line) +
                                             (overrides && IsRead(*at->second.node) ? ". The last one counts." : ".")});
    if (overrides)
        at->second = {&node, isWithin};
}
