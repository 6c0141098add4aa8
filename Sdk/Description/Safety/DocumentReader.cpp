#include "Safety/DocumentReader.h"

#include "Document/DocumentLimits.h"
#include "Document/Texts.h"
#include "Safety/ReferenceGraph.h"

#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <mutex>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace OPX::KltAPI
{
namespace
{

const std::size_t MaximumNesting = 16;

/// What an element is to this reader.
enum Kind : unsigned
{
    Other = 0,
    Reference = 1, ///< Holds the name of another node, whose value is needed for that of the node around it.
    Length = 2,
    Formula = 4,
    Register = 8,
    /// Aravis fetches the whole register, however long it is, as soon as a value is needed.
    NumericRegister = 16 | Register,
    Struct = 32,
    StructPart = 64,
    Entry = 128,
    Ignored = 256, ///< Nothing in it is a node.
    VariableLength = 512 | Reference,
    Copy = 1024 ///< Holds the name of another node, which is given the same value.
};

Kind KindOf(std::string_view element)
{
    static const std::unordered_map<std::string_view, unsigned> kinds = {{"pValue", Reference},
        {"pVariable", Reference}, {"pAddress", Reference}, {"pIndex", Reference}, {"pLength", VariableLength},
        {"pValueCopy", Copy}, {"pValueIndexed", Reference}, {"pValueDefault", Reference}, {"Length", Length},
        {"SwissKnife", Formula}, {"IntSwissKnife", Formula}, {"Converter", Formula}, {"IntConverter", Formula},
        {"IntReg", NumericRegister}, {"MaskedIntReg", NumericRegister}, {"FloatReg", NumericRegister},
        {"StructReg", NumericRegister | Struct}, {"Register", Register}, {"StringReg", Register},
        {"StructEntry", StructPart}, {"EnumEntry", Entry},
        // The names of the first two are known only in the formula; an extension is for its maker's programs.
        {"Constant", Ignored}, {"Expression", Ignored}, {"Extension", Ignored}};
    const auto kind = kinds.find(element);
    return kind == kinds.end() ? Other : static_cast<Kind>(kind->second);
}

bool Is(Kind kind, Kind wanted)
{
    return (kind & wanted) == wanted;
}

std::string_view ToView(const xmlChar* text)
{
    return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

/// The attributes of an element as the parser hands them out.
class Attributes
{
public:
    Attributes(const xmlChar** all, int count) : m_all(all), m_count(static_cast<std::size_t>(count)) {}

    /// The value of the last attribute of this name, empty if there is none. In namespaces there can be several.
    std::string_view Value(std::string_view name, std::size_t* count = nullptr) const
    {
        std::string_view value;
        for (std::size_t i = 0; i < m_count; ++i)
        {
            const xmlChar** attribute = m_all + 5 * i; // Name, prefix, namespace, begin and end of the value.
            if (ToView(attribute[0]) != name)
                continue;
            value = std::string_view(
                reinterpret_cast<const char*>(attribute[3]), static_cast<std::size_t>(attribute[4] - attribute[3]));
            if (count != nullptr)
                ++*count;
        }
        return value;
    }

private:
    const xmlChar** m_all;
    std::size_t m_count;
};

/// Takes in a document as the parser goes through it.
class Reader
{
public:
    explicit Reader(std::string& modelName) : m_modelName(modelName) {}
    ~Reader() { xmlResetError(&error); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    void Begin(std::string_view element, bool isPrefixed, const Attributes& attributes, int line)
    {
        const Kind kind = KindOf(element);
        m_size += SizeOf(kind);
        if (m_size > MaximumSize)
            problem = "it has too many elements";
        else if (m_ignored > 0 || kind == Ignored)
            ++m_ignored;
        else if (m_open.empty())
            BeginDocument(element, isPrefixed, attributes);
        else if (m_open.size() > MaximumNesting + 1)
            problem = "its elements are nested too deeply";
        else if (HoldsText(m_open.back().kind))
            NoticeMoreThanText();
        else
            BeginNode(element, kind, attributes, line);
    }

    void End()
    {
        if (m_ignored > 0)
        {
            --m_ignored;
            return;
        }
        const Open ended = m_open.back();
        m_open.pop_back();
        if (Is(ended.kind, Reference))
            AddReference(ended.owner, m_text);
        else if (ended.kind == Copy)
            copies[graph.NameOf(ended.owner)].push_back(Trimmed(m_text));
        else if (Is(ended.kind, Length) && IsOutOfBounds(m_text, Is(m_open.back().kind, NumericRegister)))
            problem = "the length of " + graph.NameOf(ended.owner) + " is out of bounds";
    }

    void TakeText(const char* text, std::size_t length)
    {
        if (m_ignored == 0 && !m_open.empty() && HoldsText(m_open.back().kind))
            m_text.append(text, length);
    }

    /// Comments and the like: each reader has its own idea of a name with one of them in it.
    void NoticeMoreThanText()
    {
        if (m_ignored == 0 && !m_open.empty() && HoldsText(m_open.back().kind))
            problem = "a " + m_element + " of " + graph.NameOf(m_open.back().owner) + " holds more than text";
    }

    std::string problem; ///< Empty as long as there is none.
    int lineReached = 0;
    xmlError error = {}; ///< The first one of the text itself.
    ReferenceGraph graph;
    ValueCopies copies;

private:
    struct Open
    {
        Kind kind;
        ReferenceGraph::Index owner; ///< The node that it is or belongs to.
    };

    /// The first node of the graph: what is outside all others belongs to it, and no other node needs it.
    static const ReferenceGraph::Index Outside = 0;

    static bool HoldsText(Kind kind) { return (kind & (Reference | Length | Copy)) != 0; }

    static bool IsOutOfBounds(const std::string& text, bool ofNumber)
    {
        const long long length = std::strtoll(text.c_str(), nullptr, 0);
        return length < (ofNumber ? 1 : 0) || length > MaximumRegisterLength;
    }

    static std::size_t SizeOf(Kind kind)
    {
        if (Is(kind, Formula))
            return SizeOfFormula;
        return Is(kind, Register) ? SizeOfRegister : SizeOfElement;
    }

    void BeginDocument(std::string_view element, bool isPrefixed, const Attributes& attributes)
    {
        if (element != "RegisterDescription")
            problem = "its root element is not RegisterDescription";
        else if (isPrefixed) // Aravis knows no namespaces.
            problem = "its root element has a prefix; make its namespace the default one (xmlns=...)";
        const std::string name = WithoutControls(std::string(attributes.Value("ModelName")));
        if (!name.empty())
            m_modelName = name;
        m_open.push_back({Other, graph.NamelessNode(std::string())});
    }

    void BeginNode(std::string_view element, Kind kind, const Attributes& attributes, int line)
    {
        const Open parent = m_open.back();
        if (Is(kind, VariableLength) && Is(parent.kind, NumericRegister))
            problem = "the length of " + graph.NameOf(parent.owner) + " is not constant";
        if (!HoldsText(kind))
        {
            m_open.push_back({kind, NodeFor(element, kind, attributes, parent, line)});
            return;
        }
        m_open.push_back({kind, parent.owner});
        m_element = element;
        m_text.clear();
        AddOffset(parent.owner, attributes);
    }

    /// The node that an element is: one of its own, or the one around it.
    ReferenceGraph::Index NodeFor(
        std::string_view element, Kind kind, const Attributes& attributes, const Open& parent, int line)
    {
        // Entries often have the name of a feature.
        std::size_t count = 0;
        const std::string_view name = kind == Entry ? std::string_view() : Trimmed(attributes.Value("Name", &count));
        // In two namespaces. Who reads the document next may take the other one.
        if (count > 1)
            problem = std::string(name) + " has two names";
        if (name.empty() && (kind & (Formula | Struct)) == 0)
            return parent.owner;
        const ReferenceGraph::Index node =
            name.empty() ? graph.NamelessNode("a nameless " + std::string(element) + " in line " +
                                              std::to_string(line) + " (" + std::to_string(++m_nameless) + ")")
                         : graph.NodeOf(name);
        if (kind == StructPart)
            graph.AddReference(node, parent.owner);
        else if (parent.owner != Outside)
            graph.AddReference(parent.owner, node);
        return node;
    }

    void AddOffset(ReferenceGraph::Index owner, const Attributes& attributes)
    {
        std::size_t count = 0;
        const std::string_view offset = attributes.Value("pOffset", &count);
        if (count > 1)
            problem = "an index of " + graph.NameOf(owner) + " has two offsets";
        else if (count == 1)
            AddReference(owner, offset);
    }

    void AddReference(ReferenceGraph::Index owner, std::string_view name)
    {
        if (owner != Outside)
            graph.AddReference(owner, graph.NodeOf(Trimmed(name)));
    }

    std::string& m_modelName;
    std::vector<Open> m_open;
    std::size_t m_ignored = 0; ///< How deep we are in what is ignored.
    std::size_t m_size = 0;
    int m_nameless = 0;
    std::string m_element; ///< The one whose text is gathered,
    std::string m_text;    ///< and what there is of it.
};

/// What is wrong with the text of the document.
Problem Message(const xmlError& error)
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

/// Calls \a take with the reader. Nothing may be thrown through the parser, which is written in C.
template <class Take>
void Pass(void* context, Take take)
{
    auto* parser = static_cast<xmlParserCtxt*>(context);
    Reader& reader = *static_cast<Reader*>(parser->_private);
    if (!reader.problem.empty())
        return;
    try
    {
        take(reader, *parser);
        reader.lineReached = parser->input->line;
    }
    catch (const std::exception& error)
    {
        reader.problem = error.what();
        reader.lineReached = 0;
    }
    if (!reader.problem.empty())
        xmlStopParser(parser);
}

void OnBegin(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* /*uri*/, int /*spaces*/,
    const xmlChar** /*spaceList*/, int count, int /*defaulted*/, const xmlChar** attributes)
{
    Pass(context, [&](Reader& reader, const xmlParserCtxt& parser)
        { reader.Begin(ToView(name), prefix != nullptr, Attributes(attributes, count), parser.input->line); });
}

void OnEnd(void* context, const xmlChar* /*name*/, const xmlChar* /*prefix*/, const xmlChar* /*uri*/)
{
    Pass(context, [](Reader& reader, const xmlParserCtxt& /*parser*/) { reader.End(); });
}

void OnText(void* context, const xmlChar* text, int length)
{
    Pass(context, [&](Reader& reader, const xmlParserCtxt& /*parser*/)
        { reader.TakeText(reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)); });
}

void OnCdata(void* context, const xmlChar* /*text*/, int /*length*/)
{
    Pass(context, [](Reader& reader, const xmlParserCtxt& /*parser*/) { reader.NoticeMoreThanText(); });
}

void OnComment(void* context, const xmlChar* /*text*/)
{
    Pass(context, [](Reader& reader, const xmlParserCtxt& /*parser*/) { reader.NoticeMoreThanText(); });
}

void OnInstruction(void* context, const xmlChar* /*target*/, const xmlChar* /*text*/)
{
    Pass(context, [](Reader& reader, const xmlParserCtxt& /*parser*/) { reader.NoticeMoreThanText(); });
}

/// The errors that come after the first one follow from it.
template <class Error>
void OnError(void* context, Error* error)
{
    Reader& reader = *static_cast<Reader*>(static_cast<xmlParserCtxt*>(context)->_private);
    if (error->level == XML_ERR_FATAL && reader.error.code == XML_ERR_OK)
        xmlCopyError(error, &reader.error);
}

typedef std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> ParserPtr;

ParserPtr NewParser(const std::string& xml, Reader& reader, int firstLine)
{
    static std::once_flag initialised;
    std::call_once(initialised, xmlInitParser);
    ParserPtr parser(xmlCreateMemoryParserCtxt(xml.data(), static_cast<int>(xml.size())), &xmlFreeParserCtxt);
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
    parser->_private = &reader;
    parser->input->line = firstLine;
    return parser;
}

} // namespace

Problem ProblemOfDocument(const std::string& xml, int firstLine, SafeDescription& description)
{
    Reader reader(description.modelName);
    const ParserPtr parser = NewParser(xml, reader, firstLine);
    if (!parser)
        return {"there is not enough memory"};
    xmlParseDocument(parser.get());
    if (!reader.problem.empty())
        return {reader.problem, reader.lineReached};
    if (parser->wellFormed == 0)
        return Message(reader.error);
    description.copies = std::move(reader.copies);
    return {reader.graph.FindProblem()};
}

} // namespace OPX::KltAPI
