// Stands in for libusb, and plays USB3 Vision cameras to whoever loads it. What is not given back ends the program.

#include "StandIn.h"

#include <libusb.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <sstream>
#include <thread>
#include <utility>
#include <vector>

namespace
{

typedef std::chrono::steady_clock Clock;
typedef std::unique_lock<std::recursive_mutex> Lock;
using std::chrono::milliseconds;

const std::uint8_t Out = 0x01;
const std::uint8_t In = 0x81;

const std::string Prefix = "U3VC";
const std::string AnswerWanted = {0, 0x40};
// The answer to each has the next number.
const std::uint64_t ReadMemory = 0x0800;
const std::uint64_t WriteMemory = 0x0802;
const std::uint64_t Patience = 0x0804; ///< There is only the answer, which asks for it.
const std::size_t HeaderSize = 12;

const std::uint64_t StartRegister = 0x9100; ///< The next one counts what is written to it.
const std::uint64_t SpecificRegisters = 0x18000;
const std::uint64_t Manifest = 0x19000;
const std::uint64_t RegistersEnd = 0x20000;
const std::uint64_t DescriptionAddress = 0x1234567890;

std::uint64_t NumberAt(const std::string& bytes, std::size_t at, std::size_t size)
{
    std::uint64_t number = 0;
    while (size-- > 0)
        number = number << 8 | static_cast<unsigned char>(bytes.at(at + size));
    return number;
}

std::string Bytes(std::uint64_t number, int size)
{
    std::string bytes;
    for (; size > 0; --size, number >>= 8)
        bytes += static_cast<char>(number);
    return bytes;
}

/// An entry of a manifest.
std::string Entry(std::uint64_t fileVersion, std::uint64_t schema, std::uint64_t address, std::uint64_t size)
{
    return Bytes(fileVersion, 4) + Bytes(schema, 4) + Bytes(address, 8) + Bytes(size, 8) + std::string(40, '\0');
}

/// What is not given back ends the program.
void Require(bool condition, const char* message)
{
    if (condition)
        return;
    std::fprintf(stderr, "libusb: %s\n", message);
    std::abort();
}

} // namespace

/// A camera. It never dies, so that it can tell whoever still has it that it is gone.
struct libusb_device
{
    bool Is(const std::string& manner) const { return manners.count(manner) != 0; }
    std::uint64_t Number(const std::string& manner, std::uint64_t otherwise) const
    {
        return Is(manner) ? std::stoull(manners.at(manner), nullptr, 0) : otherwise;
    }

    bool IsThere() const { return !isPulled && plugged <= Clock::now(); }

    /// Forgets what was written to it.
    void Behave(const std::string& words, int number);

    void Take(const std::string& question);

    std::string serialNumber;
    Clock::time_point plugged; ///< When.
    bool isPulled = false;
    bool isClaimed = false;
    bool isStalled = false;
    int references = 0;
    std::uint64_t transfers = 0;
    std::map<std::string, std::string> manners;
    std::deque<std::pair<Clock::time_point, std::string>> answers; ///< And when they are due.

private:
    void Store(std::uint64_t address, const std::string& bytes) { registers.replace(address, bytes.size(), bytes); }
    std::string Perform(const std::string& question, std::uint64_t& status);

    std::string registers;
    std::string description;
    std::uint64_t questionBefore = 0;
};

struct libusb_device_handle
{
    libusb_device* device;
};

struct libusb_context
{
    std::function<void(libusb_device*, libusb_hotplug_event)> tell;
    std::set<libusb_device*> known;
    bool isInterrupted = false;
};

void libusb_device::Behave(const std::string& words, int number)
{
    serialNumber = "USB" + std::to_string(number);
    manners = {{"xml", CAMERA_DESCRIPTION}};
    std::istringstream stream(words);
    for (std::string word; stream >> word;)
        manners[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
    plugged = Clock::now() + milliseconds(Number("later", 0));
    isStalled = false;
    transfers = 0;
    answers.clear();
    std::ostringstream content;
    content << std::ifstream(manners["xml"], std::ios::binary).rdbuf();
    description = content.str();
    registers.assign(RegistersEnd, '\0');
    Store(0x1CC, Bytes(Number("response", 200), 4));
    Store(0x1D0, Bytes(Manifest, 8) + Bytes(SpecificRegisters, 8));
    Store(SpecificRegisters + 0x14, Bytes(Number("transfer", 1024), 4) + Bytes(Number("transfer", 1024), 4));
    const std::uint64_t size = description.size();
    std::string entries = Entry(0x01000000, 0x01010000 | (description.compare(0, 2, "PK") == 0 ? 1 << 10 : 0),
        DescriptionAddress, Is("huge") ? std::uint64_t(1) << 40 : size);
    if (Is("several"))
    {
        // Of an older schema and a later one, in an unknown format, of other content.
        const auto other = [&](std::uint64_t schema)
        { return Entry(0x02000000, schema, DescriptionAddress + size, size); };
        entries = other(0x01000000) + other(0x02000000) + entries + other(0x01020000 | 5 << 10) + other(0x01020001);
        description += description;
        for (std::size_t at = size; (at = description.find("Width", at)) != std::string::npos;)
            description.replace(at, 5, "Other");
    }
    Store(Manifest, Bytes(Number("entries", entries.size() / 64), 8) + entries);
}

std::string libusb_device::Perform(const std::string& question, std::uint64_t& status)
{
    const bool isReading = NumberAt(question, 6, 2) == ReadMemory;
    const std::uint64_t address = NumberAt(question, HeaderSize, 8);
    const std::string bytes = question.substr(HeaderSize + 8); // To be written.
    const std::uint64_t size = isReading ? NumberAt(bytes, 2, 2) : bytes.size();
    std::string& memory = address < RegistersEnd ? registers : description;
    const std::uint64_t from = address < RegistersEnd ? address : address - DescriptionAddress;
    const std::uint64_t longest = Number("transfer", 1024);
    if (from > memory.size() || size > memory.size() - from)
        status = 0x8003;
    else if (longest != 0 && std::max<std::uint64_t>(question.size(), isReading ? HeaderSize + size : 0) > longest)
        status = 0x8002;
    status = Number("refuses", status);
    if (status != 0)
        return std::string();
    if (isReading)
        return memory.substr(from, size);
    memory.replace(from, size, bytes);
    if (address == StartRegister)
        ++memory[StartRegister + 4];
    return Bytes(size / (Is("half") ? 2 : 1) << 16, 4);
}

void libusb_device::Take(const std::string& question)
{
    if (question.compare(0, 6, Prefix + AnswerWanted) != 0 || question.size() < HeaderSize + 8 ||
        question.size() != HeaderSize + NumberAt(question, 8, 2) || Is("silent"))
        return;
    const std::uint64_t command = NumberAt(question, 6, 2);
    const std::uint64_t id = NumberAt(question, 10, 2);
    std::uint64_t status = 0;
    const std::string content = Perform(question, status);
    const auto send = [&](std::uint64_t kind, std::uint64_t number, const std::string& text, std::uint64_t delay)
    {
        std::string answer =
            Prefix + Bytes(status, 2) + Bytes(kind + 1, 2) + Bytes(text.size(), 2) + Bytes(number, 2) + text;
        answer.resize(answer.size() / (Is("short") ? 2 : 1));
        answers.emplace_back(Clock::now() + milliseconds(delay), answer);
    };
    if (Is("late"))
    {
        send(command, questionBefore, std::string(content.size(), '?'), 0);
        send(command == ReadMemory ? WriteMemory : ReadMemory, id, std::string(content.size(), '?'), 0);
    }
    questionBefore = id;
    const std::uint64_t pending = Number("pending", 0);
    if (pending != 0)
        send(Patience, id, Bytes(pending << 16, 4), 0);
    for (std::uint64_t delay = 0; Is("patience") && delay < 20000; delay += 500)
        send(Patience, id, Bytes(1000 << 16, 4), delay);
    send(command, Is("foreign") ? id + 1 : id, content, Number("slow", Is("patience") ? 20000 : pending / 2));
}

namespace
{

std::recursive_mutex g_mutex; ///< Around everything.
std::vector<std::unique_ptr<libusb_device>> g_devices;
int g_contexts = 0;

/// What has come and gone since the last time.
std::vector<std::pair<libusb_device*, libusb_hotplug_event>> Changes(libusb_context& context)
{
    std::vector<std::pair<libusb_device*, libusb_hotplug_event>> changes;
    for (const auto& device : g_devices)
        if (device->IsThere() && context.known.insert(device.get()).second)
            changes.emplace_back(device.get(), LIBUSB_HOTPLUG_EVENT_DEVICE_ARRIVED);
        else if (!device->IsThere() && context.known.erase(device.get()) != 0)
            changes.emplace_back(device.get(), LIBUSB_HOTPLUG_EVENT_DEVICE_LEFT);
    return changes;
}

const char* const g_first = std::getenv("KOLTA_USB");
const bool g_isPlayed = (PlayUsb(g_first == nullptr ? "" : g_first), true);

} // namespace

void PlayUsb(const std::string& cameras)
{
    const Lock lock(g_mutex);
    std::istringstream stream(cameras);
    std::string manners;
    int number = 1;
    for (const auto& device : g_devices)
        if (!device->isPulled && std::getline(stream, manners, ','))
            device->Behave(manners, number++);
        else
            device->isPulled = true;
    for (; std::getline(stream, manners, ','); g_devices.back()->Behave(manners, number++))
        g_devices.push_back(std::make_unique<libusb_device>());
}

int libusb_init(libusb_context** context)
{
    const Lock lock(g_mutex);
    ++g_contexts;
    *context = new libusb_context;
    return 0;
}

void libusb_exit(libusb_context* context)
{
    const Lock lock(g_mutex);
    Require(!context->tell, "somebody still waits for devices");
    --g_contexts;
    for (const auto& device : g_devices)
        Require(g_contexts > 0 || device->references == 0, "somebody still has a device");
    delete context;
}

ssize_t libusb_get_device_list(libusb_context*, libusb_device*** list)
{
    const Lock lock(g_mutex);
    std::vector<libusb_device*> present;
    for (const auto& device : g_devices)
        if (device->IsThere())
            present.push_back(libusb_ref_device(device.get()));
    *list = new libusb_device*[present.size() + 1]();
    std::copy(present.begin(), present.end(), *list);
    return static_cast<ssize_t>(present.size());
}

void libusb_free_device_list(libusb_device** list, int releases)
{
    for (libusb_device** device = list; releases != 0 && *device != nullptr; ++device)
        libusb_unref_device(*device);
    delete[] list;
}

libusb_device* libusb_ref_device(libusb_device* device)
{
    const Lock lock(g_mutex);
    ++device->references;
    return device;
}

void libusb_unref_device(libusb_device* device)
{
    const Lock lock(g_mutex);
    Require(--device->references >= 0, "a device is given back twice");
}

int libusb_get_device_descriptor(libusb_device*, libusb_device_descriptor* descriptor)
{
    *descriptor = {18, LIBUSB_DT_DEVICE, 0x0300, 0xEF, 2, 1, 9, 0x1209, 0x0001, 0x0100, 1, 2, 3, 1};
    return 0;
}

int libusb_get_active_config_descriptor(libusb_device* device, libusb_config_descriptor** configuration)
{
    // Where the texts are: of the GUID, the maker, the model, the family and so on.
    static const unsigned char information[] = {20, 0x24, 1, 0, 0, 1, 0, 0, 0, 1, 0, 4, 1, 2, 2, 2, 2, 3, 0, 8};
    static const auto endpoint = [](std::uint8_t address) -> libusb_endpoint_descriptor {
        return {7, LIBUSB_DT_ENDPOINT, address, LIBUSB_TRANSFER_TYPE_BULK, 1024, 0, 0, 0, nullptr, 0};
    };
    static const libusb_endpoint_descriptor endpoints[] = {endpoint(In), endpoint(Out), endpoint(In + 1)};
    // To control it, for images, and that of another device.
    static const libusb_interface_descriptor settings[] = {
        {9, LIBUSB_DT_INTERFACE, 0, 0, 2, 0xEF, 5, 0, 0, endpoints, information, sizeof information},
        {9, LIBUSB_DT_INTERFACE, 1, 0, 1, 0xEF, 5, 2, 0, endpoints + 2, nullptr, 0},
        {9, LIBUSB_DT_INTERFACE, 0, 0, 2, 0x0E, 1, 0, 0, endpoints, nullptr, 0}};
    static const libusb_interface interfaces[] = {{settings, 1}, {settings + 1, 1}, {settings + 2, 1}};
    const Lock lock(g_mutex);
    const std::uint8_t count = device->Is("webcam") ? 1 : 2;
    *configuration = new libusb_config_descriptor{
        9, LIBUSB_DT_CONFIG, 64, count, 1, 0, 0x80, 50, count == 1 ? interfaces + 2 : interfaces, nullptr, 0};
    return 0;
}

void libusb_free_config_descriptor(libusb_config_descriptor* configuration)
{
    delete configuration;
}

int libusb_open(libusb_device* device, libusb_device_handle** handle)
{
    const Lock lock(g_mutex);
    if (!device->IsThere() || device->Is("denied"))
        return device->IsThere() ? LIBUSB_ERROR_ACCESS : LIBUSB_ERROR_NO_DEVICE;
    ++device->references;
    *handle = new libusb_device_handle{device};
    return 0;
}

void libusb_close(libusb_device_handle* handle)
{
    libusb_unref_device(handle->device);
    delete handle;
}

int libusb_get_string_descriptor_ascii(
    libusb_device_handle* handle, std::uint8_t index, unsigned char* text, int length)
{
    const Lock lock(g_mutex);
    const std::string& serialNumber = handle->device->serialNumber;
    const std::vector<std::string> texts = {"OPX", "Played", serialNumber, "00010000" + serialNumber};
    if (!handle->device->IsThere())
        return LIBUSB_ERROR_NO_DEVICE;
    if (handle->device->Is("mute"))
        return LIBUSB_ERROR_TIMEOUT;
    return std::snprintf(
        reinterpret_cast<char*>(text), static_cast<std::size_t>(length), "%s", texts.at(index - 1u).c_str());
}

int libusb_claim_interface(libusb_device_handle* handle, int number)
{
    const Lock lock(g_mutex);
    Require(number == 0, "nobody needs another interface");
    libusb_device& device = *handle->device;
    if (!device.IsThere() || device.isClaimed || device.Is("busy"))
        return device.IsThere() ? LIBUSB_ERROR_BUSY : LIBUSB_ERROR_NO_DEVICE;
    device.isClaimed = true;
    return 0;
}

/// Stricter than the kernel, which takes what is closed for released.
int libusb_release_interface(libusb_device_handle* handle, int)
{
    const Lock lock(g_mutex);
    handle->device->isClaimed = false;
    return handle->device->IsThere() ? 0 : LIBUSB_ERROR_NO_DEVICE;
}

int libusb_clear_halt(libusb_device_handle* handle, unsigned char)
{
    const Lock lock(g_mutex);
    handle->device->isStalled = false;
    return handle->device->IsThere() ? 0 : LIBUSB_ERROR_NO_DEVICE;
}

int libusb_bulk_transfer(libusb_device_handle* handle, unsigned char endpoint, unsigned char* bytes, int length,
    int* transferred, unsigned int timeout)
{
    Lock lock(g_mutex);
    libusb_device& device = *handle->device;
    Require(device.isClaimed && (endpoint == In || endpoint == Out), "nobody has claimed this endpoint");
    *transferred = 0;
    device.isPulled = device.isPulled || device.transfers == device.Number("pulled", UINT64_MAX);
    ++device.transfers;
    device.isStalled =
        device.isStalled || device.Is("stalls") || device.transfers % device.Number("stall", UINT64_MAX) == 0;
    const auto isQuiet = [&] { return device.answers.empty() || device.answers.front().first > Clock::now(); };
    const auto end = Clock::now() + milliseconds(timeout);
    while (endpoint == In && device.IsThere() && !device.isStalled && isQuiet())
    {
        if (Clock::now() >= end)
            return LIBUSB_ERROR_TIMEOUT;
        lock.unlock();
        std::this_thread::sleep_for(milliseconds(1));
        lock.lock();
    }
    if (!device.IsThere() || device.isStalled)
        return device.IsThere() ? LIBUSB_ERROR_PIPE : LIBUSB_ERROR_NO_DEVICE;
    *transferred = length;
    if (endpoint == Out)
    {
        device.Take(std::string(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length)));
        return 0;
    }
    const std::string answer = device.answers.front().second;
    device.answers.pop_front();
    *transferred = static_cast<int>(answer.copy(reinterpret_cast<char*>(bytes), static_cast<std::size_t>(length)));
    return answer.size() > static_cast<std::size_t>(length) ? LIBUSB_ERROR_OVERFLOW : 0;
}

int libusb_has_capability(std::uint32_t)
{
    const Lock lock(g_mutex);
    return std::none_of(g_devices.begin(), g_devices.end(), [](const auto& device) { return device->Is("scanned"); });
}

int libusb_hotplug_register_callback(libusb_context* context, int, int, int, int, int,
    libusb_hotplug_callback_fn callback, void* userData, libusb_hotplug_callback_handle*)
{
    const Lock lock(g_mutex);
    context->tell = [=](libusb_device* device, libusb_hotplug_event event)
    { callback(context, device, event, userData); };
    Changes(*context);
    return 0;
}

void libusb_hotplug_deregister_callback(libusb_context* context, libusb_hotplug_callback_handle)
{
    const Lock lock(g_mutex);
    context->tell = nullptr;
}

int libusb_handle_events_timeout_completed(libusb_context* context, timeval* limit, int*)
{
    const auto end = Clock::now() + std::chrono::seconds(limit->tv_sec) + std::chrono::microseconds(limit->tv_usec);
    Lock lock(g_mutex);
    while (!std::exchange(context->isInterrupted, false) && Clock::now() < end)
    {
        const auto changes = Changes(*context);
        const auto tell = context->tell;
        lock.unlock();
        for (const auto& change : changes)
            if (tell)
                tell(change.first, change.second);
        std::this_thread::sleep_for(milliseconds(1));
        lock.lock();
    }
    return 0;
}

void libusb_interrupt_event_handler(libusb_context* context)
{
    const Lock lock(g_mutex);
    context->isInterrupted = true;
}
