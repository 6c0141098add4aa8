#ifndef PRESENTSTATE_H
#define PRESENTSTATE_H

#include "Document/Limits.h"
#include "FeatureInfos.h"

#include <string>
#include <vector>

/// What a camera says of a feature at this moment.
struct PresentState
{
    std::vector<OPX::KltAPI::Limit> limits; ///< Those of SdkExtensions.
    std::string value;                      ///< Printable; empty if there is none, or nobody asked.
    std::string error;                      ///< Why there is no value, as a sentence.
};

/// Asks a feature of an open camera.
PresentState AskPresent(const FeatureInfo& feature, bool withValue);

#endif
