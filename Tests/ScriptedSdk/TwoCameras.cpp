// Gives the scripted SDK cameras, where it is the library that a whole program runs with.

#include "ScriptedSdk.h"

using namespace ScriptedSdk;

namespace
{

const std::vector<CameraData>& g_cameras = TheScript().cameras = {
    {"Two Features", "Full",
        {{"Width", "/Image", KltFeatureDataInt, KltFeatureFlagsRead, {}},
            {"Mode", "/Image", KltFeatureDataEnum, KltFeatureFlagsWrite, {{"On", 1}, {"Off", 0}}}}},
    {"None", "Bare", {}}};

} // namespace
