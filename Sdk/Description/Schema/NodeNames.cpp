#include "Schema/NodeNames.h"

#include "Document/NearestWord.h"
#include "Schema/Schema.h"

#include <algorithm>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

const std::string_view EntryPrefix = "EnumEntry_";

const std::size_t MaximumCompared = 100000;

/// Names are long and have much in common. One letter for another counts as two.
const std::size_t MostLettersWrong = 4;

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

bool DescriptionNames::IsEntry(const std::string& name)
{
    if (name.compare(0, EntryPrefix.size(), EntryPrefix) != 0)
        return false;
    if (!std::exchange(m_haveEntries, true))
        for (const auto& [ofNode, named] : m_nodes)
            if (named.node->tag == "Enumeration")
                for (const DescriptionElement& child : named.node->children)
                    if (child.tag == "EnumEntry")
                        m_entries.insert(std::string(EntryPrefix) + named.node->name + "_" + child.name);
    return m_entries.count(name) > 0;
}

std::string DescriptionNames::Nearest(const std::string& name, std::string_view kind)
{
    // Nobody reads thousands of suggestions.
    if (m_compared > MaximumCompared)
        return std::string();
    std::vector<std::string> names;
    for (const auto& [ofNode, named] : m_nodes)
        if (kind.empty() || named.node->tag == kind)
            names.emplace_back(ofNode);
    m_compared += names.size();
    std::sort(names.begin(), names.end()); // The same one for every build of the hash table.
    return NearestWord(name, names, MostLettersWrong);
}

void DescriptionNames::Add(const DescriptionElement& node, const DescriptionElement* outer)
{
    // What is taken for an unknown kind of node has a name, too, so that nobody is told of it twice.
    if (outer == nullptr || FindNodeKind(node.tag) != nullptr)
        AddName(node, outer != nullptr && node.tag.find("SwissKnife") != std::string::npos);
    if (node.tag != "Group" && !IsRead(node.tag))
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
    const bool overrides = IsRead(node.tag);
    if (!isWithin || !at->second.isWithin)
        m_mistakes.push_back({node.line,
            "The name '" + node.name + "' is taken already, in line " + std::to_string(at->second.node->line) +
                (overrides && IsRead(at->second.node->tag) ? ". The last one counts." : ".")});
    if (overrides)
        at->second = {&node, isWithin};
}

} // namespace OPX::KltAPI
