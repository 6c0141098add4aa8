#ifndef DOCUMENTBUILDER_H
#define DOCUMENTBUILDER_H

#include "Document/Document.h"

#include <libxml/parser.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OPX::KltAPI
{

/// Grows the tree of a document as the parser goes through it.
class DocumentBuilder
{
public:
    explicit DocumentBuilder(Document& document) : m_document(document) {}
    ~DocumentBuilder() { xmlResetError(&m_error); }
    DocumentBuilder(const DocumentBuilder&) = delete;
    DocumentBuilder& operator=(const DocumentBuilder&) = delete;

    void Parse(int firstLine);

private:
    struct Tag
    {
        std::string_view text;
        const NodeKind* node;
        const ElementKind* element;
    };

    /// An element whose end tag is yet to come.
    struct Open
    {
        Element* element;
        Element* lastChild;
    };

    typedef std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> ParserPtr;

    ParserPtr NewParser(int firstLine);

    template <class Take>
    static void Pass(void* context, Take take);
    template <class Error>
    static void OnError(void* context, Error* error);
    static void OnBegin(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri, int spaces,
        const xmlChar** spaceList, int count, int defaulted, const xmlChar** attributes);
    static void OnEnd(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri);
    static void OnText(void* context, const xmlChar* text, int length);
    static void OnCdata(void* context, const xmlChar* text, int length);
    static void OnComment(void* context, const xmlChar* text);
    static void OnInstruction(void* context, const xmlChar* target, const xmlChar* data);

    void Begin(
        const xmlChar* name, const xmlChar* prefix, const xmlChar** attributes, int count, const xmlParserInput& input);
    void PlaceTag(Element& element, const xmlParserInput& input);
    void CheckRoot(std::string_view name, bool isPrefixed);
    void End();
    void TakeText(std::string_view text);
    void NoticeMoreThanText();
    void KeepGathered();
    Element& NewElement();
    void TakeAttributes(Element& element, const xmlChar** attributes, int count);
    void AddAttribute(Element& element, std::string_view name, std::string_view value);
    Tag TagOf(const xmlChar* name, const xmlChar* prefix);
    std::string_view NameOf(const xmlChar* name);
    std::string_view Kept(std::string_view text);
    std::string_view InXml(std::string_view text) const;
    void Refuse(const char* problem) { m_document.m_problem.text = problem; }

    Document& m_document;
    ParserPtr m_parser{nullptr, &xmlFreeParserCtxt};
    xmlError m_error = {}; ///< The first one of the text itself; others follow from it.
    std::vector<Open> m_open;
    std::size_t m_size = 0; ///< Of Aravis' document.
    int m_ignored = 0;      ///< How deep we are in an extension.
    int m_line = 0;         ///< The last one that a tag began in,
    long m_lineBegin = 0;   ///< and where that begins.
    std::string m_gathered; ///< Text of the innermost element that does not stand like this in the XML.
    std::unordered_map<const xmlChar*, Tag> m_tags; ///< By the parser's own names, which it has once.
    std::unordered_map<const xmlChar*, std::string_view> m_names;
};

} // namespace OPX::KltAPI

#endif
