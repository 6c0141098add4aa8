#include "Safety/SafeDescription.h"

#include "Document/DescriptionFile.h"
#include "Document/DocumentLimits.h"
#include "Document/Texts.h"
#include "Safety/ReferenceGraph.h"
#include "Schema/Number.h"

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <sstream>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

/// Goes through a description for what Aravis cannot bear.
class SafetyCheck
{
public:
    /// Fills in the copies and the problem.
    explicit SafetyCheck(SafeDescription& description) : m_description(description) {}

    void Check(const Element& root)
    {
        for (const Element& node : root)
            Visit(node, root, ReferenceGraph::Outside);
        if (!m_description.problem)
            m_description.problem = m_graph.FindProblem();
    }

private:
    typedef ReferenceGraph::Index Index;

    static bool Is(const Element& element, unsigned trait)
    {
        return element.node != nullptr && element.node->Is(trait);
    }

    void Refuse(const Element& where, const std::string& text)
    {
        if (!m_description.problem)
            m_description.problem = {text, where.line};
    }

    /// \param owner the node that \a parent is or belongs to
    void Visit(const Element& element, const Element& parent, Index owner)
    {
        const ElementKind* const kind = element.element;
        if (kind != nullptr && (kind->Is(ElementKind::Decides) || IsLength(element) || IsCopy(element)))
            return CheckText(element, parent, owner);
        if (element.tag == "ValidValueSet")
            TakeValues(std::string(element.Text()), m_description.validValues[m_graph.NameOf(owner)]);
        const Index node = NodeFor(element, owner);
        for (const Element& child : element)
            Visit(child, element, node);
    }

    static bool IsLength(const Element& element) { return element.tag == "Length"; }
    static bool IsCopy(const Element& element) { return element.tag == "pValueCopy"; }

    /// The node that an element is: one of its own, or the one around it.
    Index NodeFor(const Element& element, Index owner)
    {
        // Entries often have the name of a feature; constants and expressions are known only in their formula.
        const bool isLocal =
            Is(element, Trait::Entry) || (element.element != nullptr && element.element->content == Content::Formula);
        const bool isNamed = !Trimmed(element.name).empty() && !isLocal;
        if (!isNamed && !Is(element, Trait::Formula | Trait::Struct))
            return owner;
        const Index node = m_graph.NodeOf(element);
        if (element.tag == "StructEntry")
            m_graph.AddReference(node, owner);
        else
            m_graph.AddReference(owner, node);
        return node;
    }

    /// An element that holds a length or the name of a node.
    void CheckText(const Element& element, const Element& parent, Index owner)
    {
        // Comments and the like: each reader has its own idea of a name with one of them in it.
        if (element.holdsMoreThanText)
            Refuse(element, "a " + std::string(element.tag) + " of " + m_graph.NameOf(owner) + " holds more than text");
        if (IsLength(element) && IsOutOfBounds(element, Is(parent, Trait::Numeric)))
            Refuse(element, "the length of " + m_graph.NameOf(owner) + " is out of bounds");
        else if (element.tag == "pLength" && Is(parent, Trait::Numeric))
            Refuse(element, "the length of " + m_graph.NameOf(owner) + " is not constant");
        if (IsCopy(element))
            m_description.copies[m_graph.NameOf(owner)].emplace_back(element.Text());
        else if (!IsLength(element))
            m_graph.AddReference(owner, m_graph.NodeOf(element.Text()));
        const std::string_view offset = element.AttributeOf("pOffset");
        if (!offset.empty())
            m_graph.AddReference(owner, m_graph.NodeOf(Trimmed(offset)));
    }

    static void TakeValues(const std::string& text, std::vector<std::int64_t>& values)
    {
        std::istringstream stream(text);
        for (std::string value; std::getline(stream, value, ';');)
            if (const std::string number = Trimmed(value); !number.empty())
                values.push_back(DescriptionNumber(number, true).Integer());
    }

    static bool IsOutOfBounds(const Element& element, bool ofNumber)
    {
        const long long length = std::strtoll(std::string(element.Text()).c_str(), nullptr, 0);
        return length < (ofNumber ? 1 : 0) || length > (ofNumber ? MaximumNumberLength : MaximumRegisterLength);
    }

    SafeDescription& m_description;
    ReferenceGraph m_graph;
};

} // namespace

SafeDescription CheckDocument(const Document& document, const std::string& fallbackName)
{
    SafeDescription description;
    description.problem = document.WhyNot();
    description.modelName = WithoutControls(std::string(document.Root().AttributeOf("ModelName")));
    if (description.modelName.empty())
        description.modelName = fallbackName;
    if (!description.problem)
        SafetyCheck(description).Check(document.Root());
    return description;
}

SafeDescription CheckDescription(std::string content, const std::string& fallbackName)
{
    Document document(std::move(content));
    SafeDescription description = CheckDocument(document, fallbackName);
    if (!description.problem)
        description.xml = document.TakeXml();
    return description;
}

SafeDescription ReadDescription(const std::string& path)
{
    SafeDescription description;
    try
    {
        std::string content;
        description.problem.text = ReadFile(path, content);
        if (!description.problem)
            description =
                CheckDescription(std::move(content), WithoutControls(std::filesystem::path(path).stem().string()));
    }
    catch (const std::exception& error) // Out of memory.
    {
        description.problem.text = error.what();
    }
    return description;
}

} // namespace OPX::KltAPI
