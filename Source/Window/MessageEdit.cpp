#include "MessageEdit.h"

#include <QEvent>
#include <QMimeData>
#include <QSyntaxHighlighter>
#include <QTextDocumentFragment>

namespace
{

/// How messages begin that somebody should read.
const char* const Beginnings[] = {"Error", "Unable to ", "Unknown feature type "};

class MessageColors : public QSyntaxHighlighter
{
public:
    explicit MessageColors(QTextEdit* edit) : QSyntaxHighlighter(edit->document()), m_edit(*edit) {}

protected:
    void highlightBlock(const QString& text) override
    {
        const bool onDark = m_edit.palette().color(QPalette::Base).lightness() < 128;
        for (const char* beginning : Beginnings)
            if (text.startsWith(QLatin1String(beginning)))
                setFormat(0, static_cast<int>(text.size()), onDark ? QColor(255, 140, 130) : QColor(176, 0, 32));
    }

private:
    const QTextEdit& m_edit;
};

} // namespace

MessageEdit::MessageEdit(QWidget* parent) : QTextEdit(parent), m_colors(new MessageColors(this))
{
}

QSize MessageEdit::minimumSizeHint() const
{
    const int frame = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
    return QSize(QTextEdit::minimumSizeHint().width(), fontMetrics().lineSpacing() + frame);
}

QMimeData* MessageEdit::createMimeDataFromSelection() const
{
    auto* copied = new QMimeData;
    copied->setText(textCursor().selection().toPlainText());
    return copied;
}

void MessageEdit::changeEvent(QEvent* event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        m_colors->rehighlight();
}
