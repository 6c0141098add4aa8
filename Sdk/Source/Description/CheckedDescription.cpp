#include "Description/CheckedDescription.h"

#include "Base/Texts.h"
#include "Description/DocumentLimits.h"
#include "Description/ReferenceGraph.h"
#include "Description/Unzip.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <mutex>

namespace OPX
{
namespace KltAPI
{
namespace
{

typedef std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> DocumentPtr;

std::string Attribute(xmlNode* node, const char* name)
{
    xmlChar* value = xmlGetProp(node, reinterpret_cast<const xmlChar*>(name));
    std::string text = value == nullptr ? std::string() : reinterpret_cast<const char*>(value);
    xmlFree(value);
    return text;
}

std::string LastXmlError()
{
    const xmlError* error = xmlGetLastError();
    if (error == nullptr || error->message == nullptr)
        return "it is not well-formed XML";
    std::string message = Trimmed(error->message);
    if (!message.empty() && message.back() == '.')
        message.pop_back();
    return "line " + std::to_string(error->line) + ": " + message;
}

DocumentPtr Parse(const std::string& xml)
{
    // No network, and nothing printed: the caller reports. XML_PARSE_HUGE lifts the limits of the parser, which long
    // texts would meet; ours are checked before.
    const int options = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE;
    xmlResetLastError();
    return DocumentPtr(xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr, options), &xmlFreeDoc);
}

/// Checks the parsed document; fills in the name.
std::string ProblemOf(xmlDoc* document, CheckedDescription& description)
{
    if (document == nullptr)
        return LastXmlError();
    xmlNode* root = xmlDocGetRootElement(document);
    if (root == nullptr || std::strcmp(reinterpret_cast<const char*>(root->name), "RegisterDescription") != 0)
        return "its root element is not RegisterDescription";
    const std::string modelName = WithoutControls(Attribute(root, "ModelName"));
    if (!modelName.empty())
        description.modelName = modelName;
    return ProblemOfReferences(root);
}

} // namespace

CheckedDescription CheckDescription(const std::string& content, const std::string& fallbackName)
{
    static std::once_flag initialised;
    std::call_once(initialised, xmlInitParser);

    CheckedDescription description;
    description.modelName = fallbackName;
    description.xml = IsZip(content) ? UnzipDescription(content, description.problem) : content;
    if (!description.problem.empty())
        return description;
    // Some tools put a line of their own before the document.
    description.xml.erase(0, description.xml.find('<'));
    if (description.xml.empty())
        description.problem = "it holds no XML";
    else if (description.xml.size() > MaximumDocumentSize)
        description.problem = "it is too large";
    else
        description.problem = ProblemOfText(description.xml);
    if (description.problem.empty())
        description.problem = ProblemOf(Parse(description.xml).get(), description);
    if (!description.problem.empty())
        description.xml = std::string();
    return description;
}

CheckedDescription ReadDescription(const std::string& path)
{
    CheckedDescription description;
    std::error_code error;
    // A pipe would keep us waiting until somebody writes to it.
    if (std::filesystem::exists(path, error) && !std::filesystem::is_regular_file(path, error))
        description.problem = "it is not a file";
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (!error && size > MaximumDocumentSize)
        description.problem = "it is too large";
    if (!description.problem.empty())
        return description;
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (error || !file)
    {
        description.problem = std::strerror(errno != 0 ? errno : EIO);
        return description;
    }
    return CheckDescription(content, WithoutControls(std::filesystem::path(path).stem().string()));
}

} // namespace KltAPI
} // namespace OPX
