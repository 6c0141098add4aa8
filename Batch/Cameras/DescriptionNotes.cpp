#include "Cameras/DescriptionNotes.h"

#include "Document/Texts.h"

#include <algorithm>
#include <unordered_set>

using namespace OPX::KltAPI;

namespace
{

std::string LineFrom(const Element& node, std::string_view tag)
{
    const Element* const child = node.Child(tag);
    return child == nullptr ? std::string() : InOneLine(child->content);
}

std::string ToolTipOf(const Element& node)
{
    const std::string toolTip = LineFrom(node, "ToolTip");
    return toolTip.empty() ? LineFrom(node, "Description") : toolTip;
}

/// What is no word for it counts as if it was not there.
std::string VisibilityOf(const Element& node)
{
    const Words& words = *FindElementKind("Visibility")->words;
    const std::string visibility = LineFrom(node, "Visibility");
    return std::count(words.begin(), words.end(), visibility) > 0 && !visibility.empty() ? visibility : "Beginner";
}

} // namespace

DescriptionNotes::DescriptionNotes(const Element& root, const NodeNames& names) : m_names(names)
{
    std::unordered_set<std::string_view> listed;
    for (const Element& node : root)
        for (const Element& child : node)
            if (child.tag == "pFeature")
                listed.insert(child.Target());
    for (const Element& node : root)
        for (const Element& child : node)
            if (child.tag == "pSelected" && listed.count(node.name) > 0)
                AddSelector(std::string(child.Target()), WithoutControls(std::string(node.name)));
}

void DescriptionNotes::AddSelector(const std::string& feature, const std::string& selector)
{
    std::vector<std::string>& selectors = m_selectors[feature];
    if (std::count(selectors.begin(), selectors.end(), selector) == 0)
        selectors.push_back(selector);
}

FeatureNotes DescriptionNotes::Of(const std::string& feature) const
{
    FeatureNotes notes;
    const Element* const node = m_names.Find(feature);
    if (node == nullptr)
        return notes;
    notes.displayName = LineFrom(*node, "DisplayName");
    notes.toolTip = ToolTipOf(*node);
    notes.visibility = VisibilityOf(*node);
    if (const auto selectors = m_selectors.find(feature); selectors != m_selectors.end())
        notes.selectors = selectors->second;
    for (const Element& child : *node)
        if (child.node != nullptr && child.node->Is(Trait::Entry))
            notes.toolTips[WithoutControls(std::string(child.name))] = ToolTipOf(child);
    return notes;
}
