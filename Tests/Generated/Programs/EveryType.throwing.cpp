#include "EveryType.h"

#include "UseCamera.h"

#include <string>

/// What is thrown by a call of a method.
template <class Call>
static std::string Thrown(int code, Call call)
{
    try
    {
        call();
    }
    catch (const KoltaCameras::CameraError& error)
    {
        return error.Code() == code ? error.what() : "another code";
    }
    return "nothing";
}

USE_CAMERA(KoltaCameras::EveryType)
{
    KltInt64_t integer = 0;
    OPX::KltAPI::FeaturePtr feature;
    camera.SetAnInteger(5);
    camera.GetAnInteger(integer);
    CHECK(integer == 5);
    CHECK(Thrown(-11, [&] { camera.SetAFloat(11); }) == "SetAFloat: The value is out of bounds (-11)");
    CHECK(Thrown(-3, [&] { camera.GetFeatureByName("None", feature); }) ==
          "GetFeatureByName (None): There is no such camera or feature (-3)");
    CHECK(Thrown(-4, [&] { Camera(OPX::KltAPI::CameraPtr()).ACommand(); }) ==
          "GetFeatureByName: The handle is empty (-4)");
    return true;
}
