#ifndef TEXTEDITBLOCK_H
#define TEXTEDITBLOCK_H

#include <QScrollBar>
#include <QTextCursor>
#include <QTextEdit>

/// Lays out in one go what is inserted into a text edit while the object lives. Paragraph by paragraph, many of them
/// take a long time.
///
/// An edit that showed its end shows it afterwards; one that did not keeps its place. The text edit outlives the
/// object, and must not be painted meanwhile. GUI thread only.
class TextEditBlock
{
public:
    explicit TextEditBlock(QTextEdit& textEdit)
        : m_textEdit(textEdit),
          m_cursor(textEdit.document()),
          m_scrollBarPolicy(textEdit.verticalScrollBarPolicy()),
          m_followsEnd(textEdit.verticalScrollBar()->value() == textEdit.verticalScrollBar()->maximum())
    {
        // A scroll bar that appears afterwards would make the text narrower, and everything would be laid out again.
        m_textEdit.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        m_cursor.beginEditBlock();
    }

    ~TextEditBlock()
    {
        m_cursor.endEditBlock();
        m_textEdit.setVerticalScrollBarPolicy(m_scrollBarPolicy);
        if (m_followsEnd)
            m_textEdit.verticalScrollBar()->setValue(m_textEdit.verticalScrollBar()->maximum());
    }

private:
    Q_DISABLE_COPY(TextEditBlock)

    QTextEdit& m_textEdit;
    QTextCursor m_cursor;
    const Qt::ScrollBarPolicy m_scrollBarPolicy;
    const bool m_followsEnd;
};

#endif
