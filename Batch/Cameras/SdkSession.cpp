#include "Cameras/SdkSession.h"

#include "Base/ExitCodes.h"
#include "KoltaHelper.h"
#include "SdkReads.h"

#include <KoltaCPP/KoltaSystem.h>

#include <chrono>
#include <cstdlib>
#include <thread>

using namespace OPX::KltAPI;

namespace
{

/// Cameras in a network take a second to answer; the first answer can get lost.
const std::chrono::milliseconds TimeToAppear(4000);
const std::chrono::milliseconds TimeBetweenLooks(50);

/// All others are found at once.
bool LooksInNetwork()
{
    const char* transports = std::getenv("KOLTA_TRANSPORTS");
    return transports == nullptr || *transports == '\0' || std::string(transports).find("gige") != std::string::npos;
}

} // namespace

std::string ReasonOf(int code)
{
    return KoltaHelper::ReturnCodeToString(code).toStdString();
}

SdkSession::SdkSession()
{
    const KltErrorType result = KoltaSystem::GetInstance().Startup();
    if (result != KltErrorSuccess)
        throw CommandError(ExitCamera, "Cannot start Kolta: " + ReasonOf(result) + " Check KOLTA_TRANSPORTS.");
}

SdkSession::~SdkSession()
{
    KoltaSystem::GetInstance().Shutdown();
}

std::vector<CameraPtr> SdkSession::Cameras() const
{
    std::vector<CameraPtr> cameras;
    const KltErrorType result = ReadList(KoltaSystem::GetInstance(), &KoltaSystem::GetCameras, cameras);
    if (result != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to get camera list: " + ReasonOf(result));
    return cameras;
}

std::vector<CameraPtr> SdkSession::AllCameras() const
{
    if (LooksInNetwork())
        std::this_thread::sleep_for(TimeToAppear);
    return Cameras();
}

CameraPtr SdkSession::Find(const std::string& serialNumber) const
{
    const auto end = std::chrono::steady_clock::now() + TimeToAppear;
    do
    {
        for (const CameraPtr& camera : Cameras())
            if (TextOf(*camera, &Camera::GetSerialNumber) == serialNumber)
                return camera;
        if (!LooksInNetwork())
            break;
        std::this_thread::sleep_for(TimeBetweenLooks);
    } while (std::chrono::steady_clock::now() < end);
    throw CommandError(
        ExitCamera, "There is no camera with the serial number '" + serialNumber + "'. See 'kolta-classgen list'.");
}
