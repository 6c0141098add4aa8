#ifndef SELECTIONKEEPER_H
#define SELECTIONKEEPER_H

#include <QObject>

class QKeyEvent;
class QListWidget;
class QMouseEvent;

/// Makes a list of single selection safe to click and easy to type on.
///
/// A press never takes the selection away: neither one beside the rows nor one with Ctrl on the selected row does
/// anything. With nothing selected, Down and Up select the row that has the frame, and do not go past it.
class SelectionKeeper : public QObject
{
    Q_OBJECT

public:
    /// \param list the list, which owns the object
    explicit SelectionKeeper(QListWidget* list);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool WouldDeselect(const QMouseEvent& event) const;
    bool HandleKey(const QKeyEvent& event);

    QListWidget* m_list;
};

#endif
