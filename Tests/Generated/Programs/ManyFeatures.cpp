#include "ManyFeatures.h"

#include "UseCamera.h"

USE_CAMERA(ManyFeatures)
{
    KltInt64_t first = 0;
    KltInt64_t last = 0;
    CHECK(camera.GetF0(first) == 0 && first == 0 && camera.GetF19(last) == 0 && last == 19);
    CHECK(camera.GetG15(last) == 0 && last == 115);
    return true;
}
