#include "Window/TextEditBlock.h"

#include <QScrollBar>
#include <QTextEdit>

TextEditBlock::TextEditBlock(QTextEdit& textEdit)
    : m_textEdit(textEdit),
      m_cursor(textEdit.document()),
      m_scrollBarPolicy(textEdit.verticalScrollBarPolicy()),
      m_followsEnd(textEdit.verticalScrollBar()->value() == textEdit.verticalScrollBar()->maximum())
{
    // A scroll bar that appears afterwards would make the text narrower, and everything would be laid out again.
    m_textEdit.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_cursor.beginEditBlock();
}

TextEditBlock::~TextEditBlock()
{
    m_cursor.endEditBlock();
    m_textEdit.setVerticalScrollBarPolicy(m_scrollBarPolicy);
    if (m_followsEnd)
        m_textEdit.verticalScrollBar()->setValue(m_textEdit.verticalScrollBar()->maximum());
}
