#include "Document/Document.h"

#include "Document/DocumentBuilder.h"
#include "Document/DocumentLimits.h"
#include "Document/Texts.h"
#include "Document/Unzip.h"

#include <algorithm>
#include <utility>

namespace OPX::KltAPI
{

std::string_view Element::Text() const
{
    return Trimmed(content);
}

const Element* Element::Child(std::string_view childTag) const
{
    const Element* last = nullptr;
    for (const Element& child : *this)
        if (child.tag == childTag)
            last = &child;
    return last;
}

std::string_view Element::AttributeOf(std::string_view attribute) const
{
    const Attribute* found = attributes;
    while (found != nullptr && found->name != attribute)
        found = found->next;
    return found == nullptr ? std::string_view() : found->value;
}

Document::Document(std::string content)
{
    m_xml = IsZip(content) ? UnzipDescription(content, m_problem.text) : std::move(content);
    if (m_problem)
        return;
    // Some tools put a line of text before the document.
    const std::size_t begin = std::min(m_xml.find('<'), m_xml.size());
    const auto linesBefore = std::count(m_xml.begin(), m_xml.begin() + static_cast<std::ptrdiff_t>(begin), '\n');
    m_xml.erase(0, begin);
    const int firstLine = 1 + static_cast<int>(linesBefore);
    if (m_xml.empty())
        m_problem.text = "it holds no XML";
    else if (m_xml.size() > MaximumDocumentSize)
        m_problem.text = "it is too large";
    else
        m_problem = ProblemOfText(m_xml, firstLine);
    if (!m_problem)
        DocumentBuilder(*this).Parse(firstLine);
}

} // namespace OPX::KltAPI
