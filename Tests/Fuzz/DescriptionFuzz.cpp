// Whatever stands in a description, it is refused or read: nothing crashes, hangs or eats the memory.

#include "Description/CheckedDescription.h"
#include "Session/Session.h"
#include "Transport/MemoryDevice.h"

#include <cstddef>
#include <cstdint>
#include <string>

using namespace OPX::KltAPI;

namespace
{

void IgnoreLog(const gchar*, GLogLevelFlags, const gchar*, gpointer)
{
}

template <class Value>
void Read(const FeaturePtr& feature)
{
    Value value{};
    if (feature->GetValue(value) == KltErrorSuccess)
        feature->SetValue(value);
}

void ReadText(const FeaturePtr& feature)
{
    std::string text;
    if (feature->GetValue(text) == KltErrorSuccess)
        feature->SetValue(text.c_str());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    g_log_set_default_handler(IgnoreLog, nullptr);
    const CheckedDescription description =
        CheckDescription(std::string(reinterpret_cast<const char*>(data), size), "Fuzz");
    if (!description.problem.empty())
        return 0;
    const auto session = std::make_shared<Session>(
        [&description](Connection& connection)
        {
            connection.device = NewMemoryDevice();
            connection.description.reset(
                arv_gc_new(connection.device.get(), description.xml.data(), description.xml.size()));
            return connection.description ? KltErrorSuccess : KltErrorOther;
        });
    FeaturePtrVector features;
    if (session->Open() == KltErrorSuccess && session->GetFeatures(features) == KltErrorSuccess)
        for (const FeaturePtr& feature : features)
        {
            Read<KltInt64_t>(feature);
            Read<double>(feature);
            Read<bool>(feature);
            Read<UcharVector>(feature);
            ReadText(feature);
            feature->RunCommand();
        }
    session->Close();
    return 0;
}
