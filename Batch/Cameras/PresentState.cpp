#include "Cameras/PresentState.h"

#include "Cameras/SdkExtensions.h"
#include "Cameras/SdkSession.h"
#include "Document/Texts.h"
#include "Schema/Number.h"
#include "SdkReads.h"

#include <QByteArray>
#include <QString>

#include <algorithm>

using namespace OPX::KltAPI;

namespace
{

std::string PresentText(const FeatureInfo& /*feature*/, double value)
{
    return DecimalText(value);
}

std::string PresentText(const FeatureInfo& /*feature*/, bool value)
{
    return value ? "true" : "false";
}

std::string PresentText(const FeatureInfo& /*feature*/, const std::string& value)
{
    // What is not UTF-8 is not text.
    return WithoutControls(QString::fromStdString(value).toStdString());
}

/// The name of an entry, or a number.
std::string PresentText(const FeatureInfo& feature, KltInt64_t value)
{
    for (const EnumEntry& entry : feature.entries)
        if (ValueOf(entry) == value)
            return TextOf(entry, &EnumEntry::GetName);
    return std::to_string(value);
}

/// As in a file with values to start with. Nobody looks at thousands of bytes.
std::string PresentText(const FeatureInfo& /*feature*/, const UcharVector& value)
{
    const std::size_t most = 32;
    const QByteArray begin(reinterpret_cast<const char*>(value.data()), static_cast<int>(std::min(most, value.size())));
    const std::string text = begin.toHex(' ').toStdString();
    return text + (value.size() > most ? " ... (" + std::to_string(value.size()) + " bytes)" : "");
}

template <class Value>
void Read(const FeatureInfo& feature, PresentState& state)
{
    Value value{};
    const KltErrorType result = feature.feature->GetValue(value);
    if (result == KltErrorSuccess)
        state.value = PresentText(feature, value);
    else
        state.error = ReasonOf(result);
}

void ReadValue(const FeatureInfo& feature, PresentState& state)
{
    switch (feature.dataType)
    {
    case KltFeatureDataInt:
    case KltFeatureDataEnum:
        return Read<KltInt64_t>(feature, state);
    case KltFeatureDataFloat:
        return Read<double>(feature, state);
    case KltFeatureDataString:
        return Read<std::string>(feature, state);
    case KltFeatureDataBool:
        return Read<bool>(feature, state);
    case KltFeatureDataRaw:
        return Read<UcharVector>(feature, state);
    default: // There is none.
        return;
    }
}

} // namespace

PresentState AskPresent(const FeatureInfo& feature, bool withValue)
{
    PresentState state;
    state.limits = PresentLimits(*feature.feature);
    if (withValue && Has(*feature.feature, KltFeatureFlagsRead))
        ReadValue(feature, state);
    return state;
}
