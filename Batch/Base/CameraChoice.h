#ifndef CAMERACHOICE_H
#define CAMERACHOICE_H

#include "Base/ExitCodes.h"
#include "Document/Texts.h"

#include <filesystem>
#include <string>
#include <system_error>

/// Which camera a command is about: a connected one, or one that is simulated from its description.
struct CameraChoice
{
    std::string serialNumber;
    std::string descriptionFile; ///< Takes precedence over the serial number. "-" is the standard input.

    /// A text that is either: the path of a file that is there or could be a description, or a serial number. Throws
    /// CommandError if it is empty.
    static CameraChoice FromText(const std::string& text)
    {
        using OPX::KltAPI::HasExtension;
        if (text.empty())
            throw CommandError(ExitUsage, "The name of a camera or of a file is empty.");
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

/// What the user called a camera, in a message.
inline std::string Named(const std::string& label, const std::string& quote = "'")
{
    return label == "-" ? "the standard input" : quote + label + quote;
}

#endif
