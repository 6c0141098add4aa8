#ifndef TEXTEDITIODEVICE_H
#define TEXTEDITIODEVICE_H

#include <QIODevice>
#include <QPointer>
#include <QTextEdit>

/// A device that appends what is written to it to a text edit: every write becomes one paragraph of plain text.
///
/// Does not own the text edit; once that is gone, what is written is dropped. GUI thread only.
class TextEditIoDevice : public QIODevice
{
    Q_OBJECT

public:
    TextEditIoDevice(QObject* parent, QTextEdit* textEdit);

    /// Delivers nothing.
    qint64 readData(char* data, qint64 maxSize) override;

    /// Appends the UTF-8 text up to the first zero byte. Always reports complete success.
    qint64 writeData(const char* data, qint64 size) override;

    /// Scrolls to the end, and leaves a little room above the next message: it is the first of what the user has just
    /// started.
    void StartGroup();

private:
    void AppendParagraph(const QString& text);

    QPointer<QTextEdit> m_textEdit;
    bool m_startsGroup = false;
};

#endif
