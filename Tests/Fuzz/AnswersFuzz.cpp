// Whatever a camera in the network or on USB answers, it is refused or understood: nothing crashes, hangs or eats up
// the memory.

#include "Transport/GvcpCamera.h"
#include "Transport/GvcpDescription.h"
#include "Transport/U3vChannel.h"
#include "Transport/U3vDescription.h"
#include "Transport/UsbBus.h"

#include "StandIn.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <vector>

using namespace OPX::KltAPI;

namespace
{

typedef std::vector<std::uint8_t> Bytes;

// Before each answer. One that is not damaged bears the number of the question, on which the fuzzer would not hit.
const std::uint8_t Damaged = 1; ///< The next byte is its length.
const std::uint8_t WithStatus = 2;
const std::uint8_t ForPatience = 4;
const std::uint8_t Unexpected = 8;

// The camera, which the fuzzer plays.
const std::uint8_t* g_data = nullptr;
std::size_t g_size = 0;
bool g_isReady = false;
Bytes g_question;
const auto g_deadline = std::make_shared<GvcpChannel::Clock::time_point>();

Bytes Take(std::size_t length)
{
    Bytes bytes(g_data, g_data + std::min(length, g_size));
    g_data += bytes.size();
    g_size -= bytes.size();
    bytes.resize(length);
    return bytes;
}

Bytes Answer()
{
    const std::uint8_t how = Take(1)[0];
    g_isReady = (how & Unexpected) != 0;
    if ((how & Damaged) != 0 || g_question.empty())
        return Take(Take(1)[0]);
    const bool isUsb = g_question[0] == 'U';
    const bool isPatience = (how & ForPatience) != 0;
    const std::uint8_t asked = g_question[isUsb ? 6 : 3];
    const bool isMemory = asked == (isUsb ? 0x00 : 0x84) && !isPatience;
    const Bytes status = (how & WithStatus) != 0 ? Take(2) : Bytes(2);
    std::uint8_t kind = asked + 1;
    Bytes answer;
    std::size_t length = 4;
    if (isUsb)
    {
        kind = isPatience ? 0x05 : kind;
        const Bytes size = isMemory ? Bytes{g_question[22], g_question[23]} : Bytes{4, 0};
        answer = {'U', '3', 'V', 'C', status[0], status[1], kind, 8, size[0], size[1], g_question[10], g_question[11]};
        length = size[0] | size[1] << 8;
    }
    else
    {
        kind = isPatience ? 0x89 : kind;
        answer = {status[0], status[1], 0, kind, 0, 0, g_question[6], g_question[7]};
        length = isMemory ? g_question[14] << 8 | g_question[15] : 4;
        if (isMemory)
            answer.insert(answer.end(), g_question.begin() + 8, g_question.begin() + 12);
    }
    const Bytes content = Take(length);
    answer.insert(answer.end(), content.begin(), content.end());
    return answer;
}

template <class Camera>
void Use(Camera& camera)
{
    SafeDescription description;
    Bytes memory(1500);
    FetchDescription(camera, description);
    camera.WriteMemory(0x100, 1500, memory.data());
    camera.ReadMemory(0x101, 1499, memory.data());
}

} // namespace

// Instead of the system's.
extern "C" ssize_t send(int, const void* packet, std::size_t size, int)
{
    const auto* const bytes = static_cast<const std::uint8_t*>(packet);
    g_question.assign(bytes, bytes + size);
    return static_cast<ssize_t>(size);
}

extern "C" int poll(pollfd*, nfds_t, int)
{
    g_isReady = g_size > 0;
    if (!g_isReady)
        *g_deadline = {}; // No need to wait.
    return g_isReady ? 1 : 0;
}

extern "C" ssize_t recv(int, void* buffer, std::size_t size, int)
{
    if (!g_isReady || g_size == 0)
        return -1;
    const Bytes answer = Answer();
    const std::size_t length = std::min(size, answer.size());
    std::copy_n(answer.begin(), length, static_cast<std::uint8_t*>(buffer));
    return static_cast<ssize_t>(length);
}

extern "C" int libusb_bulk_transfer(
    libusb_device_handle*, unsigned char endpoint, unsigned char* bytes, int length, int* transferred, unsigned int)
{
    *transferred = 0;
    if ((endpoint & LIBUSB_ENDPOINT_IN) == 0)
    {
        g_question.assign(bytes, bytes + length);
        *transferred = length;
        return 0;
    }
    if (poll(nullptr, 0, 0) == 0)
        return LIBUSB_ERROR_TIMEOUT;
    *transferred = static_cast<int>(recv(0, bytes, static_cast<std::size_t>(length), 0));
    return 0;
}

/// The first byte says how the camera is reached.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    g_data = data;
    g_size = size;
    g_isReady = false;
    g_question.clear();
    *g_deadline = GvcpChannel::Clock::time_point::max();
    if (Take(1)[0] == 'U')
    {
        static const UsbDevice device = (PlayUsb("plain"), std::make_shared<UsbBus>()->Devices().at(0));
        U3vChannel camera(device, g_deadline);
        camera.Open();
        Use(camera);
        return 0;
    }
    GvcpCamera camera("127.0.0.1", g_deadline);
    camera.CheckUnused();
    camera.Touch();
    Use(camera);
    return 0;
}
