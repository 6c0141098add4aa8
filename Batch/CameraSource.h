#ifndef CAMERASOURCE_H
#define CAMERASOURCE_H

#include "FeatureInfos.h"

#include <KoltaCPP/Camera.h>

#include <map>
#include <string>
#include <vector>

/// Which camera a command is about: one that is there, or one that is simulated from its description.
struct CameraChoice
{
    std::string serialNumber;
    std::string descriptionFile; ///< Goes before the serial number.

    /// A text that is either: the path of a file that exists, or a serial number.
    static CameraChoice FromText(const std::string& text);
};

/// The SDK, for as long as a command runs.
class SdkSession
{
public:
    /// Throws CommandError if the SDK cannot be started.
    SdkSession();

    /// Starts the SDK so that the camera of this choice will be found.
    explicit SdkSession(const CameraChoice& choice);

    /// Also undoes what the choice of a camera changed for the SDK.
    ~SdkSession();

    SdkSession(const SdkSession&) = delete;
    SdkSession& operator=(const SdkSession&) = delete;

    /// All cameras, in the SDK's order. Waits for those that take a moment to answer.
    std::vector<OPX::KltAPI::CameraPtr> AllCameras() const;

    /// Throws CommandError if the camera is not there.
    OPX::KltAPI::CameraPtr Find(const CameraChoice& choice) const;

private:
    void Start();
    void Restore();
    std::vector<OPX::KltAPI::CameraPtr> Cameras() const;

    std::map<std::string, std::string> m_environment; ///< As it was before.
};

/// A text of a camera, for example `TextOf(camera, &Camera::GetName)`; empty if it cannot be read.
std::string TextOf(
    const OPX::KltAPI::Camera& camera, KltErrorType (OPX::KltAPI::Camera::*getter)(char*, unsigned int&) const);

/// The features of a camera, and its name.
struct ReadCamera
{
    std::string name;
    FeatureInfos features;
};

/// Finds the camera, opens it, reads its features and closes it again. Throws CommandError if that fails.
ReadCamera Read(const CameraChoice& choice);

/// The same for the camera's own description, as XML.
std::string ReadDescriptionOf(const CameraChoice& choice);

#endif
