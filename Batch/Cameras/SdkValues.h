#ifndef SDKVALUES_H
#define SDKVALUES_H

/// \file
/// What the SDK says of a feature, as values.

#include "KoltaHelper.h"

#include <KoltaCPP/Feature.h>

#include <string>

inline KltFeatureFlagsType FlagsOf(const OPX::KltAPI::Feature& feature)
{
    KltFeatureFlagsType flags = KltFeatureFlagsNone;
    feature.GetFlags(flags);
    return flags;
}

inline bool IsReadable(const OPX::KltAPI::Feature& feature)
{
    return (FlagsOf(feature) & KltFeatureFlagsRead) != 0;
}

inline bool IsWritable(const OPX::KltAPI::Feature& feature)
{
    return (FlagsOf(feature) & KltFeatureFlagsWrite) != 0;
}

inline KltInt64_t ValueOf(const OPX::KltAPI::EnumEntry& entry)
{
    KltInt64_t value = 0;
    entry.GetValue(value);
    return value;
}

/// A data type as users see it: "Int", "Float", ...
inline std::string TypeName(KltFeatureDataType dataType)
{
    static const std::string Prefix = "KltFeatureData";
    const std::string name = KoltaHelper::DataTypeToString(dataType).toStdString();
    return name.compare(0, Prefix.size(), Prefix) == 0 ? name.substr(Prefix.size()) : name;
}

#endif
