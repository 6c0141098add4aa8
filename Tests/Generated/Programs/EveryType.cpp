#include "EveryType.h"

#include "UseCamera.h"

USE_CAMERA(EveryType)
{
    KltInt64_t integer = 0;
    double real = 0;
    Camera::AnEnumerationEnum enumeration = Camera::AnEnumeration_Off;
    std::string text;
    bool flag = false;
    OPX::KltAPI::UcharVector bytes;
    const unsigned char written[] = {1, 2, 3, 4};
    CHECK(camera.SetAnInteger(5) == 0 && camera.GetAnInteger(integer) == 0 && integer == 5);
    CHECK(camera.SetAFloat(2.5) == 0 && camera.GetAFloat(real) == 0 && real == 2.5);
    CHECK(camera.SetAFloat(11) == KltErrorInvalidValue);
    CHECK(camera.SetAnEnumeration(Camera::AnEnumeration_Continuous) == 0);
    CHECK(camera.GetAnEnumeration(enumeration) == 0 && enumeration == Camera::AnEnumeration_Continuous);
    CHECK(camera.SetAString("other") == 0 && camera.GetAString(text) == 0 && text == "other");
    CHECK(camera.SetABoolean(true) == 0 && camera.GetABoolean(flag) == 0 && flag);
    CHECK(camera.ACommand() == 0);
    CHECK(camera.SetARegister(OPX::KltAPI::UcharVector(written, written + 4)) == 0);
    CHECK(camera.GetARegister(bytes) == 0 && bytes.size() == 4 && bytes[3] == 4);
    return true;
}
