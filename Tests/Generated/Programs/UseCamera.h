#ifndef USECAMERA_H
#define USECAMERA_H

#include <KoltaCPP/KoltaCPP.h>

#include <iostream>

/// What every program around a generated class does: USE_CAMERA(Class) { ... return true; } There the class is Camera.
/// The SDK is given only the camera's description, so the first camera is the one.
#define USE_CAMERA(Class)                                                                                              \
    typedef Class Camera;                                                                                              \
    static bool Use(Class& camera);                                                                                    \
    int main()                                                                                                         \
    {                                                                                                                  \
        OPX::KltAPI::CameraPtr handle = OpenFirst();                                                                   \
        Class camera(handle);                                                                                          \
        return handle.get() != NULL && Use(camera) ? 0 : 1;                                                            \
    }                                                                                                                  \
    static bool Use(Class& camera)

#define CHECK(condition)                                                                                               \
    if (!(condition))                                                                                                  \
    {                                                                                                                  \
        std::cerr << "Does not hold: " #condition "\n";                                                                \
        return false;                                                                                                  \
    }

inline OPX::KltAPI::CameraPtr OpenFirst()
{
    OPX::KltAPI::KoltaSystem& system = OPX::KltAPI::KoltaSystem::GetInstance();
    unsigned int count = 0;
    if (system.Startup() != KltErrorSuccess || system.GetCameras(NULL, count) != KltErrorSuccess || count == 0)
        return OPX::KltAPI::CameraPtr();
    OPX::KltAPI::CameraPtrVector cameras(count);
    system.GetCameras(&cameras[0], count);
    return cameras[0]->Open(KltAccessModeFull) == KltErrorSuccess ? cameras[0] : OPX::KltAPI::CameraPtr();
}

#endif
