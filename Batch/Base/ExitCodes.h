#ifndef EXITCODES_H
#define EXITCODES_H

#include <stdexcept>
#include <string>

/// The program's exit codes.
enum ExitCode
{
    ExitDone = 0,
    ExitDiffers = 1, ///< What was compared differs, or a description has mistakes.
    ExitUsage = 2,
    ExitCamera = 3, ///< The camera or its description cannot be used.
    ExitFile = 4,
    ExitNames = 5 ///< The class would not compile, or would not fit all cameras.
};

/// Ends a command. The text says what is wrong and what to do.
class CommandError : public std::runtime_error
{
public:
    CommandError(ExitCode code, const std::string& text) : std::runtime_error(text), m_code(code) {}

    ExitCode Code() const { return m_code; }

private:
    ExitCode m_code;
};

#endif
