#ifndef RANGEPROPERTY_H
#define RANGEPROPERTY_H

#include "SdkReads.h"

#include <KoltaCPP/Extensions.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

/// Sets a feature to random numbers of its present range, to its ends, and tries what is one step beyond.
/// \return how many values were tried
template <class Number>
int CheckRange(OPX::KltAPI::Feature& feature, const std::string& name, std::mt19937& random)
{
    Number minimum = 0;
    Number maximum = 0;
    Number increment = 0;
    KltFeatureFlagsType flags = KltFeatureFlagsNone;
    if (GetAccessNow(feature, flags) != 0 || (flags & KltFeatureFlagsWrite) == 0 ||
        GetRange(feature, minimum, maximum, increment) != 0 || minimum > maximum)
        return 0;
    const auto steps = std::min(1e6, (double(maximum) - double(minimum)) / (increment > 0 ? double(increment) : 1.0));
    const Number step = increment > 0 ? increment : Number(1);
    const Number within = minimum + step * Number(std::uniform_int_distribution<long>(0, long(steps))(random));
    const double largest = std::is_same<Number, double>::value ? 1e300 : 9.2e18; // No limit at all.
    int tried = 0;
    for (const Number value : {minimum, maximum, within})
        if (std::fabs(double(value)) < largest)
        {
            ++tried;
            EXPECT_EQ(feature.SetValue(value), 0) << name << " = " << value << " of " << minimum << " to " << maximum;
        }
    // What was set can be what limits it.
    if (GetRange(feature, minimum, maximum, increment) != 0)
        return tried;
    for (const Number value : {minimum, maximum})
        if (std::fabs(double(value)) < largest)
        {
            ++tried;
            const Number far = std::max(step, Number(std::fabs(double(value)) * 1e-6));
            const Number beyond = value == minimum ? minimum - far : maximum + far;
            EXPECT_EQ(feature.SetValue(beyond), KltErrorInvalidValue) << name << " = " << beyond;
            if (minimum == maximum)
                break;
        }
    return tried;
}

/// The same for all numbers of a camera, several times, since they limit each other.
inline int CheckRanges(const OPX::KltAPI::FeaturePtrVector& features, const std::string& camera)
{
    std::mt19937 random(1);
    int tried = 0;
    for (int round = 0; round < 5; ++round)
        for (const OPX::KltAPI::FeaturePtr& feature : features)
        {
            std::string name;
            unsigned int listed = 0;
            KltFeatureDataType type = KltFeatureDataUnknown;
            feature->GetDataType(type);
            ReadString(*feature, &OPX::KltAPI::Feature::GetName, name);
            if (name == "Doubled") // Its formula hides the steps that the number behind it has.
                continue;
            if (type == KltFeatureDataInt && feature->GetEntries(nullptr, listed) != 0)
                tried += CheckRange<KltInt64_t>(*feature, camera + " " + name, random);
            else if (type == KltFeatureDataFloat)
                tried += CheckRange<double>(*feature, camera + " " + name, random);
        }
    return tried;
}

#endif
