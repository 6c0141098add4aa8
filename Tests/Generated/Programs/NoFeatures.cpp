#include "NoFeatures.h"

#include "UseCamera.h"

USE_CAMERA(NoFeatures)
{
    OPX::KltAPI::FeaturePtr feature;
    CHECK(camera.GetFeatureByName("Any", feature) == KltErrorNotFound);
    CHECK(NoFeatures(OPX::KltAPI::CameraPtr()).GetFeatureByName("Any", feature) == KltErrorBadHandle);
    return true;
}
