#ifndef SDKSESSION_H
#define SDKSESSION_H

#include <KoltaCPP/Camera.h>

#include <string>
#include <vector>

/// The SDK, for as long as a command looks for cameras.
class SdkSession
{
public:
    /// Throws CommandError if the SDK cannot be started.
    SdkSession();

    ~SdkSession();

    SdkSession(const SdkSession&) = delete;
    SdkSession& operator=(const SdkSession&) = delete;

    /// All cameras, in the SDK's order. Waits for those that take a moment to answer.
    std::vector<OPX::KltAPI::CameraPtr> AllCameras() const;

    /// Throws CommandError if the camera does not appear.
    OPX::KltAPI::CameraPtr Find(const std::string& serialNumber) const;

private:
    std::vector<OPX::KltAPI::CameraPtr> Cameras() const;
};

/// The text of one of the SDK's codes.
std::string ReasonOf(int code);

#endif
