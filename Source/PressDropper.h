#ifndef PRESSDROPPER_H
#define PRESSDROPPER_H

#include <QBasicTimer>
#include <QObject>

/// Made when the event loop has stood still for a while: drops what the user pressed in the meantime, on the mouse or
/// the keyboard. Such presses were not meant for what the window shows now.
///
/// Deletes itself as soon as the event loop has delivered what waited. GUI thread only.
class PressDropper : public QObject
{
    Q_OBJECT

public:
    /// \param window the window that did not answer
    explicit PressDropper(QObject* window);

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
