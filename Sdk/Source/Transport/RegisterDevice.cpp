#include "Transport/RegisterDevice.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace OPX::KltAPI
{
namespace
{

const char RegistersKey[] = "kolta-registers";

/// Long registers are not worth the memory.
const std::size_t LongestRemembered = 64;

/// The registers of a camera that is slower than memory. While it is told to remember, nothing is read twice, unless
/// something was written in between.
class KnownRegisters : public RegisterAccess
{
public:
    explicit KnownRegisters(std::unique_ptr<RegisterAccess> camera) : m_camera(std::move(camera)) {}

    void Remember(bool remember)
    {
        m_remembers = remember;
        m_known.clear();
    }

    Failure ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer) override
    {
        return Read(address, size, buffer, [&] { return m_camera->ReadMemory(address, size, buffer); });
    }

    Failure WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer) override
    {
        m_known.clear();
        return m_camera->WriteMemory(address, size, buffer);
    }

    Failure ReadRegister(std::uint64_t address, std::uint32_t& value) override
    {
        std::uint32_t bytes = 0;
        Failure failure = Read(address, sizeof bytes, reinterpret_cast<std::uint8_t*>(&bytes),
            [&]
            {
                Failure asked = m_camera->ReadRegister(address, value);
                bytes = GUINT32_TO_BE(value);
                return asked;
            });
        value = GUINT32_FROM_BE(bytes);
        return failure;
    }

    Failure WriteRegister(std::uint64_t address, std::uint32_t value) override
    {
        m_known.clear();
        return m_camera->WriteRegister(address, value);
    }

private:
    typedef std::vector<std::uint8_t> Bytes;

    /// \param ask fills the buffer
    template <class Ask>
    Failure Read(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer, Ask ask)
    {
        const auto place = std::make_pair(address, size);
        const auto known = m_known.find(place);
        if (known != m_known.end())
            return std::copy(known->second.begin(), known->second.end(), buffer), KltErrorSuccess;
        Failure failure = ask();
        if (!failure && m_remembers && size <= LongestRemembered)
            m_known[place] = Bytes(buffer, buffer + size);
        return failure;
    }

    const std::unique_ptr<RegisterAccess> m_camera;
    bool m_remembers = false;
    std::map<std::pair<std::uint64_t, std::uint32_t>, Bytes> m_known; ///< By address and size.
};

/// What a camera in a network asks of those who use its registers: it reads and writes whole words only.
class WordRegisters : public KnownRegisters
{
public:
    using KnownRegisters::KnownRegisters;

    Failure ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer) override
    {
        Bytes words = WordsAround(address, size);
        Failure failure = ReadWords(address - address % 4, words);
        std::copy_n(words.data() + address % 4, size, buffer);
        return failure;
    }

    Failure WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer) override
    {
        Bytes words = WordsAround(address, size);
        const std::uint64_t begin = address - address % 4;
        // What stands beside the range stays.
        if (words.size() != size)
            if (Failure failure = ReadWords(begin, words))
                return failure;
        std::copy_n(buffer, size, words.data() + address % 4);
        return KnownRegisters::WriteMemory(begin, static_cast<std::uint32_t>(words.size()), words.data());
    }

private:
    typedef std::vector<std::uint8_t> Bytes;

    static Bytes WordsAround(std::uint64_t address, std::uint32_t size)
    {
        return Bytes((address % 4 + size + 3) / 4 * 4);
    }

    Failure ReadWords(std::uint64_t address, Bytes& words)
    {
        return KnownRegisters::ReadMemory(address, static_cast<std::uint32_t>(words.size()), words.data());
    }
};

RegisterAccess& RegistersOf(ArvDevice* device)
{
    return *static_cast<RegisterAccess*>(g_object_get_data(G_OBJECT(device), RegistersKey));
}

gboolean ReadMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error)
{
    return PassOn(
        Caught([&] { return RegistersOf(device).ReadMemory(address, size, static_cast<std::uint8_t*>(buffer)); }),
        error);
}

/// \tparam Buffer a pointer to void, or to const void in newer versions of Aravis
template <class Buffer>
gboolean WriteMemory(ArvDevice* device, guint64 address, guint32 size, Buffer buffer, GError** error)
{
    return PassOn(
        Caught(
            [&] { return RegistersOf(device).WriteMemory(address, size, static_cast<const std::uint8_t*>(buffer)); }),
        error);
}

gboolean ReadRegister(ArvDevice* device, guint64 address, guint32* value, GError** error)
{
    return PassOn(Caught([&] { return RegistersOf(device).ReadRegister(address, *value); }), error);
}

gboolean WriteRegister(ArvDevice* device, guint64 address, guint32 value, GError** error)
{
    return PassOn(Caught([&] { return RegistersOf(device).WriteRegister(address, value); }), error);
}

const char* NoXml(ArvDevice* /*device*/, size_t* size)
{
    *size = 0;
    return nullptr;
}

ArvGc* NoNodeMap(ArvDevice* /*device*/)
{
    return nullptr;
}

void SetNoProperty(GObject* /*object*/, guint /*property*/, const GValue* /*value*/, GParamSpec* /*specification*/)
{
}

void InitialiseClass(gpointer ownClass, gpointer /*data*/)
{
    const GObjectClass* plain = G_OBJECT_CLASS(g_type_class_ref(ARV_TYPE_DEVICE)); // Never released.
    G_OBJECT_CLASS(ownClass)->constructed = plain->constructed;
    G_OBJECT_CLASS(ownClass)->set_property = SetNoProperty;
    G_OBJECT_CLASS(ownClass)->dispose = plain->dispose;
    G_OBJECT_CLASS(ownClass)->finalize = plain->finalize;
    ArvDeviceClass* deviceClass = ARV_DEVICE_CLASS(ownClass);
    deviceClass->get_genicam_xml = NoXml;
    deviceClass->get_genicam = NoNodeMap;
    deviceClass->read_memory = ReadMemory;
    deviceClass->write_memory = WriteMemory;
    deviceClass->read_register = ReadRegister;
    deviceClass->write_register = WriteRegister;
}

GType NewType(GType parent, const char* name)
{
    GTypeQuery sizes;
    g_type_query(parent, &sizes);
    return g_type_register_static_simple(
        parent, name, sizes.class_size, InitialiseClass, sizes.instance_size, nullptr, static_cast<GTypeFlags>(0));
}

} // namespace

ObjectPtr<ArvDevice> NewRegisterDevice(std::unique_ptr<RegisterAccess> registers, DeviceKind kind)
{
    if (kind == DeviceKind::GigEVision)
        registers = std::make_unique<WordRegisters>(std::move(registers));
    else if (kind == DeviceKind::Usb3Vision)
        registers = std::make_unique<KnownRegisters>(std::move(registers));
    static const GType plain = NewType(ARV_TYPE_DEVICE, "KoltaDevice");
    static const GType gigEVision = NewType(ARV_TYPE_GV_DEVICE, "KoltaGigEVisionDevice");
    ObjectPtr<ArvDevice> device(ARV_DEVICE(g_object_new(kind == DeviceKind::GigEVision ? gigEVision : plain, nullptr)));
    g_object_set_data_full(G_OBJECT(device.get()), RegistersKey, registers.release(),
        [](gpointer access) { delete static_cast<RegisterAccess*>(access); });
    return device;
}

ReadOnce::ReadOnce(ArvDevice* device) : m_device(device)
{
    Remember(true);
}

ReadOnce::~ReadOnce()
{
    Remember(false);
}

void ReadOnce::Remember(bool remember) const
{
    auto* const registers = static_cast<RegisterAccess*>(g_object_get_data(G_OBJECT(m_device), RegistersKey));
    if (auto* const known = dynamic_cast<KnownRegisters*>(registers))
        known->Remember(remember);
}

} // namespace OPX::KltAPI
