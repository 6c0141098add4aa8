#include "Base/CameraChoice.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

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
    std::string extension = fs::path(text).extension();
    std::transform(extension.begin(), extension.end(), extension.begin(),
        [](unsigned char letter) { return std::tolower(letter); });
    if (text == "-" || extension == ".xml" || extension == ".zip" || text.find('/') != std::string::npos ||
        IsFile(text))
        choice.descriptionFile = text;
    else
        choice.serialNumber = text;
    return choice;
}
