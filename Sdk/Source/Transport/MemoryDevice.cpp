#include "Transport/MemoryDevice.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>

namespace
{

/// Pages of the whole 64-bit address space; only those that were written exist.
class SparseMemory
{
public:
    void Read(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer) const
    {
        for (std::uint32_t i = 0; i < size; ++i)
        {
            const auto page = m_pages.find((address + i) / PageSize);
            buffer[i] = page == m_pages.end() ? Unwritten : page->second[(address + i) % PageSize];
        }
    }

    void Write(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer)
    {
        for (std::uint32_t i = 0; i < size; ++i)
            PageAt(address + i)[(address + i) % PageSize] = buffer[i];
    }

private:
    static constexpr std::uint64_t PageSize = 4096;
    static constexpr std::uint8_t Unwritten = 0xFF;
    typedef std::array<std::uint8_t, PageSize> Page;

    Page& PageAt(std::uint64_t address)
    {
        const auto inserted = m_pages.try_emplace(address / PageSize);
        if (inserted.second)
            inserted.first->second.fill(Unwritten);
        return inserted.first->second;
    }

    std::map<std::uint64_t, Page> m_pages;
};

} // namespace

extern "C"
{
    struct KoltaMemoryDevice
    {
        ArvDevice parent;
        SparseMemory* memory;
    };

    struct KoltaMemoryDeviceClass
    {
        ArvDeviceClass parent;
    };
}

G_DEFINE_TYPE(KoltaMemoryDevice, kolta_memory_device, ARV_TYPE_DEVICE)

namespace
{

SparseMemory& MemoryOf(ArvDevice* device)
{
    return *reinterpret_cast<KoltaMemoryDevice*>(device)->memory;
}

gboolean ReadMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** /*error*/)
{
    MemoryOf(device).Read(address, size, static_cast<std::uint8_t*>(buffer));
    return TRUE;
}

gboolean WriteMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** /*error*/)
{
    MemoryOf(device).Write(address, size, static_cast<const std::uint8_t*>(buffer));
    return TRUE;
}

gboolean ReadRegister(ArvDevice* device, guint64 address, guint32* value, GError** error)
{
    const gboolean done = ReadMemory(device, address, sizeof(*value), value, error);
    *value = GUINT32_FROM_BE(*value);
    return done;
}

gboolean WriteRegister(ArvDevice* device, guint64 address, guint32 value, GError** error)
{
    guint32 bigEndian = GUINT32_TO_BE(value);
    return WriteMemory(device, address, sizeof(bigEndian), &bigEndian, error);
}

const char* NoXml(ArvDevice* /*device*/, size_t* size)
{
    *size = 0;
    return nullptr;
}

ArvGc* NoDescription(ArvDevice* /*device*/)
{
    return nullptr;
}

void Finalize(GObject* object)
{
    delete reinterpret_cast<KoltaMemoryDevice*>(object)->memory;
    G_OBJECT_CLASS(kolta_memory_device_parent_class)->finalize(object);
}

} // namespace

static void kolta_memory_device_init(KoltaMemoryDevice* device)
{
    device->memory = new SparseMemory;
}

static void kolta_memory_device_class_init(KoltaMemoryDeviceClass* deviceClass)
{
    G_OBJECT_CLASS(deviceClass)->finalize = Finalize;
    deviceClass->parent.get_genicam_xml = NoXml;
    deviceClass->parent.get_genicam = NoDescription;
    deviceClass->parent.read_memory = ReadMemory;
    deviceClass->parent.write_memory = WriteMemory;
    deviceClass->parent.read_register = ReadRegister;
    deviceClass->parent.write_register = WriteRegister;
}

namespace OPX
{
namespace KltAPI
{

ObjectPtr<ArvDevice> NewMemoryDevice()
{
    return ObjectPtr<ArvDevice>(ARV_DEVICE(g_object_new(kolta_memory_device_get_type(), nullptr)));
}

} // namespace KltAPI
} // namespace OPX
