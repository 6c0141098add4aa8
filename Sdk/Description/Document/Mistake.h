#ifndef MISTAKE_H
#define MISTAKE_H

#include "Document/Texts.h"

#include <string>

namespace OPX::KltAPI
{

/// Something in a file that is not as its author meant it. The file can be used all the same.
struct Mistake
{
    int line;
    std::string text; ///< A sentence.

    /// The mistake as compilers tell theirs.
    std::string In(const std::string& file) const
    {
        return WithoutControls(file) + ":" + std::to_string(line) + ": warning: " + WithoutControls(text);
    }
};

} // namespace OPX::KltAPI

#endif
