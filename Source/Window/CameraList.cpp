#include "CameraList.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEvent>

void CameraList::keyboardSearch(const QString& search)
{
    // A key that waited while the row before it was read does not come after a pause, which would begin a new search.
    const int pause = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(pause + m_lastSearch);
    QElapsedTimer timer;
    timer.start();
    QListWidget::keyboardSearch(search);
    m_lastSearch = static_cast<int>(timer.elapsed());
    QApplication::setKeyboardInputInterval(pause);
}

QItemSelectionModel::SelectionFlags CameraList::selectionCommand(const QModelIndex& index, const QEvent* event) const
{
    const bool isRelease = event != nullptr && event->type() == QEvent::MouseButtonRelease;
    const bool isChange = index.isValid() && !selectionModel()->isSelected(index);
    return isChange && !isRelease ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

void CameraList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QListWidget::selectionChanged(selected, deselected);
    // Before anybody else hears of it: a program, a screen reader for instance, can select without making current.
    MakeSelectedCurrent();
}

void CameraList::mouseMoveEvent(QMouseEvent* /*event*/)
{
}

void CameraList::focusInEvent(QFocusEvent* event)
{
    // Makes the first row current if none is.
    QListWidget::focusInEvent(event);
    MakeSelectedCurrent();
}

void CameraList::MakeSelectedCurrent()
{
    selectionModel()->setCurrentIndex(selectedIndexes().value(0), QItemSelectionModel::NoUpdate);
}
