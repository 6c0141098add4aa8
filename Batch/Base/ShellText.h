#ifndef SHELLTEXT_H
#define SHELLTEXT_H

#include <string>

/// \a text in single quotes, for any shell.
std::string ShellQuoted(const std::string& text);

/// The same, but only where quotes are needed.
std::string ShellWord(const std::string& text);

#endif
