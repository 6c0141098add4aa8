#ifndef PATHEDIT_H
#define PATHEDIT_H

#include <QLineEdit>

class QMimeData;

/// A line edit for a path, which takes what is dropped on it or pasted into it as people mean it: the URL of a file or
/// folder replaces the text by its path, "~/" is the home folder, and a line end at the end goes away. What is typed
/// stays as it is.
///
/// Its actions stand below those of every line edit in the context menu. GUI thread only.
class PathEdit : public QLineEdit
{
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private slots:
    void OnPaste();

private:
    bool Take(const QMimeData* given);
};

#endif
