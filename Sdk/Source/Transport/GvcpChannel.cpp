#include "Transport/GvcpChannel.h"

#include <algorithm>
#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <poll.h>
#include <set>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

using std::chrono::milliseconds;

const std::uint16_t Port = 3956;

// The answer to each has the next number.
const std::uint16_t ReadRegisterCommand = 0x80;
const std::uint16_t WriteRegisterCommand = 0x82;
const std::uint16_t ReadMemoryCommand = 0x84;
const std::uint16_t WriteMemoryCommand = 0x86;
const std::uint16_t PendingAnswer = 0x89; ///< The camera asks for patience.

const std::size_t HeaderSize = 8;
const std::uint32_t BlockSize = 512; ///< A packet has to hold it, whatever else is in there.
const std::size_t LongestAnswer = 1024;

const milliseconds Patience(3000);
const milliseconds ShortestPause(10);
const milliseconds LongestPause(500);
const milliseconds ShortestPauseOfWriting(200);

/// In the ids of questions that nobody waits for.
const std::uint16_t TouchFlag = 0x8000;

const std::uint16_t AccessDenied = 0x8006;

/// Each in 32 bits.
std::vector<std::uint8_t> BytesOf(std::initializer_list<std::uint64_t> longWords)
{
    std::vector<std::uint8_t> bytes;
    for (const std::uint64_t longWord : longWords)
        for (const int shift : {24, 16, 8, 0})
            bytes.push_back(static_cast<std::uint8_t>(longWord >> shift));
    return bytes;
}

std::uint16_t Word(const std::uint8_t* bytes)
{
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

std::uint32_t LongWord(const std::uint8_t* bytes)
{
    return static_cast<std::uint32_t>(Word(bytes)) << 16 | Word(bytes + 2);
}

/// The interfaces in whose subnet the address is.
std::set<unsigned int> InterfacesOf(in_addr_t address)
{
    const auto number = [](const sockaddr* name)
    { return reinterpret_cast<const sockaddr_in*>(name)->sin_addr.s_addr; };
    std::set<unsigned int> interfaces;
    ifaddrs* first = nullptr;
    if (getifaddrs(&first) != 0)
        return interfaces;
    for (const ifaddrs* one = first; one != nullptr; one = one->ifa_next)
        if (one->ifa_addr != nullptr && one->ifa_addr->sa_family == AF_INET && one->ifa_netmask != nullptr &&
            ((number(one->ifa_addr) ^ address) & number(one->ifa_netmask)) == 0)
            interfaces.insert(if_nametoindex(one->ifa_name));
    freeifaddrs(first);
    return interfaces;
}

/// One that goes where the network's routes lead; if several interfaces are in the camera's subnet, one for each. (All
/// that choose their addresses themselves are in one subnet, 169.254/16.)
std::vector<int> SocketsTo(const std::string& address)
{
    std::vector<int> sockets;
    sockaddr_in camera{};
    camera.sin_family = AF_INET;
    camera.sin_port = htons(Port);
    if (inet_pton(AF_INET, address.c_str(), &camera.sin_addr) != 1)
        return sockets;
    std::set<unsigned int> interfaces = InterfacesOf(camera.sin_addr.s_addr);
    if (interfaces.size() < 2)
        interfaces = {0};
    for (const unsigned int interface : interfaces)
    {
        const std::uint32_t index = htonl(interface);
        const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        setsockopt(descriptor, IPPROTO_IP, IP_UNICAST_IF, &index, sizeof index);
        // Connected: what others send is not received.
        if (connect(descriptor, reinterpret_cast<const sockaddr*>(&camera), sizeof camera) == 0)
            sockets.push_back(descriptor);
        else
            close(descriptor);
    }
    return sockets;
}

/// Whether the answer is all that was asked for. Memory comes with its address.
bool IsWhole(const std::vector<std::uint8_t>& answer, const std::vector<std::uint8_t>& packet, std::size_t size)
{
    const std::uint16_t command = Word(packet.data() + 2);
    const auto address = packet.begin() + HeaderSize;
    return Word(answer.data() + 2) == command + 1 && (size == 0 || answer.size() == HeaderSize + size) &&
           (command != ReadMemoryCommand || std::equal(address, address + 4, answer.begin() + HeaderSize));
}

/// Whether the answer with a register says that these bits are no longer set, or is refused because the camera is
/// somebody else's.
bool IsWithout(std::uint32_t bits, const std::vector<std::uint8_t>& answer)
{
    const std::uint16_t status = Word(answer.data());
    const bool hasValue = Word(answer.data() + 2) == ReadRegisterCommand + 1 && answer.size() >= HeaderSize + 4;
    return status == AccessDenied || (status == 0 && hasValue && (LongWord(answer.data() + HeaderSize) & bits) == 0);
}

/// \a size bytes from \a address on have to be within the 32 bits that the protocol has for addresses.
Failure CheckReach(std::uint64_t address, std::uint32_t size)
{
    const std::uint64_t end = std::uint64_t(1) << 32;
    return address < end && size <= end - address ? KltErrorSuccess : KltErrorInternalFault;
}

} // namespace

GvcpChannel::GvcpChannel(const std::string& address, Deadline deadline)
    : m_deadline(std::move(deadline)),
      m_sockets(SocketsTo(address)),
      m_pause(ShortestPause),
      m_heard(Clock::now())
{
}

GvcpChannel::~GvcpChannel()
{
    for (const int descriptor : m_sockets)
        close(descriptor);
}

void GvcpChannel::SetDeadline(Deadline deadline)
{
    m_deadline = std::move(deadline);
}

GvcpChannel::Bytes GvcpChannel::PacketOf(std::uint16_t command, const Bytes& question, std::uint16_t idFlag)
{
    std::uint16_t id = 0;
    while (id == 0)
        id = static_cast<std::uint16_t>((++m_lastId & ~TouchFlag) | idFlag);
    // A command that asks for an answer.
    Bytes packet = BytesOf({0x42010000U | command, question.size() << 16 | id});
    packet.insert(packet.end(), question.begin(), question.end());
    return packet;
}

void GvcpChannel::Send(const Bytes& packet) const
{
    // What cannot be sent now is as good as lost.
    for (const int descriptor : m_sockets)
        static_cast<void>(send(descriptor, packet.data(), packet.size(), MSG_DONTWAIT | MSG_NOSIGNAL));
}

void GvcpChannel::Touch()
{
    const std::unique_lock<std::mutex> lock(m_mutex, std::try_to_lock);
    // Otherwise a call receives, and takes in what comes.
    if (lock)
        TakeInLateAnswers();
    if (lock && IsSilent())
        m_isLost = true;
    Send(PacketOf(ReadRegisterCommand, BytesOf({ControlRegister}), TouchFlag));
}

bool GvcpChannel::IsSilent() const
{
    return Clock::now() - m_heard >= Patience;
}

void GvcpChannel::SetPause(Clock::duration pause)
{
    m_pause = std::max<Clock::duration>(ShortestPause, std::min<Clock::duration>(LongestPause, pause));
}

/// For an answer to a question other than the open one.
void GvcpChannel::TakeIn(const Bytes& answer)
{
    if (answer.size() < HeaderSize)
        return;
    const std::uint16_t id = Word(answer.data() + 6);
    // Answered twice: nothing was lost, we have only been impatient.
    if (id == m_questionBefore)
        SetPause(2 * m_pause);
    if ((id & TouchFlag) != 0 && IsWithout(Controlled, answer))
        m_isLost = true;
}

bool GvcpChannel::Receive(Bytes& answer)
{
    for (int& descriptor : m_sockets)
    {
        answer.resize(LongestAnswer);
        const ssize_t received = recv(descriptor, answer.data(), answer.size(), MSG_DONTWAIT);
        if (received < 0)
            continue;
        answer.resize(static_cast<std::size_t>(received));
        m_heard = Clock::now();
        // The camera is behind this one.
        if (m_sockets.size() > 1)
            std::swap(descriptor, m_sockets.front());
        for (; m_sockets.size() > 1; m_sockets.pop_back())
            close(m_sockets.back());
        return true;
    }
    return false;
}

void GvcpChannel::TakeInLateAnswers()
{
    Bytes answer;
    // No more than fit into the socket: a camera could send them faster than they are read.
    for (int i = 0; i < 1000 && Receive(answer); ++i)
        TakeIn(answer);
}

Failure GvcpChannel::Ask(std::uint16_t command, const Bytes& question, std::size_t size, Bytes& answer)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    TakeInLateAnswers();
    const Bytes packet = PacketOf(command, question, 0);
    if (!m_isLost && !Converse(packet, size, answer))
    {
        m_isLost = IsSilent();
        return KltErrorTimeout;
    }
    if (m_isLost)
        return KltErrorDeviceNotOpen;
    if (Failure failure = CodeOfState(Word(answer.data())))
        return failure;
    answer.erase(answer.begin(), answer.begin() + HeaderSize);
    return KltErrorSuccess;
}

bool GvcpChannel::Converse(const Bytes& packet, std::size_t size, Bytes& answer)
{
    const std::uint16_t command = Word(packet.data() + 2);
    const bool isWriting = command == WriteRegisterCommand || command == WriteMemoryCommand;
    const Clock::time_point start = Clock::now();
    Clock::time_point giveUp = start + Patience;
    Clock::duration pause = isWriting ? std::max<Clock::duration>(m_pause, ShortestPauseOfWriting) : m_pause;
    bool isAnswered = false;
    for (Clock::time_point now = start; now < std::min(giveUp, *m_deadline) && !isAnswered; now = Clock::now())
    {
        Send(packet);
        isAnswered = Await(packet, size, pause, giveUp, answer);
        // Only the answer to the first question shows how quick the camera is.
        if (isAnswered && now == start)
            SetPause(2 * (Clock::now() - start));
        pause = isWriting ? 2 * pause : std::min<Clock::duration>(2 * pause, LongestPause);
    }
    m_questionBefore = Word(packet.data() + 6);
    return isAnswered;
}

bool GvcpChannel::Await(
    const Bytes& packet, std::size_t size, Clock::duration pause, Clock::time_point& giveUp, Bytes& answer)
{
    Clock::time_point until = std::min(Clock::now() + pause, giveUp);
    for (Clock::time_point now = Clock::now(); now < std::min(until, *m_deadline); now = Clock::now())
    {
        std::vector<pollfd> readable;
        for (const int descriptor : m_sockets)
            readable.push_back({descriptor, POLLIN, 0});
        const auto wait = std::chrono::ceil<milliseconds>(std::min(until, *m_deadline) - now).count();
        if (poll(readable.data(), readable.size(), static_cast<int>(wait)) <= 0 || !Receive(answer) ||
            answer.size() < HeaderSize)
            continue;
        if (!std::equal(packet.begin() + 6, packet.begin() + 8, answer.begin() + 6))
            TakeIn(answer);
        else if (Word(answer.data() + 2) == PendingAnswer && answer.size() >= HeaderSize + 4)
        {
            const milliseconds asked(Word(answer.data() + HeaderSize + 2));
            until = Clock::now() + std::max<Clock::duration>(asked, pause);
            giveUp = until + Patience;
            m_heard = std::min(until, *m_deadline);
        }
        // Damaged answers are as good as lost.
        else if (Word(answer.data()) != 0 || IsWhole(answer, packet, size))
            return true;
    }
    return false;
}

Failure GvcpChannel::ReadRegister(std::uint64_t address, std::uint32_t& value)
{
    Bytes answer;
    if (Failure failure = CheckReach(address, 4))
        return failure;
    if (Failure failure = Ask(ReadRegisterCommand, BytesOf({address}), 4, answer))
        return failure;
    value = LongWord(answer.data());
    return KltErrorSuccess;
}

Failure GvcpChannel::WriteRegister(std::uint64_t address, std::uint32_t value)
{
    Bytes answer;
    if (Failure failure = CheckReach(address, 4))
        return failure;
    return Ask(WriteRegisterCommand, BytesOf({address, value}), 0, answer);
}

Failure GvcpChannel::ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer)
{
    if (Failure failure = CheckReach(address, size))
        return failure;
    const std::uint64_t end = address + size;
    // Cameras read whole words.
    for (std::uint64_t begin = address & ~std::uint64_t(3); begin < end; begin += BlockSize)
    {
        const std::uint64_t words = std::min<std::uint64_t>(BlockSize, (end - begin + 3) & ~std::uint64_t(3));
        Bytes answer;
        if (Failure failure = Ask(ReadMemoryCommand, BytesOf({begin, words}), 4 + words, answer))
            return failure;
        const std::uint64_t from = std::max(begin, address);
        const std::uint64_t to = std::min(begin + words, end);
        std::copy_n(answer.data() + 4 + (from - begin), to - from, buffer + (from - address));
    }
    return KltErrorSuccess;
}

Failure GvcpChannel::WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer)
{
    if (Failure failure = CheckReach(address, size))
        return failure;
    for (std::uint32_t done = 0; done < size; done += BlockSize)
    {
        const std::uint32_t length = std::min(size - done, BlockSize);
        Bytes bytes = BytesOf({address + done});
        bytes.insert(bytes.end(), buffer + done, buffer + done + length);
        Failure failure = Ask(WriteMemoryCommand, bytes, 0, bytes);
        if (failure.code == KltErrorNotImplemented && done == 0 && size % 4 == 0)
            return WriteWords(address, size, buffer);
        if (failure)
            return failure;
        // How much was written, if the camera says it.
        const std::uint32_t written = bytes.size() < 4 ? 0 : LongWord(bytes.data());
        if (written != 0 && written < length)
            return KltErrorIncomplete;
    }
    return KltErrorSuccess;
}

/// For cameras that can write only registers.
Failure GvcpChannel::WriteWords(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer)
{
    for (std::uint32_t done = 0; done < size; done += 4)
        if (Failure failure = WriteRegister(address + done, LongWord(buffer + done)))
            return failure;
    return KltErrorSuccess;
}

} // namespace OPX::KltAPI
