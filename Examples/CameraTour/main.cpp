// A walk through one camera with its generated class: the first camera that the SDK finds.

#include "KoltaMonoCamera.h"

#include <KoltaCPP/KoltaCPP.h>

#include <chrono>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

using namespace OPX::KltAPI;

/// Cameras in a network take a second or two to be found.
static CameraPtr FirstCamera()
{
    unsigned int count = 0;
    for (int i = 0; i < 30 && KoltaSystem::GetInstance().GetCameras(nullptr, count) == KltErrorSuccess && count == 0;
         ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    std::vector<CameraPtr> cameras(count + 1);
    KoltaSystem::GetInstance().GetCameras(&cameras[0], count);
    return cameras[0];
}

static bool Tour(const CameraPtr& opened)
{
    KoltaMonoCamera camera(opened);
    std::string model;
    KltInt64_t width = 0;
    double exposureTime = 0;
    if (camera.GetDeviceModelName(model) != KltErrorSuccess || camera.GetWidth(width) != KltErrorSuccess ||
        camera.GetExposureTime(exposureTime) != KltErrorSuccess)
        return false;
    std::cout << model << ": " << width << " pixels wide, exposed for " << exposureTime << " us\n";

    PixelFormatEnum format = PixelFormat_Mono8;
    if (camera.SetWidth(width / 2) != KltErrorSuccess || camera.SetPixelFormat(PixelFormat_Mono12) != KltErrorSuccess ||
        camera.AcquisitionStart() != KltErrorSuccess || camera.GetWidth(width) != KltErrorSuccess ||
        camera.GetPixelFormat(format) != KltErrorSuccess)
        return false;
    std::cout << "Now " << width << " pixels wide, format " << (format == PixelFormat_Mono12 ? "Mono12" : "other")
              << ", acquiring\n";
    return camera.AcquisitionStop() == KltErrorSuccess;
}

int main()
{
    if (KoltaSystem::GetInstance().Startup() != KltErrorSuccess)
        return 1;
    const CameraPtr camera = FirstCamera();
    const bool opened = camera.get() != nullptr && camera->Open(KltAccessModeFull) == KltErrorSuccess;
    const bool done = opened && Tour(camera);
    if (opened)
        camera->Close();
    KoltaSystem::GetInstance().Shutdown();
    return done ? 0 : 1;
}
