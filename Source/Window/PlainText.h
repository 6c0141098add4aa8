#ifndef PLAINTEXT_H
#define PLAINTEXT_H

#include <QString>
#include <QTextDocument>

/// The same text for a tool tip, which would take a "<" for the beginning of markup.
inline QString AsPlainText(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

#endif
