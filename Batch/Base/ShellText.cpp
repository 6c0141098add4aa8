#include "Base/ShellText.h"

std::string ShellQuoted(const std::string& text)
{
    std::string quoted = "'";
    for (char character : text)
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return quoted + "'";
}

std::string ShellWord(const std::string& text)
{
    const bool isPlain =
        text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-./=") ==
        std::string::npos;
    return isPlain && !text.empty() ? text : ShellQuoted(text);
}
