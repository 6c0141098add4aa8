#include "PathEdit.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDir>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

namespace
{

QString WithoutLineEnd(QString text)
{
    while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r')))
        text.chop(1);
    return text;
}

/// The path of the only URL, if that is one of a file; file managers and address bars give it as a text, too.
QString PathOfUrl(const QMimeData& data)
{
    QList<QUrl> urls = data.urls();
    const QString text = WithoutLineEnd(data.text());
    if (urls.isEmpty() && text.startsWith(QLatin1String("file://")) && !text.contains(QLatin1Char('\n')))
        urls.append(QUrl(text));
    QUrl url = urls.size() == 1 ? urls.first() : QUrl();
    if (url.host() == QLatin1String("localhost"))
        url.setHost(QString());
    return url.scheme() == QLatin1String("file") && url.host().isEmpty() ? url.toLocalFile() : QString();
}

QString PathOfText(const QString& text)
{
    const QString path = WithoutLineEnd(text);
    return path.startsWith(QLatin1String("~/")) ? QDir::homePath() + path.mid(1) : path;
}

/// Whoever moves a file somewhere else would delete it afterwards.
void AcceptPath(QDropEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

} // namespace

void PathEdit::keyPressEvent(QKeyEvent* event)
{
    const bool isSelection =
        event->key() == Qt::Key_Insert && event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    const QClipboard::Mode mode = isSelection ? QClipboard::Selection : QClipboard::Clipboard;
    if (!event->matches(QKeySequence::Paste) || !Take(QApplication::clipboard()->mimeData(mode)))
        QLineEdit::keyPressEvent(event);
}

void PathEdit::mouseReleaseEvent(QMouseEvent* event)
{
    const QClipboard& clipboard = *QApplication::clipboard();
    const bool pastes = event->button() == Qt::MiddleButton && clipboard.supportsSelection();
    if (!pastes || !Take(clipboard.mimeData(QClipboard::Selection)))
        QLineEdit::mouseReleaseEvent(event);
}

void PathEdit::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    foreach (QAction* action, menu->actions())
    {
        if (!action->text().startsWith(QLineEdit::tr("&Paste")))
            continue;
        const QMimeData* copied = QApplication::clipboard()->mimeData();
        action->setEnabled(action->isEnabled() || (copied != nullptr && !PathOfUrl(*copied).isEmpty()));
        // It would paste without asking us.
        disconnect(action, nullptr, this, nullptr);
        connect(action, SIGNAL(triggered()), this, SLOT(OnPaste()));
    }
    if (!actions().isEmpty())
        menu->addSeparator();
    menu->addActions(actions());
    menu->popup(event->globalPos());
}

void PathEdit::dragEnterEvent(QDragEnterEvent* event)
{
    QLineEdit::dragEnterEvent(event);
    if (!PathOfUrl(*event->mimeData()).isEmpty())
        AcceptPath(event);
}

void PathEdit::dragMoveEvent(QDragMoveEvent* event)
{
    QLineEdit::dragMoveEvent(event);
    if (!PathOfUrl(*event->mimeData()).isEmpty())
        AcceptPath(event);
}

void PathEdit::dropEvent(QDropEvent* event)
{
    if (Take(event->mimeData()))
        AcceptPath(event);
    else
        QLineEdit::dropEvent(event);
}

void PathEdit::OnPaste()
{
    if (!Take(QApplication::clipboard()->mimeData()))
        paste();
}

/// \return false if what is \a given is a text to be taken as it is
bool PathEdit::Take(const QMimeData* given)
{
    if (given == nullptr)
        return false;
    const QString path = PathOfUrl(*given);
    const QString text = path.isEmpty() ? PathOfText(given->text()) : path;
    if (path.isEmpty() && text == given->text())
        return false;
    if (!path.isEmpty())
        selectAll();
    insert(text);
    return true;
}
