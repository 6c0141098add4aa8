#ifndef ENDWATCHER_H
#define ENDWATCHER_H

#include <QObject>

/// Tells when the program is asked from outside to end: by SIGTERM, SIGHUP or SIGINT, or because the desktop session
/// ends.
///
/// Made after the application object; one for the whole run. GUI thread only.
class EndWatcher : public QObject
{
    Q_OBJECT

public:
    EndWatcher();

signals:
    /// The program has to end. Emitted from the event loop.
    void EndRequested();

private slots:
    void OnSignal();
};

#endif
