#ifndef PROBLEM_H
#define PROBLEM_H

#include <string>

namespace OPX::KltAPI
{

/// Why something cannot be used; without a text there is no problem.
struct Problem
{
    std::string text; ///< A part of a sentence: "it holds no XML".
    int line = 0;     ///< Of the file; 0 if no line is to blame.

    explicit operator bool() const { return !text.empty(); }

    /// "line 7: it holds no XML"
    std::string InOneLine() const { return line == 0 ? text : "line " + std::to_string(line) + ": " + text; }
};

} // namespace OPX::KltAPI

#endif
