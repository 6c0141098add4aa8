#include "TextEditIoDevice.h"

#include <QScrollBar>
#include <QString>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace
{

/// Line breaks of every kind, and the marks that a text cursor takes for the end of a frame.
bool StartsParagraph(QChar character)
{
    const ushort code = character.unicode();
    return code == '\n' || code == '\r' || code == 0x2029 || code == 0xfdd0 || code == 0xfdd1;
}

/// \a text as one paragraph.
QString InOneParagraph(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    std::replace_if(text.begin(), text.end(), StartsParagraph, QChar(QChar::LineSeparator));
    return text;
}

} // namespace

TextEditIoDevice::TextEditIoDevice(QObject* parent, QTextEdit* textEdit) : QIODevice(parent), m_textEdit(textEdit)
{
}

qint64 TextEditIoDevice::readData(char* /*data*/, qint64 /*maxSize*/)
{
    return 0;
}

qint64 TextEditIoDevice::writeData(const char* data, qint64 size)
{
    if (m_textEdit)
        AppendParagraph(QString::fromUtf8(data, static_cast<int>(qstrnlen(data, static_cast<uint>(size)))));
    return size;
}

void TextEditIoDevice::StartGroup()
{
    m_startsGroup = true;
    if (m_textEdit)
        m_textEdit->verticalScrollBar()->setValue(m_textEdit->verticalScrollBar()->maximum());
}

void TextEditIoDevice::AppendParagraph(const QString& text)
{
    QScrollBar* scrollBar = m_textEdit->verticalScrollBar();
    const bool followsEnd = scrollBar->value() == scrollBar->maximum();

    // Not QTextEdit::append: it would take a "<" in a message for the beginning of markup.
    QTextCursor cursor(m_textEdit->document());
    cursor.movePosition(QTextCursor::End);
    QTextBlockFormat format;
    const int room = m_textEdit->fontMetrics().height() / 2;
    format.setTopMargin(m_startsGroup ? room : 0);
    m_startsGroup = false;
    if (m_textEdit->document()->isEmpty())
        cursor.setBlockFormat(format);
    else
        cursor.insertBlock(format);
    cursor.insertText(InOneParagraph(text));

    if (followsEnd)
        scrollBar->setValue(scrollBar->maximum());
}
