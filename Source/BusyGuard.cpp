#include "BusyGuard.h"

#include "PressDropper.h"

#include <QApplication>
#include <QCursor>

BusyGuard::BusyGuard(QObject* window) : m_window(window)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyGuard::~BusyGuard()
{
    QApplication::restoreOverrideCursor();
    new PressDropper(m_window);
}
