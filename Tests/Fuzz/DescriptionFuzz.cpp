// Whatever a description contains, it is refused or read: nothing crashes, hangs or eats up the memory.

#include "Camera/Session.h"
#include "Safety/SafeDescription.h"
#include "Transport/RegisterDevice.h"
#include "Transport/SparseMemory.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

using namespace OPX::KltAPI;

namespace
{

void IgnoreLog(const gchar*, GLogLevelFlags, const gchar*, gpointer)
{
}

/// Reads the feature, and writes what was read and the limits of the type.
template <class Value>
void Use(const FeaturePtr& feature, std::initializer_list<Value> others)
{
    Value value{};
    if (feature->GetValue(value) == KltErrorSuccess)
        feature->SetValue(value);
    for (const Value& other : others)
        feature->SetValue(other);
}

void UseText(const FeaturePtr& feature)
{
    std::string text;
    if (feature->GetValue(text) == KltErrorSuccess)
        feature->SetValue(text.c_str());
    feature->SetValue("text");
}

void UseEntries(const FeaturePtr& feature)
{
    unsigned int count = 0;
    if (feature->GetEntries(nullptr, count) != KltErrorSuccess)
        return;
    EnumEntryVector entries(count);
    feature->GetEntries(entries.data(), count);
    for (const EnumEntry& entry : entries)
    {
        KltInt64_t value = 0;
        entry.GetValue(value);
        feature->SetValue(value);
    }
}

/// What is written to one feature changes what the next one finds: all of them twice.
void UseAll(const FeaturePtrVector& features)
{
    for (int round = 0; round < 2; ++round)
        for (const FeaturePtr& feature : features)
        {
            Use<KltInt64_t>(feature, {-1, 0, INT64_MIN, INT64_MAX});
            Use<double>(feature, {-1.5, 1e300});
            Use<bool>(feature, {true});
            Use<UcharVector>(feature, {});
            UseText(feature);
            UseEntries(feature);
            feature->RunCommand();
        }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    g_log_set_default_handler(IgnoreLog, nullptr);
    const auto description = std::make_shared<const SafeDescription>(
        CheckDescription(std::string(reinterpret_cast<const char*>(data), size), "Fuzz"));
    if (description->problem)
        return 0;
    const auto session = std::make_shared<Session>(
        [&description](Connection& connection)
        {
            auto memory = std::make_unique<SparseMemory>();
            connection.takeUnknown = [known = memory.get()] { return known->TakeUnknown(); };
            connection.device = NewRegisterDevice(std::move(memory), DeviceKind::Plain);
            return connection.Use(description);
        },
        "Fuzz");
    FeaturePtrVector features;
    if (session->Open() == KltErrorSuccess && session->GetFeatures(features) == KltErrorSuccess)
        UseAll(features);
    session->Close();
    return 0;
}
