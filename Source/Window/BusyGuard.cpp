#include "Window/BusyGuard.h"

#include <QApplication>
#include <QCursor>

BusyGuard::BusyGuard()
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyGuard::~BusyGuard()
{
    QApplication::restoreOverrideCursor();
}
