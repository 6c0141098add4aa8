#ifndef CAMERACHOICE_H
#define CAMERACHOICE_H

#include "Document/Texts.h"

#include <filesystem>
#include <string>
#include <system_error>

/// Which camera a command is about: a connected one, or one that is simulated from its description.
struct CameraChoice
{
    std::string serialNumber;
    std::string descriptionFile; ///< Takes precedence over the serial number. "-" is the standard input.

    /// A text that is either: the path of a file that is there or could be a description, or a serial number.
    static CameraChoice FromText(const std::string& text)
    {
        using OPX::KltAPI::HasExtension;
        std::error_code error;
        const std::filesystem::file_status status = std::filesystem::status(text, error);
        // A folder may well be called like a camera.
        const bool isThere = exists(status) && !is_directory(status);
        if (text == "-" || HasExtension(text, ".xml") || HasExtension(text, ".zip") ||
            text.find('/') != std::string::npos || isThere)
            return {std::string(), text};
        return {text, std::string()};
    }

    /// What the user called it.
    const std::string& Text() const { return descriptionFile.empty() ? serialNumber : descriptionFile; }
};

#endif
