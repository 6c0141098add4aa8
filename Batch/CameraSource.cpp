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

const char TransportsVariable[] = "KOLTA_TRANSPORTS";
const char PathVariable[] = "KOLTA_CAMERA_PATH";

std::string Reason(int code)
{
    return KoltaHelper::ReturnCodeToString(code).toStdString();
}

/// The serial number that the SDK gives the camera it simulates from this file.
std::string SerialNumberFor(const std::string& file)
{
    return fs::path(file).stem().string();
}

bool OnlySimulated()
{
    const char* transports = std::getenv(TransportsVariable);
    return transports != nullptr && std::string(transports) == "simulated";
}

/// Calls \a use with the camera, which is open then. What it returns is an error code.
template <class Use>
void WithOpenCamera(const CameraChoice& choice, Use use)
{
    const SdkSession session(choice);
    const CameraPtr camera = session.Find(choice);
    const std::string name = TextOf(*camera, &Camera::GetName);
    const int opened = camera->Open(KltAccessModeFull);
    if (opened != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to open camera '" + name + "': " + Reason(opened));
    const int used = use(camera);
    camera->Close();
    if (used != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to read camera '" + name + "': " + Reason(used));
}

void CheckFile(const std::string& file)
{
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        throw CommandError(ExitCamera, "There is no description file '" + file + "'. Check the path.");
    if (file.find(':') != std::string::npos)
        throw CommandError(ExitCamera, "The path '" + file + "' holds a colon. Copy the file to a path without one.");
}

} // namespace

CameraChoice CameraChoice::FromText(const std::string& text)
{
    CameraChoice choice;
    std::error_code error;
    if (fs::exists(text, error))
        choice.descriptionFile = text;
    else
        choice.serialNumber = text;
    return choice;
}

SdkSession::SdkSession()
{
    Start();
}

SdkSession::SdkSession(const CameraChoice& choice)
{
    if (!choice.descriptionFile.empty())
    {
        CheckFile(choice.descriptionFile);
        for (const char* variable : {TransportsVariable, PathVariable})
            if (const char* value = std::getenv(variable))
                m_environment[variable] = value;
        setenv(TransportsVariable, "simulated", 1);
        setenv(PathVariable, choice.descriptionFile.c_str(), 1);
        try
        {
            Start();
        }
        catch (...)
        {
            Restore();
            throw;
        }
        Restore();
        return;
    }
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
        throw CommandError(ExitCamera, "Cannot start Kolta: " + Reason(result) + " Check KOLTA_TRANSPORTS.");
}

void SdkSession::Restore()
{
    // The SDK looks at them when it is started.
    for (const char* variable : {TransportsVariable, PathVariable})
    {
        const auto before = m_environment.find(variable);
        if (before == m_environment.end())
            unsetenv(variable);
        else
            setenv(variable, before->second.c_str(), 1);
    }
}

std::vector<CameraPtr> SdkSession::Cameras() const
{
    std::vector<CameraPtr> cameras;
    const KltErrorType result = ReadList(KoltaSystem::GetInstance(), &KoltaSystem::GetCameras, cameras);
    if (result != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to get camera list: " + Reason(result));
    return cameras;
}

std::vector<CameraPtr> SdkSession::AllCameras() const
{
    if (!OnlySimulated())
        std::this_thread::sleep_for(TimeToAppear);
    return Cameras();
}

CameraPtr SdkSession::Find(const CameraChoice& choice) const
{
    const bool simulated = !choice.descriptionFile.empty();
    const std::string serialNumber = simulated ? SerialNumberFor(choice.descriptionFile) : choice.serialNumber;
    const auto end = std::chrono::steady_clock::now() + TimeToAppear;
    do
    {
        for (const CameraPtr& camera : Cameras())
            if (TextOf(*camera, &Camera::GetSerialNumber) == serialNumber)
                return camera;
        if (simulated)
            throw CommandError(ExitCamera, "The description '" + choice.descriptionFile + "' cannot be used.");
        if (OnlySimulated())
            break;
        std::this_thread::sleep_for(TimeBetweenLooks);
    } while (std::chrono::steady_clock::now() < end);
    throw CommandError(
        ExitCamera, "There is no camera with the serial number '" + serialNumber + "'. See 'kolta-classgen list'.");
}

std::string TextOf(const Camera& camera, KltErrorType (Camera::*getter)(char*, unsigned int&) const)
{
    std::string text;
    ReadString(camera, getter, text);
    return text;
}

ReadCamera Read(const CameraChoice& choice)
{
    ReadCamera read;
    WithOpenCamera(choice,
        [&read](const CameraPtr& camera)
        {
            read.name = TextOf(*camera, &Camera::GetName);
            return read.features.Create(camera);
        });
    return read;
}

std::string ReadDescriptionOf(const CameraChoice& choice)
{
    std::string description;
    WithOpenCamera(choice, [&description](const CameraPtr& camera)
        { return ReadString(*camera, &Camera::GetDescription, description) ? KltErrorSuccess : KltErrorOther; });
    return description;
}
