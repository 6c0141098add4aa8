#ifndef MESSAGEEDIT_H
#define MESSAGEEDIT_H

#include <QTextEdit>

class QSyntaxHighlighter;

/// Shows messages, one in each paragraph: those about errors and warnings in a colour of their own. The text has no
/// colour, and what is copied is plain text. GUI thread only.
class MessageEdit : public QTextEdit
{
public:
    explicit MessageEdit(QWidget* parent = nullptr);

    /// A line: on a low screen it makes room for everything else.
    QSize minimumSizeHint() const override;

protected:
    QMimeData* createMimeDataFromSelection() const override;
    void changeEvent(QEvent* event) override;

private:
    QSyntaxHighlighter* m_colors;
};

#endif
