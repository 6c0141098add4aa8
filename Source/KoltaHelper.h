#ifndef KOLTAHELPER_H
#define KOLTAHELPER_H

#include <KoltaCPP/KoltaTypes.h>
#include <QString>

/// Texts for the values of the SDK.
namespace KoltaHelper
{

/// The sentence that tells a user what an SDK result code means; "<unknown>" for a code that the SDK does not have.
QString ReturnCodeToString(int code);

/// The name of a feature data type as it stands in the SDK's headers; "<unknown>" for any other value.
QString DataTypeToString(KltFeatureDataType dataType);

} // namespace KoltaHelper

#endif
