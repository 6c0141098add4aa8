#ifndef PRINTABLE_H
#define PRINTABLE_H

#include <QString>

#include <algorithm>
#include <string>

/// \a text as it is shown: what is invisible but changes how the rest looks, such as control characters and directions
/// of writing in the names of files, becomes an underscore.
inline std::string Printable(const std::string& text)
{
    // Nearly all texts are plain ASCII.
    if (std::all_of(text.begin(), text.end(), [](char character) { return character >= ' ' && character <= '~'; }))
        return text;
    QString shown = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
    bool changed = false;
    for (QChar& character : shown)
    {
        const QChar::Category category = character.category();
        const bool joins = character.unicode() == 0x200C || character.unicode() == 0x200D; // Some scripts need them.
        if ((category != QChar::Other_Control && category != QChar::Other_Format && category != QChar::Separator_Line &&
                category != QChar::Separator_Paragraph) ||
            joins)
            continue;
        character = QLatin1Char('_');
        changed = true;
    }
    return changed ? shown.toStdString() : text;
}

#endif
