#include "ScriptedSdk.h"

#include <algorithm>
#include <thread>

using namespace ScriptedSdk;

namespace OPX
{
namespace KltAPI
{
namespace
{

std::vector<ICameraListObserverPtr> g_observers;

KltErrorType Step(const std::string& call, const std::string& subject, Which which)
{
    Script& script = TheScript();
    ++script.calls[call];
    const auto meanwhile = script.meanwhile.find(call);
    if (meanwhile != script.meanwhile.end())
        meanwhile->second();
    for (const std::string& key : {call + "@" + subject, call})
    {
        const auto fault = script.faults.find({key, which});
        if (fault != script.faults.end())
            return fault->second;
    }
    return KltErrorSuccess;
}

/// Texts are delivered without a terminating zero.
KltErrorType Text(
    const std::string& call, const std::string& subject, const std::string& text, char* buffer, unsigned int& length)
{
    const KltErrorType result = Step(call, subject, buffer == nullptr ? First : Second);
    if (result != KltErrorSuccess)
        return result;
    length = static_cast<unsigned int>(text.size());
    if (buffer != nullptr)
        std::copy(text.begin(), text.end(), buffer);
    return KltErrorSuccess;
}

template <class Item, class Data, class Make>
KltErrorType List(const std::string& call, const std::string& subject, const std::vector<Data>& list, Item* items,
    unsigned int& count, Make make)
{
    const KltErrorType result = Step(call, subject, items == nullptr ? First : Second);
    if (result != KltErrorSuccess)
        return result;
    const unsigned int room = count;
    const auto told = TheScript().counts.find(call);
    count = static_cast<unsigned int>(list.size());
    if (items == nullptr && told != TheScript().counts.end())
        count = told->second;
    for (unsigned int i = 0; items != nullptr && i < std::min(room, count); ++i)
        items[i] = make(list[i]);
    return KltErrorSuccess;
}

} // namespace

struct EnumEntry::Impl
{
    EntryData data;
};

EnumEntry::EnumEntry() : m_impl(new Impl{{std::string(), 0}})
{
}
EnumEntry::EnumEntry(Impl* impl) : m_impl(impl)
{
}
EnumEntry::EnumEntry(const EnumEntry& other) : m_impl(new Impl(*other.m_impl))
{
}

EnumEntry& EnumEntry::operator=(const EnumEntry& other)
{
    m_impl->data = EntryData(other.m_impl->data);
    return *this;
}

EnumEntry::~EnumEntry()
{
    delete m_impl;
}

KltErrorType EnumEntry::GetName(char* name, unsigned int& length) const
{
    return Text("EnumEntry::GetName", m_impl->data.name, m_impl->data.name, name, length);
}

KltErrorType EnumEntry::GetValue(KltInt64_t& value) const
{
    value = m_impl->data.value;
    return Step("EnumEntry::GetValue", m_impl->data.name, First);
}

struct Feature::Impl
{
    ScriptedSdk::FeatureData data;
};

Feature::Feature(Impl* impl) : m_impl(impl)
{
}

Feature::~Feature()
{
    delete m_impl;
}

KltErrorType Feature::GetName(char* name, unsigned int& length) const
{
    return Text("Feature::GetName", m_impl->data.name, m_impl->data.name, name, length);
}

KltErrorType Feature::GetCategory(char* category, unsigned int& length) const
{
    return Text("Feature::GetCategory", m_impl->data.name, m_impl->data.category, category, length);
}

KltErrorType Feature::GetDataType(KltFeatureDataType& dataType) const
{
    const KltErrorType result = Step("Feature::GetDataType", m_impl->data.name, First);
    if (result == KltErrorSuccess)
        dataType = m_impl->data.dataType;
    return result;
}

KltErrorType Feature::GetFlags(KltFeatureFlagsType& flags) const
{
    const KltErrorType result = Step("Feature::GetFlags", m_impl->data.name, First);
    if (result == KltErrorSuccess)
        flags = m_impl->data.flags;
    return result;
}

KltErrorType Feature::GetEntries(EnumEntry* entries, unsigned int& count)
{
    return List("Feature::GetEntries", m_impl->data.name, m_impl->data.entries, entries, count,
        [](const EntryData& entry) { return EnumEntry(new EnumEntry::Impl{entry}); });
}

// It has no values.
// clang-format off
KltErrorType Feature::GetValue(KltInt64_t& /*value*/) const { return KltErrorNotSupported; }
KltErrorType Feature::GetValue(double& /*value*/) const { return KltErrorNotSupported; }
KltErrorType Feature::GetValue(std::string& /*value*/) const { return KltErrorNotSupported; }
KltErrorType Feature::GetValue(bool& /*value*/) const { return KltErrorNotSupported; }
KltErrorType Feature::GetValue(UcharVector& /*value*/) const { return KltErrorNotSupported; }
// clang-format on

struct FeatureContainer::Impl
{
    CameraData data;
};

FeatureContainer::FeatureContainer(Impl* impl) : m_impl(impl)
{
}

FeatureContainer::~FeatureContainer()
{
    delete m_impl;
}

KltErrorType FeatureContainer::GetFeatures(FeaturePtr* features, unsigned int& count)
{
    return List("FeatureContainer::GetFeatures", m_impl->data.name, m_impl->data.features, features, count,
        [](const ScriptedSdk::FeatureData& data)
        {
            return data.category == ScriptedSdk::EmptyHandle ? FeaturePtr()
                                                             : FeaturePtr(new Feature(new Feature::Impl{data}));
        });
}

Camera::Camera(Impl* impl) : FeatureContainer(impl)
{
}
Camera::~Camera()
{
}

KltErrorType Camera::GetName(char* name, unsigned int& length) const
{
    return Text("Camera::GetName", m_impl->data.name, m_impl->data.name, name, length);
}

KltErrorType Camera::GetSerialNumber(char* serialNumber, unsigned int& length) const
{
    return Text("Camera::GetSerialNumber", m_impl->data.name, m_impl->data.serialNumber, serialNumber, length);
}

KltErrorType Camera::Open(KltAccessModeType accessMode)
{
    TheScript().sessions.push_back("Open " + m_impl->data.name);
    return accessMode == 1 ? Step("Camera::Open", m_impl->data.name, First)
                           : static_cast<KltErrorType>(KltErrorBadParameter);
}

KltErrorType Camera::Close()
{
    TheScript().sessions.push_back("Close " + m_impl->data.name);
    return Step("Camera::Close", m_impl->data.name, First);
}

struct KoltaSystem::Impl
{
};

KoltaSystem::KoltaSystem() : m_impl(nullptr)
{
}
KoltaSystem::~KoltaSystem()
{
    static_cast<void>(m_impl); // Or clang++ warns that nobody uses it.
}

KoltaSystem& KoltaSystem::GetInstance()
{
    static KoltaSystem instance;
    return instance;
}

KltErrorType KoltaSystem::Startup()
{
    return Step("KoltaSystem::Startup", "", First);
}

KltErrorType KoltaSystem::Shutdown()
{
    g_observers.clear();
    return Step("KoltaSystem::Shutdown", "", First);
}

KltErrorType KoltaSystem::RegisterCameraListObserver(const shared_ptr<ICameraListObserver>& observer)
{
    const KltErrorType result = Step("KoltaSystem::RegisterCameraListObserver", "", First);
    if (result == KltErrorSuccess)
        g_observers.push_back(observer);
    return result;
}

KltErrorType KoltaSystem::GetCameras(CameraPtr* cameras, unsigned int& count)
{
    return List("KoltaSystem::GetCameras", "", TheScript().cameras, cameras, count, MakeCamera);
}

} // namespace KltAPI
} // namespace OPX

Script& ScriptedSdk::TheScript()
{
    static Script script;
    return script;
}

void ScriptedSdk::Reset()
{
    OPX::KltAPI::g_observers.clear();
    TheScript() = Script();
}

void ScriptedSdk::Notify(UpdateTriggerType reason)
{
    std::thread(
        [reason]
        {
            for (const OPX::KltAPI::ICameraListObserverPtr& observer : OPX::KltAPI::g_observers)
                observer->CameraListChanged(OPX::KltAPI::CameraPtr(), reason);
        })
        .join();
}

OPX::KltAPI::CameraPtr ScriptedSdk::MakeCamera(const CameraData& data)
{
    return OPX::KltAPI::CameraPtr(new OPX::KltAPI::Camera(new OPX::KltAPI::FeatureContainer::Impl{data}));
}
