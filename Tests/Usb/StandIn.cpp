// Stands in for libusb, and plays USB3 Vision cameras to whoever loads it.

#include "StandIn.h"

#include <libusb.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <mutex>
#include <sstream>
#include <thread>
#include <utility>
#include <vector>

namespace
{

typedef std::vector<std::uint8_t> Bytes;
typedef std::chrono::steady_clock Clock;
using std::chrono::milliseconds;

const std::uint8_t Out = 0x01;
const std::uint8_t In = 0x81;

const std::uint32_t Prefix = 0x43563355;
const std::uint16_t AnswerWanted = 0x4000;
// The answer to each has the next number.
const std::uint16_t ReadMemory = 0x0800;
const std::uint16_t WriteMemory = 0x0802;
const std::uint16_t Patience = 0x0804; ///< There is only the answer, which asks for it.
const std::size_t HeaderSize = 12;
const std::size_t AddressSize = 8;

const std::uint64_t SpecificRegisters = 0x18000;
const std::uint64_t Manifest = 0x19000;
const std::uint64_t RegistersEnd = 0x20000;
const std::uint64_t StartRegister = 0x9100; ///< The next one counts what is written to it.
const std::uint64_t DescriptionAddress = 0x1234567890;

std::uint64_t Number(const Bytes& bytes, std::size_t at, int size)
{
    std::uint64_t number = 0;
    while (size-- > 0)
        number = number << 8 | bytes.at(at + size);
    return number;
}

Bytes BytesOf(std::uint64_t number, int size)
{
    Bytes bytes;
    for (; size > 0; --size, number >>= 8)
        bytes.push_back(static_cast<std::uint8_t>(number));
    return bytes;
}

Bytes Joined(std::initializer_list<Bytes> parts)
{
    Bytes bytes;
    for (const Bytes& part : parts)
        bytes.insert(bytes.end(), part.begin(), part.end());
    return bytes;
}

struct Answer
{
    Clock::time_point due;
    Bytes bytes;
};

} // namespace

struct libusb_device
{
    explicit libusb_device(const std::string& serial) : serialNumber(serial) {}

    bool Is(const std::string& manner) const { return manners.count(manner) != 0; }

    std::uint64_t Number(const std::string& manner, std::uint64_t otherwise) const
    {
        return Is(manner) ? std::stoull(manners.at(manner), nullptr, 0) : otherwise;
    }

    void Store(std::uint64_t address, const Bytes& bytes)
    {
        std::copy(bytes.begin(), bytes.end(), registers.begin() + static_cast<std::ptrdiff_t>(address));
    }

    int references = 1;
    const std::string serialNumber;
    std::map<std::string, std::string> manners;
    Clock::time_point plugged;
    Bytes registers;
    Bytes description;
    bool isClaimed = false;
    std::uint64_t transfers = 0;
    bool isStalled = false;
    std::uint16_t questionBefore = 0;
    std::deque<Answer> answers;
};

struct libusb_device_handle
{
    libusb_device* device;
};

struct libusb_context
{
    std::function<void(libusb_device*, libusb_hotplug_event)> tell;
    std::vector<libusb_device*> known;
    bool isInterrupted = false;
};

namespace
{

std::mutex g_mutex; ///< Around everything.

void StoreManifest(libusb_device& camera)
{
    struct Entry
    {
        std::uint32_t fileVersion, schema;
        std::uint64_t address, size;
    };
    const bool isZip = std::string(camera.description.begin(), camera.description.end()).compare(0, 2, "PK") == 0;
    std::vector<Entry> entries = {{0x01000000, 0x01010000u | isZip << 10, DescriptionAddress,
        camera.Is("huge") ? std::uint64_t(1) << 40 : camera.description.size()}};
    // Of an old schema, of another format, of other content. None leads to a description.
    if (camera.Is("several"))
    {
        entries.insert(entries.begin(), {{0x02000000, 0x01000000, 4, 64}, {0x02000000, 0x01010000 | 5 << 10, 4, 64}});
        entries.push_back({0x02000000, 0x01010001, 4, 64});
    }
    camera.Store(Manifest, BytesOf(camera.Number("entries", entries.size()), 8));
    std::uint64_t at = Manifest + 8;
    for (const Entry& entry : entries)
    {
        camera.Store(at, Joined({BytesOf(entry.fileVersion, 4), BytesOf(entry.schema, 4), BytesOf(entry.address, 8),
                             BytesOf(entry.size, 8)}));
        at += 64;
    }
}

void StoreRegisters(libusb_device& camera)
{
    camera.registers.resize(RegistersEnd);
    const auto text = [](const std::string& content) { return Bytes(content.begin(), content.end()); };
    camera.Store(0x000, BytesOf(0x00010000, 4));
    camera.Store(0x004, text("OPX"));
    camera.Store(0x044, text("Played"));
    camera.Store(0x144, text(camera.serialNumber));
    camera.Store(0x1CC, BytesOf(camera.Number("response", 200), 4));
    camera.Store(0x1D0, BytesOf(Manifest, 8));
    camera.Store(0x1D8, BytesOf(SpecificRegisters, 8));
    camera.Store(SpecificRegisters, BytesOf(0x00010000, 4));
    camera.Store(SpecificRegisters + 0x14, BytesOf(camera.Number("transfer", 1024), 4));
    camera.Store(SpecificRegisters + 0x18, BytesOf(camera.Number("transfer", 1024), 4));
    StoreManifest(camera);
    for (const auto& manner : camera.manners)
        if (std::isdigit(manner.first[0]) != 0)
        {
            Bytes value = BytesOf(std::stoull(manner.second, nullptr, 0), 4);
            std::reverse(value.begin(), value.end());
            camera.Store(std::stoull(manner.first, nullptr, 0), value);
        }
}

void Behave(libusb_device& camera, const std::string& words)
{
    camera.manners.clear();
    std::istringstream stream(words);
    for (std::string word; stream >> word;)
    {
        const std::size_t equals = std::min(word.find('='), word.size());
        camera.manners[word.substr(0, equals)] = word.substr(std::min(equals + 1, word.size()));
    }
    std::ostringstream content;
    content << std::ifstream(camera.Is("xml") ? camera.manners["xml"] : CAMERA_DESCRIPTION, std::ios::binary).rdbuf();
    const std::string description = content.str();
    camera.description.assign(description.begin(), description.end());
    StoreRegisters(camera);
    camera.plugged = Clock::now() + milliseconds(camera.Number("later", 0));
    camera.transfers = 0;
    camera.isStalled = false;
    camera.answers.clear();
}

void Release(libusb_device* device)
{
    if (--device->references == 0)
        delete device;
}

void Play(std::vector<libusb_device*>& devices, const std::string& cameras)
{
    std::istringstream stream(cameras);
    std::size_t count = 0;
    for (std::string words; std::getline(stream, words, ','); ++count)
    {
        if (count == devices.size())
            devices.push_back(new libusb_device("USB" + std::to_string(count + 1)));
        Behave(*devices[count], words);
    }
    std::for_each(devices.begin() + static_cast<std::ptrdiff_t>(count), devices.end(), Release);
    devices.resize(count);
}

/// What is plugged in, or will be.
std::vector<libusb_device*>& Devices()
{
    static auto* const devices = []
    {
        const char* cameras = std::getenv("KOLTA_USB");
        auto* const first = new std::vector<libusb_device*>;
        Play(*first, cameras == nullptr ? "" : cameras);
        return first;
    }();
    return *devices;
}

bool IsThere(libusb_device* device)
{
    const std::vector<libusb_device*>& devices = Devices();
    return std::count(devices.begin(), devices.end(), device) > 0 && device->plugged <= Clock::now();
}

std::vector<libusb_device*> Present()
{
    std::vector<libusb_device*> present = Devices();
    present.erase(std::remove_if(present.begin(), present.end(), [](libusb_device* one) { return !IsThere(one); }),
        present.end());
    return present;
}

bool HasEvents()
{
    const std::vector<libusb_device*>& devices = Devices();
    return std::none_of(devices.begin(), devices.end(), [](libusb_device* one) { return one->Is("scanned"); });
}

std::vector<libusb_device*> Referenced(std::vector<libusb_device*> devices)
{
    for (libusb_device* device : devices)
        ++device->references;
    return devices;
}

void Know(libusb_context& context, const std::vector<libusb_device*>& devices)
{
    const std::vector<libusb_device*> before = std::exchange(context.known, Referenced(devices));
    std::for_each(before.begin(), before.end(), Release);
}

void TellOfThose(const std::vector<libusb_device*>& here, const std::vector<libusb_device*>& notHere,
    libusb_hotplug_event event, const std::function<void(libusb_device*, libusb_hotplug_event)>& tell)
{
    for (libusb_device* device : here)
        if (tell && std::count(notHere.begin(), notHere.end(), device) == 0)
            tell(device, event);
}

// The camera's side of the conversation.

Bytes Perform(libusb_device& camera, const Bytes& question, std::uint16_t& status)
{
    const bool isReading = Number(question, 6, 2) == ReadMemory;
    const std::uint64_t address = Number(question, HeaderSize, AddressSize);
    const std::uint64_t size =
        isReading ? Number(question, HeaderSize + 10, 2) : question.size() - HeaderSize - AddressSize;
    const bool isRegister = address < RegistersEnd;
    Bytes& memory = isRegister ? camera.registers : camera.description;
    const std::uint64_t from = isRegister ? address : address - DescriptionAddress;
    status = 0;
    if (from > memory.size() || size > memory.size() - from)
        status = 0x8003;
    else if (std::max<std::uint64_t>(question.size(), isReading ? HeaderSize + size : 0) >
             camera.Number("transfer", 1024))
        status = 0x8002;
    status = static_cast<std::uint16_t>(camera.Number("refuses", status));
    if (status != 0)
        return Bytes();
    const auto begin = memory.begin() + static_cast<std::ptrdiff_t>(from);
    if (isReading)
        return Bytes(begin, begin + static_cast<std::ptrdiff_t>(size));
    std::copy(question.begin() + HeaderSize + AddressSize, question.end(), begin);
    if (address == StartRegister)
        ++camera.registers[StartRegister + 4];
    return BytesOf(size << 16, 4);
}

void Reply(libusb_device& camera, const Bytes& question)
{
    const auto command = static_cast<std::uint16_t>(Number(question, 6, 2));
    const auto id = static_cast<std::uint16_t>(Number(question, 10, 2));
    const auto send =
        [&](std::uint16_t kind, std::uint16_t status, std::uint16_t number, const Bytes& content, std::uint64_t delay)
    {
        Bytes bytes = Joined({BytesOf(Prefix, 4), BytesOf(status, 2), BytesOf(kind + 1u, 2), BytesOf(content.size(), 2),
            BytesOf(number, 2), content});
        if (camera.Is("short"))
            bytes.resize(bytes.size() / 2);
        camera.answers.push_back({Clock::now() + milliseconds(delay), bytes});
    };
    std::uint16_t status = 0;
    const Bytes content = Perform(camera, question, status);
    const std::uint64_t pending = camera.Number("pending", 0);
    if (camera.Is("silent"))
        return;
    if (camera.Is("late"))
    {
        send(command, 0, camera.questionBefore, Bytes(content.size(), 0xEE), 0);
        send(command == ReadMemory ? WriteMemory : ReadMemory, 0, id, Bytes(content.size(), 0xEE), 0);
    }
    camera.questionBefore = id;
    if (camera.Is("patience") || pending != 0)
        send(Patience, 0, id, BytesOf((camera.Is("patience") ? 1000 : pending) << 16, 4), 0);
    if (camera.Is("patience"))
        return;
    const std::uint16_t number = camera.Is("foreign") ? static_cast<std::uint16_t>(id + 1) : id;
    send(command, status, number, content, camera.Number("slow", pending / 2));
}

/// Whether it is a command, and whole.
bool IsCommand(const Bytes& question)
{
    if (question.size() < HeaderSize + AddressSize || Number(question, 0, 4) != Prefix ||
        Number(question, 4, 2) != AnswerWanted || Number(question, 8, 2) != question.size() - HeaderSize)
        return false;
    const std::uint64_t command = Number(question, 6, 2);
    return command == WriteMemory || (command == ReadMemory && question.size() == HeaderSize + AddressSize + 4);
}

/// Waits for the next answer, which may be one that asks for patience.
int Receive(std::unique_lock<std::mutex>& lock, libusb_device& camera, Bytes& answer, unsigned int timeout)
{
    const auto end = timeout == 0 ? Clock::time_point::max() : Clock::now() + milliseconds(timeout);
    while (camera.answers.empty() || camera.answers.front().due > Clock::now())
    {
        if (!IsThere(&camera))
            return LIBUSB_ERROR_NO_DEVICE;
        if (Clock::now() >= end)
            return LIBUSB_ERROR_TIMEOUT;
        lock.unlock();
        std::this_thread::sleep_for(milliseconds(1));
        lock.lock();
    }
    answer = camera.answers.front().bytes;
    // Asked for so much patience, it asks again as soon as it was listened to.
    if (camera.Is("patience"))
        camera.answers.front().due = Clock::now() + milliseconds(500);
    else
        camera.answers.pop_front();
    return 0;
}

} // namespace

void PlayUsb(const std::string& cameras)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    Play(Devices(), cameras);
}

// What libusb does.

int libusb_init(libusb_context** context)
{
    *context = new libusb_context;
    return 0;
}

void libusb_exit(libusb_context* context)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    Know(*context, {});
    delete context;
}

int libusb_has_capability(std::uint32_t capability)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    return capability != LIBUSB_CAP_HAS_HOTPLUG || HasEvents() ? 1 : 0;
}

const char* libusb_error_name(int)
{
    return "an error of the stand-in";
}

ssize_t libusb_get_device_list(libusb_context*, libusb_device*** list)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    const std::vector<libusb_device*> present = Referenced(Present());
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
    const std::lock_guard<std::mutex> lock(g_mutex);
    ++device->references;
    return device;
}

void libusb_unref_device(libusb_device* device)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    Release(device);
}

int libusb_get_device_descriptor(libusb_device*, libusb_device_descriptor* descriptor)
{
    *descriptor = {18, LIBUSB_DT_DEVICE, 0x0300, 0xEF, 2, 1, 9, 0x1209, 0x0001, 0x0100, 1, 2, 3, 1};
    return 0;
}

int libusb_get_config_descriptor(libusb_device* device, std::uint8_t, libusb_config_descriptor** configuration)
{
    // Where the texts are: of the GUID, the maker, the model, the family and so on.
    static const unsigned char information[] = {20, 0x24, 1, 0, 0, 1, 0, 0, 0, 1, 0, 4, 1, 2, 2, 2, 2, 3, 0, 8};
    static const libusb_endpoint_descriptor endpoints[] = {
        {7, LIBUSB_DT_ENDPOINT, In, LIBUSB_TRANSFER_TYPE_BULK, 1024, 0, 0, 0, nullptr, 0},
        {7, LIBUSB_DT_ENDPOINT, Out, LIBUSB_TRANSFER_TYPE_BULK, 1024, 0, 0, 0, nullptr, 0},
        {7, LIBUSB_DT_ENDPOINT, In + 1, LIBUSB_TRANSFER_TYPE_BULK, 1024, 0, 0, 0, nullptr, 0}};
    // To control it, and for images.
    static const libusb_interface_descriptor settings[] = {
        {9, LIBUSB_DT_INTERFACE, 0, 0, 2, 0xEF, 5, 0, 0, endpoints, information, sizeof information},
        {9, LIBUSB_DT_INTERFACE, 1, 0, 1, 0xEF, 5, 2, 0, endpoints + 2, nullptr, 0}};
    static const libusb_interface_descriptor otherSetting = {
        9, LIBUSB_DT_INTERFACE, 0, 0, 2, 0x0E, 1, 0, 0, endpoints, nullptr, 0};
    static const libusb_interface interfaces[] = {{settings, 1}, {settings + 1, 1}};
    static const libusb_interface otherInterface = {&otherSetting, 1};
    const std::lock_guard<std::mutex> lock(g_mutex);
    const bool isOther = device->Is("webcam");
    *configuration = new libusb_config_descriptor{9, LIBUSB_DT_CONFIG, 64, static_cast<std::uint8_t>(isOther ? 1 : 2),
        1, 0, 0x80, 50, isOther ? &otherInterface : interfaces, nullptr, 0};
    return 0;
}

int libusb_get_active_config_descriptor(libusb_device* device, libusb_config_descriptor** configuration)
{
    return libusb_get_config_descriptor(device, 0, configuration);
}

void libusb_free_config_descriptor(libusb_config_descriptor* configuration)
{
    delete configuration;
}

std::uint8_t libusb_get_bus_number(libusb_device*)
{
    return 1;
}

std::uint8_t libusb_get_device_address(libusb_device* device)
{
    return static_cast<std::uint8_t>(device->serialNumber.back() - '0');
}

int libusb_get_port_numbers(libusb_device* device, std::uint8_t* ports, int)
{
    ports[0] = libusb_get_device_address(device);
    return 1;
}

int libusb_open(libusb_device* device, libusb_device_handle** handle)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    if (!IsThere(device))
        return LIBUSB_ERROR_NO_DEVICE;
    if (device->Is("denied"))
        return LIBUSB_ERROR_ACCESS;
    ++device->references;
    *handle = new libusb_device_handle{device};
    return 0;
}

void libusb_close(libusb_device_handle* handle)
{
    libusb_unref_device(handle->device);
    delete handle;
}

libusb_device* libusb_get_device(libusb_device_handle* handle)
{
    return handle->device;
}

int libusb_get_string_descriptor_ascii(
    libusb_device_handle* handle, std::uint8_t index, unsigned char* text, int length)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    if (!IsThere(handle->device))
        return LIBUSB_ERROR_NO_DEVICE;
    const std::string& serialNumber = handle->device->serialNumber;
    const std::string texts[] = {"OPX", "Played", serialNumber, "00010000" + serialNumber};
    if (index == 0 || index > std::size(texts) || length <= 0)
        return LIBUSB_ERROR_INVALID_PARAM;
    const std::size_t size = texts[index - 1].copy(reinterpret_cast<char*>(text), static_cast<std::size_t>(length) - 1);
    text[size] = 0;
    return static_cast<int>(size);
}

int libusb_set_auto_detach_kernel_driver(libusb_device_handle*, int)
{
    return 0;
}

/// Nothing but the first interface is needed here.
int libusb_claim_interface(libusb_device_handle* handle, int number)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    if (!IsThere(handle->device))
        return LIBUSB_ERROR_NO_DEVICE;
    if (number != 0)
        return 0;
    if (handle->device->isClaimed || handle->device->Is("busy"))
        return LIBUSB_ERROR_BUSY;
    handle->device->isClaimed = true;
    return 0;
}

/// Stricter than the kernel, which takes what is closed for released.
int libusb_release_interface(libusb_device_handle* handle, int number)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    handle->device->isClaimed = handle->device->isClaimed && number != 0;
    return 0;
}

int libusb_clear_halt(libusb_device_handle* handle, unsigned char)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    handle->device->isStalled = false;
    return IsThere(handle->device) ? 0 : LIBUSB_ERROR_NO_DEVICE;
}

int libusb_control_transfer(libusb_device_handle*, std::uint8_t, std::uint8_t, std::uint16_t, std::uint16_t,
    unsigned char*, std::uint16_t length, unsigned int)
{
    return length;
}

int libusb_bulk_transfer(libusb_device_handle* handle, unsigned char endpoint, unsigned char* bytes, int length,
    int* transferred, unsigned int timeout)
{
    std::unique_lock<std::mutex> lock(g_mutex);
    libusb_device& camera = *handle->device;
    *transferred = 0;
    if (camera.Is("pulled") && camera.transfers == camera.Number("pulled", 0) && IsThere(&camera))
    {
        std::vector<libusb_device*>& devices = Devices();
        devices.erase(std::find(devices.begin(), devices.end(), &camera));
        Release(&camera);
    }
    if (!IsThere(&camera))
        return LIBUSB_ERROR_NO_DEVICE;
    ++camera.transfers;
    camera.isStalled = camera.isStalled || camera.Is("stalls") ||
                       (camera.Is("stall") && camera.transfers % camera.Number("stall", 1) == 0);
    if (camera.isStalled)
        return LIBUSB_ERROR_PIPE;
    if (!camera.isClaimed || (endpoint != In && endpoint != Out))
        return LIBUSB_ERROR_NOT_FOUND;
    if (endpoint == Out)
    {
        const Bytes question(bytes, bytes + length);
        *transferred = length;
        if (IsCommand(question))
            Reply(camera, question);
        return 0;
    }
    Bytes answer;
    const int result = Receive(lock, camera, answer, timeout);
    *transferred = static_cast<int>(std::min<std::size_t>(answer.size(), static_cast<std::size_t>(length)));
    std::copy_n(answer.begin(), *transferred, bytes);
    return answer.size() > static_cast<std::size_t>(length) ? LIBUSB_ERROR_OVERFLOW : result;
}

int libusb_hotplug_register_callback(libusb_context* context, int events, int, int, int, int,
    libusb_hotplug_callback_fn callback, void* userData, libusb_hotplug_callback_handle*)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    if (!HasEvents())
        return LIBUSB_ERROR_NOT_SUPPORTED;
    context->tell = [=](libusb_device* device, libusb_hotplug_event event)
    {
        if ((events & event) != 0)
            callback(context, device, event, userData);
    };
    Know(*context, Present());
    return 0;
}

void libusb_hotplug_deregister_callback(libusb_context* context, libusb_hotplug_callback_handle)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    context->tell = nullptr;
}

int libusb_handle_events_timeout_completed(libusb_context* context, timeval* limit, int*)
{
    const auto end = Clock::now() + std::chrono::seconds(limit->tv_sec) + std::chrono::microseconds(limit->tv_usec);
    std::unique_lock<std::mutex> lock(g_mutex);
    while (!std::exchange(context->isInterrupted, false) && Clock::now() < end)
    {
        const std::vector<libusb_device*> before = Referenced(context->known);
        const std::vector<libusb_device*> now = Referenced(Present());
        Know(*context, now);
        const auto tell = context->tell;
        lock.unlock();
        TellOfThose(now, before, LIBUSB_HOTPLUG_EVENT_DEVICE_ARRIVED, tell);
        TellOfThose(before, now, LIBUSB_HOTPLUG_EVENT_DEVICE_LEFT, tell);
        std::this_thread::sleep_for(milliseconds(1));
        lock.lock();
        std::for_each(before.begin(), before.end(), Release);
        std::for_each(now.begin(), now.end(), Release);
        if (before != now)
            break;
    }
    return 0;
}

int libusb_handle_events_timeout(libusb_context* context, timeval* limit)
{
    return libusb_handle_events_timeout_completed(context, limit, nullptr);
}

void libusb_interrupt_event_handler(libusb_context* context)
{
    const std::lock_guard<std::mutex> lock(g_mutex);
    context->isInterrupted = true;
}

// What is only needed for images.

libusb_transfer* libusb_alloc_transfer(int)
{
    return nullptr;
}

void libusb_free_transfer(libusb_transfer*)
{
}

int libusb_submit_transfer(libusb_transfer*)
{
    return LIBUSB_ERROR_NOT_SUPPORTED;
}

int libusb_cancel_transfer(libusb_transfer*)
{
    return LIBUSB_ERROR_NOT_FOUND;
}
