#include "Cameras/CatalogueExcerpt.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

using namespace OPX::KltAPI;

namespace
{

class Excerpt
{
public:
    Excerpt(const Element& root, const NodeNames& names) : m_names(names)
    {
        for (const Element& node : root)
            for (const Element& child : node)
                if (child.node != nullptr && !child.node->Is(Trait::Entry))
                    m_owners.emplace(&child, &node);
        if (const Element* const first = m_names.Find("Root"))
            Need(first, false);
        while (!m_open.empty())
        {
            const Element& node = *m_open.back();
            m_open.pop_back();
            Follow(node, node, m_needed[&node]);
        }
        for (const Element& node : root)
            if (const auto needed = m_needed.find(&node); needed != m_needed.end() && node.node != nullptr)
                Write(node, needed->second);
    }

    std::string Xml() const { return "<RegisterDescription>" + m_xml + "</RegisterDescription>"; }

private:
    /// \param whole whether the node is evaluated, which needs everything that it refers to
    void Need(const Element* node, bool whole)
    {
        const auto owner = m_owners.find(node);
        node = owner == m_owners.end() ? node : owner->second;
        const auto [needed, isNew] = m_needed.emplace(node, whole);
        if (node != nullptr && (isNew || whole > needed->second))
            m_open.push_back(node);
        needed->second = needed->second || whole;
    }

    /// Whether a feature is the same without the register that its value lies in: that can be read and written, and is
    /// always there.
    bool AddsNothing(const Element& owner, const Element& reference) const
    {
        const bool isHolder = owner.node != nullptr && owner.node->Is(Trait::Holder) && reference.tag == "pValue";
        const Element* const node = isHolder ? m_names.Find(&reference) : nullptr;
        const Element* const access = node == nullptr ? nullptr : node->Child("AccessMode");
        return access != nullptr && access->Text() == "RW" && node->node != nullptr &&
               node->node->Is(Trait::Register) && node->Child("ImposedAccessMode") == nullptr &&
               node->Child("pIsImplemented") == nullptr;
    }

    /// Whether a feature is implemented is asked when features are listed; and an index decides which node is asked.
    void Follow(const Element& element, const Element& node, bool whole)
    {
        for (const Element& child : element)
        {
            if (!whole && AddsNothing(element, child))
                continue;
            if (whole || child.tag == "pFeature" || child.tag == "pValue" || child.tag == "pIsImplemented")
                Need(m_names.Find(&child), whole || child.tag == "pIsImplemented");
            else if (child.tag == "pIndex")
                Need(&node, true);
            if (whole || child.node != nullptr)
                Follow(child, node, whole);
        }
    }

    void Write(const Element& element, bool whole)
    {
        m_xml.append("<").append(element.tag);
        if (!element.name.empty())
            WriteAttribute("Name", element.name);
        for (const Attribute* attribute = element.attributes; attribute != nullptr; attribute = attribute->next)
            WriteAttribute(attribute->name, attribute->value);
        m_xml += ">";
        if (element.firstChild == nullptr)
            WriteText(element.content);
        const bool isEntry = element.node != nullptr && element.node->Is(Trait::Entry);
        for (const Element& child : element)
            if (whole || (child.node != nullptr && !child.node->Is(Trait::Knife)) ||
                (isEntry && child.tag == "Value") || child.tag == "pFeature" ||
                (child.tag == "pValue" && !AddsNothing(element, child)) || child.tag == "pIsImplemented" ||
                child.tag == "AccessMode" || child.tag == "ImposedAccessMode")
                Write(child, whole);
        m_xml.append("</").append(element.tag).append(">");
    }

    void WriteAttribute(std::string_view name, std::string_view value)
    {
        m_xml.append(" ").append(name).append("=\"");
        WriteText(value);
        m_xml += "\"";
    }

    void WriteText(std::string_view text)
    {
        const auto isSpecial = [](char character)
        {
            return character == '<' || character == '>' || character == '&' || character == '"' ||
                   (character < ' ' && character >= 0);
        };
        if (std::none_of(text.begin(), text.end(), isSpecial))
            m_xml += text;
        else
            for (const char character : text)
                m_xml += isSpecial(character) ? "&#" + std::to_string(character) + ";" : std::string(1, character);
    }

    const NodeNames& m_names;
    std::unordered_map<const Element*, const Element*> m_owners; ///< Of nodes within nodes.
    std::unordered_map<const Element*, bool> m_needed;           ///< Nodes, and whether they are needed as a whole.
    std::vector<const Element*> m_open;                          ///< Whose references are to be followed.
    std::string m_xml;
};

} // namespace

std::string CatalogueExcerpt(const Element& root, const NodeNames& names)
{
    return Excerpt(root, names).Xml();
}
