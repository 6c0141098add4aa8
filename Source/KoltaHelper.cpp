#include "KoltaHelper.h"

#include "ErrorTexts.h"

namespace
{

/// Indexed by the value of the type.
const char* const DataTypeNames[] = {
    "KltFeatureDataUnknown",
    "KltFeatureDataInt",
    "KltFeatureDataFloat",
    "KltFeatureDataEnum",
    "KltFeatureDataString",
    "KltFeatureDataBool",
    "KltFeatureDataCommand",
    "KltFeatureDataRaw",
    "KltFeatureDataNone",
};

QString Known(const char* text)
{
    return QString::fromLatin1(text == nullptr ? "<unknown>" : text);
}

} // namespace

QString KoltaHelper::ReturnCodeToString(int code)
{
    return Known(OPX::KltAPI::TextOfCode(code));
}

QString KoltaHelper::DataTypeToString(KltFeatureDataType dataType)
{
    return Known(dataType < sizeof DataTypeNames / sizeof DataTypeNames[0] ? DataTypeNames[dataType] : nullptr);
}
