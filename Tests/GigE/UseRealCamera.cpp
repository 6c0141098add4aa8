// Uses the class of the fake camera; the SDK needs a moment to find it.

#include "RealCamera.h"

#include <chrono>
#include <iostream>
#include <thread>

int main()
{
    OPX::KltAPI::KoltaSystem& system = OPX::KltAPI::KoltaSystem::GetInstance();
    if (system.Startup() != KltErrorSuccess)
        return 1;
    OPX::KltAPI::CameraPtr camera;
    unsigned int count = 1;
    for (int i = 0; i < 500 && camera.get() == NULL; ++i, count = 1)
        if (system.GetCameras(&camera, count) != KltErrorSuccess || camera.get() == NULL)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (camera.get() == NULL || camera->Open(KltAccessModeFull) != KltErrorSuccess)
        return 2;
    RealCamera real(camera);
    KltInt64_t height = 0;
    const bool works = real.SetHeight(64) == KltErrorSuccess && real.GetHeight(height) == KltErrorSuccess &&
                       height == 64 && real.AcquisitionStart() == KltErrorSuccess &&
                       real.AcquisitionStop() == KltErrorSuccess;
    camera->Close();
    system.Shutdown();
    std::cout << "Height " << height << "\n";
    return works ? 0 : 3;
}
