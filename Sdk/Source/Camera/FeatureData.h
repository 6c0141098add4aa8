#ifndef FEATUREDATA_H
#define FEATUREDATA_H

#include "KoltaCPP/EnumEntry.h"
#include "KoltaCPP/KoltaTypes.h"

#include <string>
#include <vector>

namespace OPX::KltAPI
{

/// What is known of a feature without asking the camera. Copied when the features are listed, so that it outlives the
/// connection.
struct FeatureData
{
    std::string name;     ///< As users see it: without control characters.
    std::string nodeName; ///< In the camera's description.
    std::string category;
    KltFeatureDataType dataType = KltFeatureDataUnknown;
    KltFeatureFlagsType flags = KltFeatureFlagsNone;
    std::vector<EnumEntry> entries;
    bool isDelivered = false; ///< Its value comes with images or events, if at all.
};

} // namespace OPX::KltAPI

#endif
