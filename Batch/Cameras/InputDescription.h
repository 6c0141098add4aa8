#ifndef INPUTDESCRIPTION_H
#define INPUTDESCRIPTION_H

#include "Document/Document.h"
#include "Safety/SafeDescription.h"

#include <string>

/// A description from a file of the user's, read and checked once.
struct InputDescription
{
    /// Throws CommandError if the file cannot be read. Whether the description can be used is in \a checked.
    /// \param file a file, a pipe, or "-" for the standard input
    explicit InputDescription(const std::string& file);

    std::string path; ///< Empty for the standard input and pipes: there is nothing beside them.
    OPX::KltAPI::Document document;
    OPX::KltAPI::SafeDescription checked; ///< Without a text of its own.
};

#endif
