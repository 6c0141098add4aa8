#include "Base/CameraChoice.h"

#include <filesystem>

CameraChoice CameraChoice::FromText(const std::string& text)
{
    CameraChoice choice;
    std::error_code error;
    const std::string extension = std::filesystem::path(text).extension();
    if (text == "-" || extension == ".xml" || extension == ".zip" || std::filesystem::exists(text, error))
        choice.descriptionFile = text;
    else
        choice.serialNumber = text;
    return choice;
}
