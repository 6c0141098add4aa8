#include "Window/BusyGuard.h"

#include "Window/PressDropper.h"

#include <QApplication>
#include <QCursor>

BusyGuard::BusyGuard(QObject* window) : m_dropper(new PressDropper(window))
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyGuard::~BusyGuard()
{
    QApplication::restoreOverrideCursor();
    m_dropper->Start();
}
