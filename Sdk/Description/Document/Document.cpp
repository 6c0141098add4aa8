#include "Document/Document.h"

#include "Document/Texts.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

std::string_view ToView(const xmlChar* text)
{
    return reinterpret_cast<const char*>(text);
}

std::string ToString(const xmlChar* begin, const xmlChar* end)
{
    return {reinterpret_cast<const char*>(begin), static_cast<std::size_t>(end - begin)};
}

bool IsBlank(xmlChar character)
{
    return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

/// The parser is at the end of a start tag. The line of a node in libxml2's tree would end at 65535.
int LineOfTag(const xmlParserInput& input)
{
    int line = input.line;
    for (const xmlChar* at = input.cur; at > input.base && *at != '<'; --at)
        line -= *at == '\n' ? 1 : 0;
    return line;
}

/// Or more, in most descriptions.
const std::size_t BytesOfNode = 100;

/// A name as the SDK knows it: namespaces mean nothing to it.
std::string Qualified(const xmlChar* name, const xmlChar* prefix)
{
    std::string qualified;
    if (prefix != nullptr)
        qualified.append(ToView(prefix)).append(":");
    return qualified.append(ToView(name));
}

/// Builds the tree as the parser comes upon its elements.
struct Builder
{
    DescriptionElement root;
    /// The elements that are open. Nodes in a group go where the group stands.
    std::vector<DescriptionElement*> open;
    int extensions = 0; ///< How deep we are in one.
};

Builder& BuilderOf(void* context)
{
    return *static_cast<Builder*>(static_cast<xmlParserCtxt*>(context)->_private);
}

/// A new element where the parser is.
DescriptionElement& AddElement(Builder& builder)
{
    if (builder.open.empty())
        return builder.root;
    std::vector<DescriptionElement>& siblings = builder.open.back()->children;
    if (siblings.empty())
        siblings.reserve(2); // Most nodes have more than one.
    return siblings.emplace_back();
}

void OnBegin(void* context, const xmlChar* tagName, const xmlChar* prefix, const xmlChar* /*uri*/, int /*spaces*/,
    const xmlChar** /*spaceList*/, int count, int /*defaulted*/, const xmlChar** attributes)
{
    Builder& builder = BuilderOf(context);
    const std::string_view tag = ToView(tagName);
    if (builder.extensions > 0 || tag == "Extension")
    {
        ++builder.extensions;
        return;
    }
    // A group within a node holds nothing of that node.
    if (tag == "Group" && prefix == nullptr && !builder.open.empty() && builder.open.back() == &builder.root)
    {
        builder.open.push_back(builder.open.back());
        return;
    }
    DescriptionElement& element = AddElement(builder);
    element.tag = Qualified(tagName, prefix);
    element.line = LineOfTag(*static_cast<xmlParserCtxt*>(context)->input);
    const xmlChar** attribute = attributes; // Name, prefix, namespace, begin and end of the value.
    for (int i = 0; i < count; ++i, attribute += 5)
    {
        if (ToView(attribute[0]) == "Name" && attribute[1] == nullptr)
            element.name = ToString(attribute[3], attribute[4]);
        else
            element.attributes.emplace_back(
                Qualified(attribute[0], attribute[1]), ToString(attribute[3], attribute[4]));
    }
    builder.open.push_back(&element);
}

void OnEnd(void* context, const xmlChar* /*tag*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/)
{
    Builder& builder = BuilderOf(context);
    if (builder.extensions > 0)
    {
        --builder.extensions;
        return;
    }
    DescriptionElement& element = *builder.open.back();
    std::string trimmed = Trimmed(element.text);
    if (trimmed != element.text)
    {
        element.padded = element.children.empty() ? std::move(element.text) : std::string();
        element.text = std::move(trimmed);
    }
    builder.open.pop_back();
}

void OnText(void* context, const xmlChar* text, int length)
{
    Builder& builder = BuilderOf(context);
    if (builder.extensions > 0 || builder.open.empty())
        return;
    DescriptionElement& element = *builder.open.back();
    // Most texts only set tags apart.
    if (element.children.empty() || !std::all_of(text, text + length, IsBlank))
        element.text.append(reinterpret_cast<const char*>(text), static_cast<std::size_t>(length));
}

} // namespace

const DescriptionElement* DescriptionElement::Child(std::string_view childTag) const
{
    const auto child = std::find_if(
        children.rbegin(), children.rend(), [childTag](const DescriptionElement& any) { return any.tag == childTag; });
    return child == children.rend() ? nullptr : &*child;
}

std::string_view DescriptionElement::Attribute(std::string_view attribute) const
{
    const auto found = std::find_if(
        attributes.begin(), attributes.end(), [attribute](const auto& any) { return any.first == attribute; });
    return found == attributes.end() ? std::string_view() : found->second;
}

DescriptionElement ReadNodes(const std::string& xml, int firstLine)
{
    Builder builder;
    builder.root.children.reserve(xml.size() / BytesOfNode);
    const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> parser(
        xmlCreateMemoryParserCtxt(xml.data(), static_cast<int>(xml.size())), &xmlFreeParserCtxt);
    if (!parser)
        return builder.root;
    *parser->sax = xmlSAXHandler();
    parser->sax->initialized = XML_SAX2_MAGIC;
    parser->sax->startElementNs = OnBegin;
    parser->sax->endElementNs = OnEnd;
    parser->sax->characters = OnText;
    parser->sax->ignorableWhitespace = OnText;
    parser->sax->cdataBlock = OnText;
    xmlCtxtUseOptions(
        parser.get(), XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE | XML_PARSE_NOENT);
    parser->_private = &builder;
    parser->input->line = firstLine;
    xmlParseDocument(parser.get());
    return std::move(builder.root);
}

} // namespace OPX::KltAPI
