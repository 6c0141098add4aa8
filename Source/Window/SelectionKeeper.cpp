#include "Window/SelectionKeeper.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>

SelectionKeeper::SelectionKeeper(QListWidget* list) : QObject(list), m_list(list)
{
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
}

bool SelectionKeeper::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type())
    {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return watched == m_list->viewport() && WouldDeselect(*static_cast<QMouseEvent*>(event));
    case QEvent::KeyPress:
        return watched == m_list && HandleKey(*static_cast<QKeyEvent*>(event));
    default:
        return false;
    }
}

bool SelectionKeeper::WouldDeselect(const QMouseEvent& event) const
{
    const QListWidgetItem* item = m_list->itemAt(event.pos());
    return item == nullptr || (item->isSelected() && event.modifiers().testFlag(Qt::ControlModifier));
}

bool SelectionKeeper::HandleKey(const QKeyEvent& event)
{
    QListWidgetItem* item = m_list->currentItem();
    if (item == nullptr)
        return false;
    if (item->isSelected())
        return event.key() == Qt::Key_Space && event.modifiers().testFlag(Qt::ControlModifier);
    const bool movesByOne = event.key() == Qt::Key_Down || event.key() == Qt::Key_Up;
    if (movesByOne)
        item->setSelected(true);
    return movesByOne;
}
