#include "EveryType.h"

#include "UseCamera.h"

USE_CAMERA(KoltaCameras::EveryType)
{
    KltInt64_t integer = 0;
    camera.SetAnInteger(5);
    camera.GetAnInteger(integer);
    CHECK(integer == 5);
    try
    {
        camera.SetAFloat(11);
    }
    catch (const KoltaCameras::CameraError& error)
    {
        return error.Code() == KltErrorInvalidValue;
    }
    return false;
}
