#ifndef CAMERAOBSERVER_H
#define CAMERAOBSERVER_H

#include <KoltaCPP/ICameraListObserver.h>
#include <QObject>

/// Turns the SDK's notice that the list of cameras has changed into a signal.
///
/// Owned by the SDK's shared pointer alone, so it never has a parent.
class CameraObserver : public QObject, public OPX::KltAPI::ICameraListObserver
{
    Q_OBJECT

public:
    CameraObserver();

    /// Called by the SDK on a thread of its own. Only emits the signal, and only where a camera came or went.
    void CameraListChanged(OPX::KltAPI::CameraPtr camera, UpdateTriggerType reason) override;

    /// Whether a change for this reason is one of the list of cameras.
    static bool ConcernsList(UpdateTriggerType reason);

signals:
    /// A camera came (0) or went (1). Emitted on the SDK's thread: connect it so that it may be queued.
    void CameraListChangedSignal(UpdateTriggerType reason);
};

#endif
