#ifndef DOCUMENT_H
#define DOCUMENT_H

#include "Document/Problem.h"
#include "Schema/Schema.h"

#include <memory_resource>
#include <string>
#include <string_view>
#include <utility>

namespace OPX::KltAPI
{

/// An attribute with a meaning: of an index, or of the root, where "xmlns" is its namespace.
struct Attribute
{
    std::string_view name;
    std::string_view value;
    const Attribute* next; ///< Of the same element.
};

/// An element of a camera's description. It belongs to its document.
struct Element
{
    /// For loops over the children.
    struct Iterator
    {
        const Element* element;

        const Element& operator*() const { return *element; }
        Iterator& operator++() { return element = element->next, *this; }
        bool operator!=(const Iterator& other) const { return element != other.element; }
    };

    std::string_view tag;                  ///< With its prefix, as the SDK knows it.
    std::string_view name;                 ///< Its attribute Name; empty if there is none.
    std::string_view content;              ///< The text between its tags, up to the first element there.
    const NodeKind* node = nullptr;        ///< What it is, if it is a node of a known kind,
    const ElementKind* element = nullptr;  ///< or a known element of one.
    const Attribute* attributes = nullptr; ///< All but the name.
    const Element* firstChild = nullptr;   ///< Its children are in the order of the document.
    const Element* next = nullptr;         ///< The sibling behind it.
    int line = 0;                          ///< Where its start tag begins, in the file,
    int column = 0;                        ///< and in the line, in bytes.
    bool holdsMoreThanText = false;        ///< An element, a comment or the like stands between its tags.
    bool holdsTextBetween = false;         ///< Text stands behind its first element, which is not in its content.

    Iterator begin() const { return {firstChild}; } // NOLINT(readability-identifier-naming): for loops.
    Iterator end() const { return {nullptr}; }      // NOLINT(readability-identifier-naming)

    /// The content without the white space around it.
    std::string_view Text() const;

    /// The name that the SDK looks for where the element refers to a node: white space is a part of it.
    std::string_view Target() const { return firstChild == nullptr ? content : Text(); }

    /// The child of this kind that counts: the last one. Null if there is none.
    const Element* Child(std::string_view childTag) const;

    /// The value of an attribute of an index or of the root; empty if it is not there.
    std::string_view AttributeOf(std::string_view attribute) const;
};

/// A camera's description as a tree. Nodes in groups are where the groups stand; what extensions hold is left out,
/// since it is for their maker's programs.
///
/// Whatever the text, reading it takes seconds at the most and a few times its memory. What is read is well-formed, not
/// too deep, and small enough for Aravis; its references may still be anything.
class Document
{
public:
    /// Reads a description.
    /// \param content the bytes of a file, which may be zipped and may have something before its first element
    explicit Document(std::string content);

    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// Why there is no tree.
    const Problem& WhyNot() const { return m_problem; }

    /// The root element; its children are the nodes of the camera. Without children if there is a problem.
    const Element& Root() const { return m_root; }

    /// From the first element on. The tree refers to it.
    const std::string& Xml() const { return m_xml; }

    /// Leaves a document that must not be used any more.
    std::string TakeXml() { return std::move(m_xml); }

private:
    friend class DocumentBuilder;

    std::string m_xml;
    Problem m_problem;
    Element m_root;
    std::pmr::monotonic_buffer_resource m_memory; ///< Of all elements, and of texts that the XML spells differently.
};

} // namespace OPX::KltAPI

#endif
