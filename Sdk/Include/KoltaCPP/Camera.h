#ifndef KOLTACPP_CAMERA_H
#define KOLTACPP_CAMERA_H

#include "KoltaCPP/Feature.h"
#include "KoltaCPP/KoltaTypes.h"
#include "KoltaCPP/SharedPtr.h"

#include <vector>

namespace OPX
{
namespace KltAPI
{

/// Something that has features.
class FeatureContainer
{
public:
    struct Impl;

    virtual ~FeatureContainer();

    FeatureContainer(const FeatureContainer&) = delete;
    FeatureContainer& operator=(const FeatureContainer&) = delete;

    /// All features, in the order of the camera's description. With a null array the call stores their number, with
    /// an array it expects the array's length in \a count; both see the same list. A closed camera gives -5.
    KltErrorType GetFeatures(FeaturePtr* features, unsigned int& count);

    /// The feature of this name; -3 when there is none, -5 for a closed camera. \a feature is unchanged after an error.
    KltErrorType GetFeatureByName(const char* name, FeaturePtr& feature);

protected:
    /// For the library: takes over \a impl.
    explicit FeatureContainer(Impl* impl);

    Impl* m_impl;
};

/// One camera. Calls may come from any thread; a call that talks to the camera waits for those before it. None takes
/// longer than ten seconds: it gives -12 then.
class Camera : public FeatureContainer
{
public:
    /// Makes a camera that is simulated from a description file (.xml or .zip). The SDK need not be started,
    /// KOLTA_TRANSPORTS is not asked, and the camera stands in no list. The file is read and checked in this call; what
    /// is wrong with it is written to the standard error output. Name: the model's name; serial number: the name of the
    /// file without its ending; address: \a path, which may hold any characters. Errors: -3 the file cannot be used, -7
    /// a null pointer. \a camera is unchanged after an error.
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

    /// The camera's own description (GenICam XML), unpacked. A closed camera gives -5. Read like `Feature::GetName`.
    KltErrorType GetDescription(char* description, unsigned int& length) const;

    /// Opens the camera and reads its description. Errors: -3 it is gone, -6 another program controls it or it is
    /// open already, -7 an unknown access mode, -12 it does not answer, -13 its description cannot be used.
    virtual KltErrorType Open(KltAccessModeType accessMode);

    /// Closes the camera. Its features keep answering for name, category, type, flags and entries.
    virtual KltErrorType Close();
};

/// Handle of a camera.
typedef shared_ptr<Camera> CameraPtr;
typedef std::vector<CameraPtr> CameraPtrVector;

} // namespace KltAPI
} // namespace OPX

#endif
