#ifndef MESSAGES_H
#define MESSAGES_H

#include "Document/Texts.h"

#include <QString>

#include <cstdio>
#include <string>

/// Informs the user, on standard error.
inline void TellError(const std::string& text)
{
    std::fprintf(stderr, "kolta-classgen: %s\n", OPX::KltAPI::WithoutControls(text).c_str());
}

inline void TellWarning(const std::string& text)
{
    TellError("warning: " + text);
}

/// \a text as one word of a shell's command, in quotes where they are needed.
inline std::string ShellWord(const std::string& text)
{
    const char* const plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-./=";
    if (!text.empty() && text.find_first_not_of(plain) == std::string::npos)
        return text;
    std::string quoted = "'";
    for (char character : text)
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return quoted + "'";
}

inline std::string Quoted(const QString& text)
{
    return "'" + text.toStdString() + "'";
}

#endif
