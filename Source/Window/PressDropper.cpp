#include "Window/PressDropper.h"

#include "QtCompat.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

namespace
{

/// How often a timer that is always due fires until all presses that waited are delivered. The first time, it may come
/// before they are read.
const int RoundsUntilDelivered = 2;

bool IsPress(const QEvent& event)
{
    // Releases pass: what was pressed before has to be let go.
    return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick ||
           event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride;
}

} // namespace

PressDropper::PressDropper(QObject* window) : QObject(window), m_rounds(RoundsUntilDelivered)
{
}

void PressDropper::Start()
{
    // What comes before the loop turns did not wait: the program sent it.
    connect(QAbstractEventDispatcher::instance(), SIGNAL(awake()), this, SLOT(OnLoopTurns()));
    m_timer.start(0, this);
}

void PressDropper::OnLoopTurns()
{
    disconnect(QAbstractEventDispatcher::instance(), nullptr, this, nullptr);
    QCoreApplication::instance()->installEventFilter(this);
}

bool PressDropper::eventFilter(QObject* receiver, QEvent* event)
{
    if (!IsPress(*event) || CameThroughWindow(*receiver, *event))
        return false;
    // Otherwise the key would be looked up among the shortcuts next.
    event->accept();
    return true;
}

void PressDropper::timerEvent(QTimerEvent* event)
{
    Q_UNUSED(event);
    if (--m_rounds > 0)
        return;
    m_timer.stop();
    QCoreApplication::instance()->removeEventFilter(this);
    deleteLater();
}
