#include "Base/CameraChoice.h"

#include "Document/Texts.h"

#include <filesystem>

using OPX::KltAPI::HasExtension;
namespace fs = std::filesystem;

namespace
{

/// A folder may well be called like a camera.
bool IsFile(const std::string& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    return fs::exists(status) && !fs::is_directory(status);
}

} // namespace

CameraChoice CameraChoice::FromText(const std::string& text)
{
    CameraChoice choice;
    if (text == "-" || HasExtension(text, ".xml") || HasExtension(text, ".zip") ||
        text.find('/') != std::string::npos || IsFile(text))
        choice.descriptionFile = text;
    else
        choice.serialNumber = text;
    return choice;
}
