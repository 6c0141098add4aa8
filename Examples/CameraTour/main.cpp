// A tour of two cameras with their generated classes: the first one that the SDK finds and the next one, if any.

#include "KoltaColorCamera.h"
#include "KoltaMonoCamera.h"

#include <KoltaCPP/KoltaCPP.h>

#include <chrono>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

using namespace OPX::KltAPI;

/// Cameras in a network take a second or two to appear.
static std::vector<CameraPtr> AllCameras()
{
    unsigned int count = 0;
    for (int i = 0; i < 30 && KoltaSystem::GetInstance().GetCameras(nullptr, count) == KltErrorSuccess && count == 0;
         ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    std::vector<CameraPtr> cameras(count);
    if (count > 0)
        KoltaSystem::GetInstance().GetCameras(&cameras[0], count);
    return cameras;
}

/// The name of one of an enumeration feature's values.
static std::string EntryName(const FeaturePtr& feature, KltInt64_t value)
{
    unsigned int count = 0;
    feature->GetEntries(nullptr, count);
    std::vector<EnumEntry> entries(count);
    if (count > 0 && feature->GetEntries(&entries[0], count) != KltErrorSuccess)
        return std::string();
    for (const EnumEntry& entry : entries)
    {
        KltInt64_t valueOfEntry = 0;
        unsigned int length = 0;
        if (entry.GetValue(valueOfEntry) != KltErrorSuccess || valueOfEntry != value)
            continue;
        entry.GetName(nullptr, length);
        std::string name(length, '\0');
        return length > 0 && entry.GetName(&name[0], length) == KltErrorSuccess ? name : std::string();
    }
    return std::string();
}

static bool Tour(KoltaMonoCamera camera)
{
    std::string model;
    KltInt64_t width = 0;
    double exposureTime = 0;
    if (camera.GetDeviceModelName(model) != KltErrorSuccess || camera.GetWidth(width) != KltErrorSuccess ||
        camera.GetExposureTime(exposureTime) != KltErrorSuccess)
        return false;
    std::cout << model << ": " << width << " pixels wide, exposed for " << exposureTime << " us\n";

    // Every class has enumeration types of its own.
    KoltaMonoCamera::PixelFormatEnum format = KoltaMonoCamera::PixelFormat_Mono8;
    FeaturePtr formatFeature;
    if (camera.SetWidth(width / 2) != KltErrorSuccess ||
        camera.SetPixelFormat(KoltaMonoCamera::PixelFormat_Mono12) != KltErrorSuccess ||
        camera.AcquisitionStart() != KltErrorSuccess || camera.GetWidth(width) != KltErrorSuccess ||
        camera.GetPixelFormat(format) != KltErrorSuccess ||
        camera.GetPixelFormatFeature(formatFeature) != KltErrorSuccess)
        return false;
    std::cout << "Now " << width << " pixels wide, format " << EntryName(formatFeature, format) << ", acquiring\n";
    return camera.AcquisitionStop() == KltErrorSuccess;
}

static bool Tour(KoltaColorCamera camera)
{
    KoltaColorCamera::PixelFormatEnum format = KoltaColorCamera::PixelFormat_RGB8;
    if (camera.SetPixelFormat(format) != KltErrorSuccess || camera.GetPixelFormat(format) != KltErrorSuccess)
        return false;
    std::cout << "The next one sends " << (format == KoltaColorCamera::PixelFormat_RGB8 ? "RGB8" : "something else")
              << "\n";
    return true;
}

/// Opens a camera and takes the tour for its class.
template <class Class>
static bool Visit(const CameraPtr& camera)
{
    if (camera->Open(KltAccessModeFull) != KltErrorSuccess)
        return false;
    const bool done = Tour(Class(camera));
    return camera->Close() == KltErrorSuccess && done;
}

int main()
{
    if (KoltaSystem::GetInstance().Startup() != KltErrorSuccess)
        return 1;
    bool done = false;
    {
        const std::vector<CameraPtr> cameras = AllCameras();
        done = !cameras.empty() && Visit<KoltaMonoCamera>(cameras[0]) &&
               (cameras.size() < 2 || Visit<KoltaColorCamera>(cameras[1]));
    }
    KoltaSystem::GetInstance().Shutdown();
    return done ? 0 : 1;
}
