#include "KoltaHelper.h"

namespace
{

const int LowestCode = -19;

/// Indexed by code - LowestCode.
const char* const CodeTexts[] = {
    "A multiple registers reads or writes was partially completed.",
    "API feature is not supported.",
    "API feature is not implemented.",
    "No transport layers were found.",
    "Call is invalid in the current context (e.g callback).",
    "Resources not available (e.g memory).",
    "Other error.",
    "Timeout during wait.",
    "The value was not valid; either out of bounds or not an increment of the minimum.",
    "The feature type for this access function was wrong.",
    "More data was returned in a string/list than space was provided.",
    "The given struct size is not valid for this version of the API.",
    "One of the parameters was invalid (usually an illegal pointer).",
    "Operation is invalid with the current access mode.",
    "Device was not opened for usage.",
    "The given handle is not valid.",
    "The designated instance (camera, feature etc.) cannot be found.",
    "KltStartup was not called before the current command.",
    "Unexpected fault in KltApi or driver.",
    "No error.",
};

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

template <unsigned int Size>
QString TextAt(const char* const (&texts)[Size], unsigned int index)
{
    return QString::fromLatin1(index < Size ? texts[index] : "<unknown>");
}

} // namespace

QString KoltaHelper::ReturnCodeToString(int code)
{
    // Subtracted as unsigned numbers, so that no code overflows.
    return TextAt(CodeTexts, static_cast<unsigned int>(code) - static_cast<unsigned int>(LowestCode));
}

QString KoltaHelper::DataTypeToString(KltFeatureDataType dataType)
{
    return TextAt(DataTypeNames, dataType);
}
