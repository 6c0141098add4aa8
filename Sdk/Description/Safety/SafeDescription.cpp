#include "Safety/SafeDescription.h"

#include "Document/DocumentLimits.h"
#include "Document/FileContent.h"
#include "Document/Texts.h"
#include "Document/Unzip.h"
#include "Safety/DocumentReader.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <utility>

namespace OPX::KltAPI
{

SafeDescription CheckDescription(std::string content, const std::string& fallbackName)
{
    SafeDescription description;
    description.modelName = fallbackName;
    description.xml = IsZip(content) ? UnzipDescription(content, description.problem.text) : std::move(content);
    if (description.problem)
        return description;
    // Some tools put a line of text before the document.
    const std::size_t begin = std::min(description.xml.find('<'), description.xml.size());
    const auto before = description.xml.begin() + static_cast<std::ptrdiff_t>(begin);
    const auto linesBefore = static_cast<int>(std::count(description.xml.begin(), before, '\n'));
    description.xml.erase(0, begin);
    if (description.xml.empty())
        description.problem.text = "it holds no XML";
    else if (description.xml.size() > MaximumDocumentSize)
        description.problem.text = "it is too large";
    else
        description.problem.text = ProblemOfText(description.xml);
    if (!description.problem)
        description.problem = ProblemOfDocument(description.xml, 1 + linesBefore, description);
    if (description.problem)
        description.xml = std::string();
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
    catch (const std::exception& error) // Out of memory, or of threads.
    {
        description.problem.text = error.what();
    }
    return description;
}

} // namespace OPX::KltAPI
