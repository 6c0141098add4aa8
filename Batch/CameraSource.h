#ifndef CAMERASOURCE_H
#define CAMERASOURCE_H

#include "FeatureInfos.h"

#include <KoltaCPP/Camera.h>

#include <string>
#include <vector>

/// Which camera a command is about: one that is there, or one that is simulated from its description.
struct CameraChoice
{
    std::string serialNumber;
    std::string descriptionFile; ///< Goes before the serial number.
};

/// The SDK, for as long as a command runs.
class SdkSession
{
public:
    /// Throws CommandError if the SDK cannot be started.
    SdkSession();

    /// Starts the SDK so that the camera of this choice will be found.
    explicit SdkSession(const CameraChoice& choice);
    ~SdkSession();

    SdkSession(const SdkSession&) = delete;
    SdkSession& operator=(const SdkSession&) = delete;

    /// All cameras, in the SDK's order.
    std::vector<OPX::KltAPI::CameraPtr> Cameras() const;

    /// Throws CommandError if the camera is not there.
    OPX::KltAPI::CameraPtr Find(const CameraChoice& choice) const;

private:
    void Start();
};

/// Name and serial number of a camera.
std::string NameOf(const OPX::KltAPI::Camera& camera);
std::string SerialNumberOf(const OPX::KltAPI::Camera& camera);

/// Opens the camera, reads its features and closes it. Throws CommandError if that fails.
void ReadCatalogue(const OPX::KltAPI::CameraPtr& camera, FeatureInfos& features);

#endif
