#include "NestedCategories.h"

#include "UseCamera.h"

USE_CAMERA(NestedCategories)
{
    KltInt64_t value = 0;
    CHECK(camera.GetTop(value) == 0 && value == 4);
    CHECK(camera.GetInX(value) == 0 && camera.GetInA(value) == 0 && camera.GetInB(value) == 0);
    return true;
}
