#include "OddNames.h"

#include "UseCamera.h"

USE_CAMERA(OddNames)
{
    KltInt64_t value = 0;
    CHECK(camera.Get_fine_(value) == 0 && value == 5);
    // The camera knows these features under their own names only.
    CHECK(camera.GetWith_Blank(value) == KltErrorNotFound && camera.GetI2ndFeature(value) == KltErrorNotFound);
    CHECK(camera.SetWith_Hyphen(Camera::With_Hyphen_3rd) == KltErrorNotFound);
    return true;
}
