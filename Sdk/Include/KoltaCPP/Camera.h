#ifndef KOLTACPP_CAMERA_H
#define KOLTACPP_CAMERA_H

#include "KoltaCPP/Feature.h"
#include "KoltaCPP/KoltaExport.h"
#include "KoltaCPP/KoltaTypes.h"
#include "KoltaCPP/SharedPtr.h"

#include <vector>

namespace OPX
{
namespace KltAPI
{

/// Something that has features.
class KOLTACPP_EXPORT FeatureContainer
{
public:
    struct Impl;

    virtual ~FeatureContainer();

    FeatureContainer(const FeatureContainer&) = delete;
    FeatureContainer& operator=(const FeatureContainer&) = delete;

    /// All features, in the order of the camera's description.
    ///
    /// The first call after `Camera::Open`, of this or of `GetFeatureByName`, finds out which features the camera has,
    /// and asks the camera for that: it may take up to ten seconds. Later calls do not ask the camera, but still wait
    /// for the calls of other threads.
    /// \param features room for \a count handles. With a null pointer, as from `data()` of an empty vector, the call
    ///     only stores how many there are.
    /// \param count the length of \a features; afterwards the number of features
    /// \return `KltErrorDeviceNotOpen` for a closed or lost camera, `KltErrorMoreData` when \a count is too small,
    ///     `KltErrorTimeout` when the camera did not answer in time or other threads kept it busy
    KltErrorType GetFeatures(FeaturePtr* features, unsigned int& count);

    /// The feature of this name. Waits as `GetFeatures` does. After an error \a feature is unchanged.
    /// \return `KltErrorNotFound` when there is no such feature, `KltErrorDeviceNotOpen` for a closed or lost camera,
    ///     `KltErrorBadParameter` for a null pointer, `KltErrorTimeout` when the camera did not answer in time or other
    ///     threads kept it busy
    KltErrorType GetFeatureByName(const char* name, FeaturePtr& feature);

protected:
    /// For the library: takes over \a impl.
    explicit FeatureContainer(Impl* impl);

    Impl* m_impl; ///< The library's own.
};

/// One camera.
///
/// Calls may come from any thread; a call that needs the connection waits for those before it. After ten seconds at the
/// latest it gives up with `KltErrorTimeout`. With a simulated camera, calls also look whether its file is still the
/// same, which takes as long as the file system does. The camera is closed and destroyed with its last handle; its
/// features may live longer.
///
/// An open camera is lost when it is restarted or unplugged, when it is out of reach for three seconds, when a camera
/// in a network is controlled by another program, and when the file of a simulated camera changes. This is noticed
/// within a few seconds, or earlier by a call that gets no answer. From then on all calls that need the connection give
/// `KltErrorDeviceNotOpen` at once, also if the camera is back: its settings may be gone, and nothing is done about
/// that behind the program's back. Observers are told once, with `UpdateTriggerOpenStateChanged`. `Close` and `Open`
/// connect again, and the features of before can be used again.
///
/// This interface is for features. It transfers no images and delivers no events; ranges, increments and units are
/// asked for with the functions of `Extensions.h`.
class KOLTACPP_EXPORT Camera : public FeatureContainer
{
public:
    /// For the library: takes over \a impl.
    explicit Camera(Impl* impl);

    /// Closes the camera if it is open.
    ~Camera() override;

    /// The camera's human-readable name, usually its model. Read like `Feature::GetName`.
    KltErrorType GetName(char* name, unsigned int& length) const;

    /// Identifies the camera; never empty. Read like `Feature::GetName`.
    KltErrorType GetSerialNumber(char* serialNumber, unsigned int& length) const;

    /// Opens the camera and reads its description, which may take up to ten seconds.
    /// \return
    ///  - `KltErrorBadParameter`: an access mode that is not `KltAccessModeFull`
    ///  - `KltErrorInvalidAccess`: it is open already, even if it has been lost; another program uses it; or, on USB,
    ///    you may not
    ///  - `KltErrorNotFound`: it is gone; a simulated camera: its file was removed or replaced
    ///  - `KltErrorTimeout`: it does not answer, or other threads kept it busy
    ///  - `KltErrorOther`: its description cannot be used; the reason is reported on standard error
    ///  - in a network and on USB also what `KltErrorCode` names for a connection that fails
    virtual KltErrorType Open(KltAccessModeType accessMode);

    /// Closes the camera. Its features can still be asked for name, category, type, flags and entries. Waits for the
    /// calls of other threads.
    /// \return `KltErrorDeviceNotOpen` when it is closed already, `KltErrorTimeout` when other threads kept it busy
    virtual KltErrorType Close();
};

/// Handle to a camera.
typedef shared_ptr<Camera> CameraPtr;
/// Several of them.
typedef std::vector<CameraPtr> CameraPtrVector;

} // namespace KltAPI
} // namespace OPX

#endif
