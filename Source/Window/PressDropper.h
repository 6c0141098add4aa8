#ifndef PRESSDROPPER_H
#define PRESSDROPPER_H

#include <QBasicTimer>
#include <QObject>

/// Drops what the user pressed, on the mouse or the keyboard, while the event loop stood still. Such presses were not
/// meant for what the window shows now. GUI thread only.
class PressDropper : public QObject
{
    Q_OBJECT

public:
    /// \param window the window that does not answer, which owns the object
    explicit PressDropper(QObject* window);

    /// The work is done, and what waited may come. The object deletes itself as soon as all of it was delivered.
    void Start();

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private slots:
    void OnLoopTurns();

private:
    QBasicTimer m_timer;
    int m_rounds;
};

#endif
