#include "Document/DocumentBuilder.h"

#include "Document/DocumentLimits.h"
#include "Document/Texts.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <mutex>
#include <new>

namespace OPX::KltAPI
{
namespace
{

std::string_view ToView(const xmlChar* text)
{
    return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

std::string_view ToView(const xmlChar* begin, const xmlChar* end)
{
    return {reinterpret_cast<const char*>(begin), static_cast<std::size_t>(end - begin)};
}

std::size_t SizeOf(const NodeKind* kind)
{
    if (kind == nullptr || !kind->Is(Trait::Formula | Trait::Register))
        return SizeOfElement;
    return kind->Is(Trait::Formula) ? SizeOfFormula : SizeOfRegister;
}

/// What is wrong with the text of a document.
Problem ProblemOf(const xmlError& error)
{
    const std::string tag = error.str1 == nullptr ? "" : "<" + std::string(error.str1) + "> has no end tag";
    const bool knowsBegin = error.int1 > 0 && !tag.empty();
    if (knowsBegin && error.code == XML_ERR_TAG_NOT_FINISHED)
        return {tag, error.int1};
    if (knowsBegin && error.code == XML_ERR_TAG_NAME_MISMATCH && error.str2 != nullptr)
        return {tag + " before the </" + error.str2 + "> in line " + std::to_string(error.line), error.int1};
    if (error.message == nullptr)
        return {"it is not well-formed XML"};
    std::string message = Trimmed(std::string(error.message));
    if (!message.empty() && message.back() == '.')
        message.pop_back();
    return {message, error.line};
}

} // namespace

void DocumentBuilder::Parse(int firstLine)
{
    m_parser = NewParser(firstLine);
    if (!m_parser)
        return Refuse("there is not enough memory");
    xmlParseDocument(m_parser.get());
    if (!m_document.m_problem && m_parser->wellFormed == 0)
        m_document.m_problem = ProblemOf(m_error);
}

DocumentBuilder::ParserPtr DocumentBuilder::NewParser(int firstLine)
{
    static std::once_flag initialised;
    std::call_once(initialised, xmlInitParser);
    ParserPtr parser(xmlCreateMemoryParserCtxt(m_document.m_xml.data(), static_cast<int>(m_document.m_xml.size())),
        &xmlFreeParserCtxt);
    if (!parser)
        return parser;
    xmlSAXHandler& handler = *parser->sax;
    handler = xmlSAXHandler();
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = OnBegin;
    handler.endElementNs = OnEnd;
    handler.characters = OnText;
    handler.ignorableWhitespace = OnText;
    handler.cdataBlock = OnCdata;
    handler.comment = OnComment;
    handler.processingInstruction = OnInstruction;
    handler.serror = OnError; // Whether the error is constant depends on the version of libxml2.
    // No network, and nothing printed: the caller reports. XML_PARSE_HUGE lifts the limits of the parser, which long
    // texts would hit; ours are checked first. There are no entities except &amp; and the like.
    xmlCtxtUseOptions(
        parser.get(), XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE | XML_PARSE_NOENT);
    parser->_private = this;
    parser->input->line = firstLine;
    return parser;
}

/// Calls \a take with the builder. Nothing may be thrown through the parser, which is written in C.
template <class Take>
void DocumentBuilder::Pass(void* context, Take take)
{
    auto* parser = static_cast<xmlParserCtxt*>(context);
    DocumentBuilder& builder = *static_cast<DocumentBuilder*>(parser->_private);
    if (builder.m_document.WhyNot())
        return;
    try
    {
        take(builder, *parser->input);
    }
    catch (const std::exception& error)
    {
        builder.Refuse(error.what());
    }
    Problem& problem = builder.m_document.m_problem;
    if (!problem)
        return;
    problem.line = parser->input->line;
    xmlStopParser(parser);
}

template <class Error>
void DocumentBuilder::OnError(void* context, Error* error)
{
    auto& builder = *static_cast<DocumentBuilder*>(static_cast<xmlParserCtxt*>(context)->_private);
    if (error->level == XML_ERR_FATAL && builder.m_error.code == XML_ERR_OK)
        xmlCopyError(error, &builder.m_error);
}

void DocumentBuilder::OnBegin(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
    int /*spaces*/, const xmlChar** /*spaceList*/, int count, int /*defaulted*/, const xmlChar** attributes)
{
    Pass(context,
        [&](DocumentBuilder& builder, const xmlParserInput& input)
        {
            builder.Begin(name, prefix, attributes, count, input);
            if (uri != nullptr && builder.m_open.size() == 1)
                builder.AddAttribute(builder.m_document.m_root, "xmlns", builder.Kept(ToView(uri)));
        });
}

void DocumentBuilder::OnEnd(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/)
{
    Pass(context, [](DocumentBuilder& builder, const xmlParserInput& /*input*/) { builder.End(); });
}

void DocumentBuilder::OnText(void* context, const xmlChar* text, int length)
{
    Pass(context, [&](DocumentBuilder& builder, const xmlParserInput& /*input*/)
        { builder.TakeText(ToView(text, text + length)); });
}

void DocumentBuilder::OnCdata(void* context, const xmlChar* text, int length)
{
    Pass(context,
        [&](DocumentBuilder& builder, const xmlParserInput& /*input*/)
        {
            builder.NoticeMoreThanText();
            builder.TakeText(ToView(text, text + length));
        });
}

void DocumentBuilder::OnComment(void* context, const xmlChar* /*text*/)
{
    Pass(context, [](DocumentBuilder& builder, const xmlParserInput& /*input*/) { builder.NoticeMoreThanText(); });
}

void DocumentBuilder::OnInstruction(void* context, const xmlChar* /*target*/, const xmlChar* /*data*/)
{
    OnComment(context, nullptr);
}

void DocumentBuilder::Begin(
    const xmlChar* name, const xmlChar* prefix, const xmlChar** attributes, int count, const xmlParserInput& input)
{
    const Tag tag = TagOf(name, prefix);
    m_size += SizeOf(tag.node);
    if (m_size > MaximumSize)
        return Refuse("it has too many elements");
    if (m_ignored > 0 || ToView(name) == "Extension")
    {
        ++m_ignored;
        return;
    }
    if (m_open.empty())
        CheckRoot(ToView(name), prefix != nullptr);
    else if (m_open.size() > MaximumNesting + 1)
        Refuse("its elements are nested too deeply");
    // A group within a node holds nothing of that node.
    else if (tag.text == "Group" && m_open.back().element == &m_document.m_root)
        return m_open.push_back(m_open.back());
    Element& element = NewElement();
    element.tag = tag.text;
    element.node = tag.node;
    element.element = tag.element;
    PlaceTag(element, input);
    TakeAttributes(element, attributes, count);
    m_open.push_back({&element, nullptr});
}

/// The parser is at the end of the start tag. The lines in libxml2's own tree end at 65535.
void DocumentBuilder::PlaceTag(Element& element, const xmlParserInput& input)
{
    const auto offset = [&input](const xmlChar* at) { return static_cast<long>(input.consumed) + (at - input.base); };
    const xmlChar* at = input.cur;
    element.line = input.line;
    for (; at > input.base && *at != '<'; --at)
        element.line -= *at == '\n' ? 1 : 0;
    if (element.line != m_line) // The whole document may be one line.
    {
        const xmlChar* begin = at;
        while (begin > input.base && begin[-1] != '\n')
            --begin;
        m_line = element.line;
        m_lineBegin = offset(begin);
    }
    element.column = static_cast<int>(offset(at) - m_lineBegin) + 1;
}

void DocumentBuilder::CheckRoot(std::string_view name, bool isPrefixed)
{
    if (name != "RegisterDescription")
        Refuse("its root element is not RegisterDescription");
    else if (isPrefixed) // Aravis knows no namespaces.
        Refuse("its root element has a prefix; make its namespace the default one (xmlns=...)");
}

void DocumentBuilder::End()
{
    if (m_ignored > 0)
    {
        --m_ignored;
        return;
    }
    KeepGathered();
    const Open ended = m_open.back();
    m_open.pop_back();
    // Where a group ends, what is behind it goes on.
    if (!m_open.empty() && m_open.back().element == ended.element)
        m_open.back().lastChild = ended.lastChild;
}

void DocumentBuilder::TakeText(std::string_view text)
{
    if (m_ignored > 0 || m_open.empty())
        return;
    Element& element = *m_open.back().element;
    if (m_open.back().lastChild != nullptr)
    {
        element.holdsTextBetween = element.holdsTextBetween || !Trimmed(text).empty();
        return;
    }
    std::string_view& content = element.content;
    const std::string_view place = m_gathered.empty() ? InXml(text) : std::string_view();
    const bool goesOn = content.empty() || content.data() + content.size() == place.data();
    if (!place.empty() && goesOn)
    {
        content = {content.empty() ? place.data() : content.data(), content.size() + place.size()};
        return;
    }
    if (m_gathered.empty())
        m_gathered = content;
    m_gathered += text;
}

void DocumentBuilder::NoticeMoreThanText()
{
    if (m_ignored == 0 && !m_open.empty())
        m_open.back().element->holdsMoreThanText = true;
}

void DocumentBuilder::KeepGathered()
{
    if (!m_gathered.empty())
        m_open.back().element->content = Kept(m_gathered);
    m_gathered.clear();
}

/// A new element where the parser is.
Element& DocumentBuilder::NewElement()
{
    if (m_open.empty())
        return m_document.m_root;
    KeepGathered();
    Open& parent = m_open.back();
    auto* const element = new (m_document.m_memory.allocate(sizeof(Element), alignof(Element))) Element;
    (parent.lastChild == nullptr ? parent.element->firstChild : parent.lastChild->next) = element;
    parent.lastChild = element;
    parent.element->holdsMoreThanText = true;
    return *element;
}

void DocumentBuilder::TakeAttributes(Element& element, const xmlChar** attributes, int count)
{
    // Of each the name, the prefix, the namespace, and the begin and the end of the value.
    for (const xmlChar** attribute = attributes; count > 0; attribute += 5, --count)
    {
        const std::string_view name = NameOf(attribute[0]);
        const std::string_view value = ToView(attribute[3], attribute[4]);
        if (attribute[1] != nullptr) // Namespaces mean nothing to the SDK: it knows no attribute of such a name.
            continue;
        if (name == "Name")
            element.name = Kept(value);
        else if (name == "Index" || name == "Offset" || name == "pOffset" || name == "ModelName" ||
                 name == "MajorVersion" || name == "MinorVersion" || name == "SubMinorVersion")
            AddAttribute(element, name, Kept(value));
    }
}

void DocumentBuilder::AddAttribute(Element& element, std::string_view name, std::string_view value)
{
    element.attributes = new (m_document.m_memory.allocate(sizeof(Attribute), alignof(Attribute)))
        Attribute{name, value, element.attributes};
}

DocumentBuilder::Tag DocumentBuilder::TagOf(const xmlChar* name, const xmlChar* prefix)
{
    // Known to nobody: namespaces mean nothing to the SDK.
    if (prefix != nullptr)
        return {Kept(std::string(NameOf(prefix)).append(":").append(NameOf(name))), nullptr, nullptr};
    const auto known = m_tags.find(name);
    if (known != m_tags.end())
        return known->second;
    const std::string_view text = NameOf(name);
    return m_tags.emplace(name, Tag{text, FindNodeKind(text), FindElementKind(text)}).first->second;
}

/// One of the parser's names, which it has once. It takes minutes over a document in which each is another one.
std::string_view DocumentBuilder::NameOf(const xmlChar* name)
{
    std::string_view& known = m_names[name];
    if (known.empty())
        known = Kept(ToView(name));
    if (m_names.size() > MaximumNames)
        Refuse("its elements and attributes have too many names");
    return known;
}

/// A text of the parser's that stays.
std::string_view DocumentBuilder::Kept(std::string_view text)
{
    const std::string_view place = InXml(text);
    if (!place.empty() || text.empty())
        return place;
    auto* const copy = static_cast<char*>(m_document.m_memory.allocate(text.size(), 1));
    std::copy(text.begin(), text.end(), copy);
    return {copy, text.size()};
}

/// The place where a text that the parser hands out stands in the XML; empty if it is spelled differently there.
std::string_view DocumentBuilder::InXml(std::string_view text) const
{
    const xmlParserInput& input = *m_parser->input;
    const char* const base = reinterpret_cast<const char*>(input.base);
    const char* const end = reinterpret_cast<const char*>(input.end);
    const std::less<> isBefore;
    if (isBefore(text.data(), base) || isBefore(end, text.data() + text.size()))
        return std::string_view();
    const std::size_t offset = input.consumed + static_cast<std::size_t>(text.data() - base);
    const std::string_view xml = m_document.m_xml;
    const std::string_view place = offset <= xml.size() ? xml.substr(offset, text.size()) : std::string_view();
    return place == text ? place : std::string_view();
}

} // namespace OPX::KltAPI
