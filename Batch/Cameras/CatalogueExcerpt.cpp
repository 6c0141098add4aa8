#include "Cameras/CatalogueExcerpt.h"

#include "Document/NodeNames.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

using namespace OPX::KltAPI;

namespace
{

class Excerpt
{
public:
    explicit Excerpt(const Element& root) : m_names(root)
    {
        for (const Element& node : root)
            NoteParts(node, node);
        for (const Element& node : root)
            FindEvaluated(node, node);
        while (!m_open.empty())
        {
            const Element& node = *m_open.back();
            m_open.pop_back();
            FollowAll(node);
        }
        for (const Element& node : root)
            if (node.node != nullptr)
                Write(node, m_whole.count(&node) > 0);
    }

    std::string Xml() const { return "<RegisterDescription>" + m_xml + "</RegisterDescription>"; }

private:
    void NoteParts(const Element& element, const Element& node)
    {
        for (const Element& child : element)
            if (child.node != nullptr && !child.node->Is(Trait::Entry))
                m_owners.emplace(&child, &node);
    }

    /// Whether a feature is implemented is asked when features are listed; and an index decides which node is asked.
    void FindEvaluated(const Element& element, const Element& node)
    {
        for (const Element& child : element)
            if (child.tag == "pIsImplemented")
                Follow(child);
            else if (child.tag == "pIndex" && m_whole.insert(&node).second)
                m_open.push_back(&node);
            else if (child.node != nullptr)
                FindEvaluated(child, node);
    }

    /// What is evaluated needs everything that it refers to.
    void FollowAll(const Element& element)
    {
        for (const Element& child : element)
        {
            Follow(child);
            FollowAll(child);
        }
    }

    void Follow(const Element& reference)
    {
        const Element* node = m_names.Find(&reference);
        const auto owner = m_owners.find(node);
        node = owner == m_owners.end() ? node : owner->second;
        if (node != nullptr && m_whole.insert(node).second)
            m_open.push_back(node);
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
                (isEntry && child.tag == "Value") || child.tag == "pFeature" || child.tag == "pValue" ||
                child.tag == "pIsImplemented" || child.tag == "AccessMode" || child.tag == "ImposedAccessMode")
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
        for (const char character : text)
            if (character == '<' || character == '>' || character == '&' || character == '"' ||
                static_cast<unsigned char>(character) < ' ')
                m_xml += "&#" + std::to_string(static_cast<int>(character)) + ";";
            else
                m_xml += character;
    }

    const NodeNames m_names;
    std::unordered_map<const Element*, const Element*> m_owners; ///< Of nodes within nodes.
    std::unordered_set<const Element*> m_whole;                  ///< What is evaluated.
    std::vector<const Element*> m_open;                          ///< Those of them whose references are to be followed.
    std::string m_xml;
};

} // namespace

std::string CatalogueExcerpt(const Element& root)
{
    return Excerpt(root).Xml();
}
