#ifndef BUSYGUARD_H
#define BUSYGUARD_H

#include <QtGlobal>

class PressDropper;
class QObject;

/// Stands for work that keeps the GUI thread busy: shows the wait cursor while the object lives. What the user presses
/// during the work, on the mouse or the keyboard, was not meant for what the window shows afterwards and is dropped.
///
/// Runs no event loop. GUI thread only.
class BusyGuard
{
public:
    /// \param window the window that does not answer; outlives the object
    explicit BusyGuard(QObject* window);
    ~BusyGuard();

private:
    Q_DISABLE_COPY(BusyGuard)

    PressDropper* m_dropper; ///< Owned by the window; deletes itself once it was started.
};

#endif
