#include "Transport/MemoryDevice.h"

#include "Transport/WrittenBytes.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <utility>

namespace
{

/// Pages of the whole 64-bit address space; only those that were written exist.
class SparseMemory
{
public:
    void Read(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer)
    {
        ForEachPage(address, size,
            [&](std::uint64_t number, std::uint32_t offset, std::uint32_t done, std::uint32_t length)
            {
                static const Page Untouched;
                const auto found = m_pages.find(number);
                const Page& page = found == m_pages.end() ? Untouched : found->second;
                const bool* const written = page.written.data() + offset;
                readUnwritten = readUnwritten || std::find(written, written + length, false) != written + length;
                std::copy_n(page.bytes.begin() + offset, length, buffer + done);
            });
    }

    void Write(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer)
    {
        ForEachPage(address, size,
            [&](std::uint64_t number, std::uint32_t offset, std::uint32_t done, std::uint32_t length)
            {
                Page& page = m_pages[number];
                std::copy_n(buffer + done, length, page.bytes.begin() + offset);
                std::fill_n(page.written.begin() + offset, length, true);
            });
    }

    bool readUnwritten = false;

private:
    static constexpr std::uint32_t PageSize = 4096;

    struct Page
    {
        Page() { bytes.fill(0xFF); }

        std::array<std::uint8_t, PageSize> bytes;
        std::array<bool, PageSize> written = {};
    };

    /// Calls \a use for each page that a range touches: with its number, where in it the range goes on, how much of the
    /// range lies before it, and how much in it.
    template <class Use>
    static void ForEachPage(std::uint64_t address, std::uint32_t size, Use use)
    {
        for (std::uint32_t done = 0, length = 0; done < size; done += length)
        {
            const std::uint64_t place = address + done; // Behind the last address comes the first.
            const auto offset = static_cast<std::uint32_t>(place % PageSize);
            length = std::min(size - done, PageSize - offset);
            use(place / PageSize, offset, done, length);
        }
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

gboolean WriteMemory(
    ArvDevice* device, guint64 address, guint32 size, OPX::KltAPI::WrittenBytes buffer, GError** /*error*/)
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

namespace OPX::KltAPI
{

ObjectPtr<ArvDevice> NewMemoryDevice()
{
    return ObjectPtr<ArvDevice>(ARV_DEVICE(g_object_new(kolta_memory_device_get_type(), nullptr)));
}

bool TakeUnknownOf(ArvDevice* memoryDevice)
{
    return std::exchange(MemoryOf(memoryDevice).readUnwritten, false);
}

} // namespace OPX::KltAPI
