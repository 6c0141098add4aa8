#ifndef SCRIPTEDSDK_H
#define SCRIPTEDSDK_H

#include <KoltaCPP/KoltaCPP.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// An SDK whose cameras are plain data and whose calls fail when a test says so. Implements the same headers, but for
/// Extensions.h.
namespace ScriptedSdk
{

struct EntryData
{
    std::string name;
    KltInt64_t value;
};

/// A feature of this category is delivered as an empty handle.
const char EmptyHandle[] = "(empty handle)";

struct FeatureData
{
    std::string name;
    std::string category;
    KltFeatureDataType dataType;
    KltFeatureFlagsType flags;
    std::vector<EntryData> entries;
};

struct CameraData
{
    std::string name;
    std::string serialNumber;
    std::vector<FeatureData> features;
};

/// Which of the two calls of a read fails; operations with one call have only a first one.
enum Which
{
    First = 1,
    Second = 2
};

/// What the SDK does. Set it up before the calls; reset it between tests.
struct Script
{
    std::vector<CameraData> cameras;

    /// Calls that fail, for example {{"Camera::GetName", First}, -3}. With "@" and a name the call fails only for the
    /// camera or feature of this name: "Feature::GetName@Width".
    std::map<std::pair<std::string, Which>, KltErrorType> faults;

    /// Counts that the first call of a list read returns instead of the true one, by the name of the call.
    std::map<std::string, unsigned int> counts;

    /// What else happens during a call, by the name of the call: slow ones let time pass in it.
    std::map<std::string, std::function<void()>> meanwhile;

    /// How often each operation was called, both calls of a read together.
    std::map<std::string, int> calls;

    /// Open and Close in order, with the camera's name: "Open Cam".
    std::vector<std::string> sessions;

    void Fail(const std::string& call, KltErrorType code, Which which = First) { faults[{call, which}] = code; }
};

/// The script that all calls follow.
Script& TheScript();

/// Forgets script and observers.
void Reset();

/// Calls the registered observers from a thread of its own and waits until they have returned.
void Notify(UpdateTriggerType reason);

/// A camera of this data, without a listing.
OPX::KltAPI::CameraPtr MakeCamera(const CameraData& data);

} // namespace ScriptedSdk

#endif
