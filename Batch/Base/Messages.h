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

inline std::string Quoted(const QString& text)
{
    return "'" + text.toStdString() + "'";
}

#endif
