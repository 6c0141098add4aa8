#ifndef TEXTS_H
#define TEXTS_H

#include <string>
#include <string_view>

namespace OPX::KltAPI
{

/// \a text, which is UTF-8, with underscores in place of what is not text: control characters, and invisible ones that
/// change how others are shown. All texts from cameras and of files go through here.
std::string WithoutControls(const std::string& text);

/// \a text in one line, its words with one blank between them: in XML a text is broken into lines anywhere.
std::string InOneLine(std::string_view text);

/// \a text without a backslash at its end, in either spelling: in a comment of generated code it would make the next
/// line part of the comment.
std::string WithoutLineEnd(std::string text);

/// Whether \a text ends with \a extension, which is in lower case; the case of \a text does not matter.
bool HasExtension(std::string_view text, std::string_view extension);

/// \a text without the white space around it.
std::string Trimmed(const std::string& text);
std::string_view Trimmed(std::string_view text);

} // namespace OPX::KltAPI

#endif
