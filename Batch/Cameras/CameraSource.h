#ifndef CAMERASOURCE_H
#define CAMERASOURCE_H

#include "Base/CameraChoice.h"
#include "Document/Document.h"
#include "FeatureInfos.h"

#include <KoltaCPP/Camera.h>

#include <memory>
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

/// A camera that was read.
struct CameraFeatures
{
    std::string label; ///< What the user called it.
    std::string name;
    std::vector<FeatureInfo> features;
    std::shared_ptr<const OPX::KltAPI::DescriptionElement>
        description; ///< Never null; without children if there is none.
};

/// Finds the cameras, opens them and reads their features; those of files at the same time, on threads of their own.
/// Cameras of files stay open until the program ends, the others are closed. Throws CommandError if that fails.
std::vector<CameraFeatures> ReadFeatures(const std::vector<CameraChoice>& choices);

/// The same for one camera's own description, as XML.
std::string ReadDescription(const CameraChoice& choice);

/// What is in a camera's description.
struct CameraNodes
{
    OPX::KltAPI::DescriptionElement root; ///< Lines are those of the file, if it comes from one.
    bool hasFeatures = false;
};

/// The same for the camera's nodes.
CameraNodes ReadNodes(const CameraChoice& choice);

#endif
