#include "NegativeAndLargeEnumerators.h"

#include "UseCamera.h"

USE_CAMERA(NegativeAndLargeEnumerators)
{
    WideEnum value = Wide_Zero;
    CHECK(camera.SetWide(Wide_Largest) == 0 && camera.GetWide(value) == 0 && value == Wide_Largest);
    CHECK(camera.SetWide(Wide_Negative) == 0 && camera.GetWide(value) == 0 && value == Wide_Negative);
    CHECK(camera.SetWide(Wide_AboveInt) == 0 && camera.GetWide(value) == 0 && value == 2147483648ll);
    return true;
}
