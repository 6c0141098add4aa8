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
    /// and asks the camera for that: it may take up to ten seconds. Calls after it answer at once.
    /// \param features room for \a count handles. With a null pointer, which is also what `data()` of an empty vector
    ///     is, the call only stores how many there are.
    /// \param count the length of \a features; afterwards the number of features
    /// \return `KltErrorDeviceNotOpen` for a closed camera, `KltErrorMoreData` when \a count is too small,
    ///     `KltErrorTimeout` when the camera did not answer in time
    KltErrorType GetFeatures(FeaturePtr* features, unsigned int& count);

    /// The feature of this name. Its first call blocks as that of `GetFeatures` does. \a feature is unchanged after an
    /// error.
    /// \return `KltErrorNotFound` when there is no such feature, `KltErrorDeviceNotOpen` for a closed camera,
    ///     `KltErrorBadParameter` for a null pointer, `KltErrorTimeout` when the camera did not answer in time
    KltErrorType GetFeatureByName(const char* name, FeaturePtr& feature);

protected:
    /// For the library: takes over \a impl.
    explicit FeatureContainer(Impl* impl);

    Impl* m_impl; ///< The library's own.
};

/// One camera.
///
/// Calls may come from any thread; a call that talks to the camera waits for those before it. None takes longer than
/// ten seconds: it gives `KltErrorTimeout` then. The camera is destroyed, and closed, with its last handle; its
/// features may live longer.
///
/// This interface is for features. It transfers no images and delivers no events; ranges, increments and units are in
/// `GetDescription` only.
class KOLTACPP_EXPORT Camera : public FeatureContainer
{
public:
    /// Makes a camera that is simulated from a description file.
    ///
    /// The SDK need not be started, KOLTA_TRANSPORTS does not matter, and the camera is in no list. The file is read
    /// and checked in this call; what is wrong with it is written to the standard error output. The camera's name is
    /// the model's name, its serial number the name of the file without the extension, its address \a path.
    /// \param path an .xml or .zip file; any characters
    /// \param camera is unchanged after an error
    /// \return `KltErrorNotFound` when the file cannot be used, `KltErrorBadParameter` for a null pointer
    static KltErrorType FromDescription(const char* path, shared_ptr<Camera>& camera);

    /// For the library: takes over \a impl.
    explicit Camera(Impl* impl);

    /// Closes the camera if it is open.
    ~Camera() override;

    /// The camera's name for people, usually its model; read like `Feature::GetName`.
    KltErrorType GetName(char* name, unsigned int& length) const;

    /// What tells this camera from all others; never empty. Read like `Feature::GetName`.
    KltErrorType GetSerialNumber(char* serialNumber, unsigned int& length) const;

    /// How the camera is reached: "simulated", "gige" or "usb3". Read like `Feature::GetName`.
    KltErrorType GetTransport(char* transport, unsigned int& length) const;

    /// Where the camera is: an address in the network or on the bus, or the description file of a simulated one. Read
    /// like `Feature::GetName`.
    KltErrorType GetAddress(char* address, unsigned int& length) const;

    /// The camera's own description (GenICam XML), unpacked, in the encoding that it names itself; megabytes for large
    /// cameras. Read like `Feature::GetName`; a closed camera gives `KltErrorDeviceNotOpen`.
    KltErrorType GetDescription(char* description, unsigned int& length) const;

    /// Opens the camera and reads its description, which may take up to ten seconds.
    /// \return
    ///  - `KltErrorBadParameter`: an access mode that is not `KltAccessModeFull`
    ///  - `KltErrorInvalidAccess`: it is open already or, in a network, another program controls it
    ///  - `KltErrorNotFound`: it is gone; a simulated one: its file is gone or another one now
    ///  - `KltErrorTimeout`: it does not answer, or other threads kept it busy
    ///  - `KltErrorOther`: its description cannot be used. The standard error output tells why.
    ///  - from cameras in a network and on USB also what `KltErrorCode` names for a connection that fails
    virtual KltErrorType Open(KltAccessModeType accessMode);

    /// Closes the camera. Its features keep answering for name, category, type, flags and entries. Waits for calls of
    /// other threads.
    /// \return `KltErrorDeviceNotOpen` when it is closed already, `KltErrorTimeout` when other threads kept it busy
    virtual KltErrorType Close();
};

/// Handle of a camera.
typedef shared_ptr<Camera> CameraPtr;
/// Several of them.
typedef std::vector<CameraPtr> CameraPtrVector;

} // namespace KltAPI
} // namespace OPX

#endif
