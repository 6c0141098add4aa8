#ifndef BUSYGUARD_H
#define BUSYGUARD_H

#include <QApplication>
#include <QCursor>

/// Stands for work that keeps the GUI thread busy: shows the wait cursor while the object lives. What the user presses
/// meanwhile waits in the event queue.
///
/// Runs no event loop. GUI thread only.
class BusyGuard
{
public:
    BusyGuard() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyGuard() { QApplication::restoreOverrideCursor(); }

private:
    Q_DISABLE_COPY(BusyGuard)
};

#endif
