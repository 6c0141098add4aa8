#include "CameraSource.h"

#include "ExitCodes.h"
#include "KoltaHelper.h"
#include "SdkReads.h"

#include <KoltaCPP/KoltaSystem.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

using namespace OPX::KltAPI;
namespace fs = std::filesystem;

namespace
{

/// Cameras in a network take a second to answer; the first answer can get lost.
const std::chrono::milliseconds TimeToAppear(4000);
const std::chrono::milliseconds TimeBetweenLooks(50);

std::string TextOf(int code)
{
    return KoltaHelper::ReturnCodeToString(code).toStdString();
}

/// Has the SDK simulate this file, and look for no other cameras.
void Simulate(const std::string& file)
{
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        throw CommandError(ExitCamera, "There is no description file '" + file + "'. Check the path.");
    if (file.find(':') != std::string::npos)
        throw CommandError(ExitCamera, "The path '" + file + "' holds a colon. Copy the file to a path without one.");
    setenv("KOLTA_TRANSPORTS", "simulated", 1);
    setenv("KOLTA_CAMERA_PATH", file.c_str(), 1);
}

/// The serial number that the SDK gives the camera it simulates from this file.
std::string SerialNumberFor(const std::string& file)
{
    return fs::path(file).stem().string();
}

} // namespace

SdkSession::SdkSession()
{
    Start();
}

SdkSession::SdkSession(const CameraChoice& choice)
{
    if (!choice.descriptionFile.empty())
        Simulate(choice.descriptionFile);
    Start();
}

SdkSession::~SdkSession()
{
    KoltaSystem::GetInstance().Shutdown();
}

void SdkSession::Start()
{
    const KltErrorType result = KoltaSystem::GetInstance().Startup();
    if (result != KltErrorSuccess)
        throw CommandError(ExitCamera, "Cannot start Kolta: " + TextOf(result) + " Check KOLTA_TRANSPORTS.");
}

std::vector<CameraPtr> SdkSession::Cameras() const
{
    std::vector<CameraPtr> cameras;
    const KltErrorType result = ReadList(KoltaSystem::GetInstance(), &KoltaSystem::GetCameras, cameras);
    if (result != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to get camera list: " + TextOf(result));
    return cameras;
}

CameraPtr SdkSession::Find(const CameraChoice& choice) const
{
    const bool simulated = !choice.descriptionFile.empty();
    const std::string serialNumber = simulated ? SerialNumberFor(choice.descriptionFile) : choice.serialNumber;
    const auto end = std::chrono::steady_clock::now() + TimeToAppear;
    do
    {
        for (const CameraPtr& camera : Cameras())
            if (SerialNumberOf(*camera) == serialNumber)
                return camera;
        if (simulated)
            throw CommandError(ExitCamera, "The description '" + choice.descriptionFile + "' cannot be used.");
        std::this_thread::sleep_for(TimeBetweenLooks);
    } while (std::chrono::steady_clock::now() < end);
    throw CommandError(
        ExitCamera, "There is no camera with the serial number '" + serialNumber + "'. See 'kolta-classgen list'.");
}

std::string NameOf(const Camera& camera)
{
    std::string name;
    ReadString(camera, &Camera::GetName, name);
    return name;
}

std::string SerialNumberOf(const Camera& camera)
{
    std::string serialNumber;
    ReadString(camera, &Camera::GetSerialNumber, serialNumber);
    return serialNumber;
}

void ReadCatalogue(const CameraPtr& camera, FeatureInfos& features)
{
    const KltErrorType opened = camera->Open(KltAccessModeFull);
    if (opened != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to open camera '" + NameOf(*camera) + "': " + TextOf(opened));
    const int read = features.Create(camera);
    camera->Close();
    if (read != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to read the features of '" + NameOf(*camera) + "': " + TextOf(read));
}
