#include "NegativeAndLargeEnumerators.h"

#include "UseCamera.h"

USE_CAMERA(NegativeAndLargeEnumerators)
{
    Camera::WideEnum value = Camera::Wide_Zero;
    CHECK(camera.SetWide(Camera::Wide_Largest) == 0 && camera.GetWide(value) == 0 && value == Camera::Wide_Largest);
    CHECK(camera.SetWide(Camera::Wide_Negative) == 0 && camera.GetWide(value) == 0 && value == Camera::Wide_Negative);
    CHECK(camera.SetWide(Camera::Wide_AboveInt) == 0 && camera.GetWide(value) == 0 && value == 2147483648ll);
    return true;
}
