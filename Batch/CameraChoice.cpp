#include "CameraChoice.h"

#include <filesystem>

CameraChoice CameraChoice::FromText(const std::string& text)
{
    CameraChoice choice;
    std::error_code error;
    if (text == "-" || std::filesystem::exists(text, error))
        choice.descriptionFile = text;
    else
        choice.serialNumber = text;
    return choice;
}
