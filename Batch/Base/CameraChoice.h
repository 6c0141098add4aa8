#ifndef CAMERACHOICE_H
#define CAMERACHOICE_H

#include <string>

/// Which camera a command is about: a connected one, or one that is simulated from its description.
struct CameraChoice
{
    std::string serialNumber;
    std::string descriptionFile; ///< Takes precedence over the serial number. "-" is the standard input.

    /// A text that is either: the path of a file that is there or could be a description, or a serial number.
    static CameraChoice FromText(const std::string& text);

    /// What the user called it.
    const std::string& Text() const { return descriptionFile.empty() ? serialNumber : descriptionFile; }
};

#endif
