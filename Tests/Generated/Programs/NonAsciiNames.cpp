#include "NonAsciiNames.h"

#include "UseCamera.h"

USE_CAMERA(NonAsciiNames)
{
    KltInt64_t value = 0;
    CHECK(camera.GetHöhe(value) == 0 && value == 11);
    CHECK(camera.Set写真(Camera::写真_黒) == 0);
    return true;
}
