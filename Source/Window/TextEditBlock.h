#ifndef TEXTEDITBLOCK_H
#define TEXTEDITBLOCK_H

#include <QTextCursor>

class QTextEdit;

/// Lays out in one go what is inserted into a text edit while the object lives. Paragraph by paragraph, many of them
/// take a long time.
///
/// An edit that showed its end shows it afterwards; one that did not keeps its place. The text edit outlives the
/// object, and must not be painted meanwhile. GUI thread only.
class TextEditBlock
{
public:
    explicit TextEditBlock(QTextEdit& textEdit);
    ~TextEditBlock();

private:
    Q_DISABLE_COPY(TextEditBlock)

    QTextEdit& m_textEdit;
    QTextCursor m_cursor;
    const Qt::ScrollBarPolicy m_scrollBarPolicy;
    const bool m_followsEnd;
};

#endif
