#include "ReadOnlyAndWriteOnly.h"

#include "UseCamera.h"

USE_CAMERA(ReadOnlyAndWriteOnly)
{
    KltInt64_t value = 0;
    CHECK(camera.SetBoth(3) == 0 && camera.GetBoth(value) == 0 && value == 3);
    CHECK(camera.GetRead(value) == 0 && value == 7);
    CHECK(camera.SetWrite(1) == 0 && camera.GetWrite(value) == KltErrorInvalidAccess && value == 7);
    return true;
}
