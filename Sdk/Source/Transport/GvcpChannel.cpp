#include "Transport/GvcpChannel.h"

#include <algorithm>
#include <arpa/inet.h>
#include <poll.h>
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

const std::uint16_t NotImplemented = 0x8001;

/// For the states from NotImplemented on.
const KltErrorType Refusals[] = {
    KltErrorNotImplemented,
    KltErrorBadParameter,  // The parameter is invalid,
    KltErrorInternalFault, // the address is,
    KltErrorInvalidAccess, // it cannot be written,
    KltErrorInternalFault, // it is not aligned;
    KltErrorInvalidAccess, // the access is denied,
    KltErrorInvalidAccess, // or the camera is busy.
};

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

int Connected(const std::string& address)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in camera{};
    camera.sin_family = AF_INET;
    camera.sin_port = htons(Port);
    // Connected: what others send is not received.
    if (inet_pton(AF_INET, address.c_str(), &camera.sin_addr) == 1 &&
        connect(descriptor, reinterpret_cast<const sockaddr*>(&camera), sizeof camera) == 0)
        return descriptor;
    close(descriptor);
    return -1;
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
      m_socket(Connected(address)),
      m_lastId(0),
      m_pause(ShortestPause)
{
}

GvcpChannel::~GvcpChannel()
{
    if (m_socket != -1)
        close(m_socket);
}

void GvcpChannel::SetDeadline(Deadline deadline)
{
    m_deadline = std::move(deadline);
}

GvcpChannel::Bytes GvcpChannel::PacketOf(std::uint16_t command, const Bytes& question)
{
    std::uint16_t id = ++m_lastId;
    while (id == 0)
        id = ++m_lastId;
    // A command that asks for an answer.
    Bytes packet = BytesOf({0x42010000U | command, question.size() << 16 | id});
    packet.insert(packet.end(), question.begin(), question.end());
    return packet;
}

void GvcpChannel::Send(const Bytes& packet) const
{
    // What cannot be sent now is as good as lost.
    static_cast<void>(send(m_socket, packet.data(), packet.size(), MSG_DONTWAIT | MSG_NOSIGNAL));
}

void GvcpChannel::Touch(std::uint32_t address)
{
    Send(PacketOf(ReadRegisterCommand, BytesOf({address})));
}

void GvcpChannel::SetPause(Clock::duration pause)
{
    m_pause = std::max<Clock::duration>(ShortestPause, std::min<Clock::duration>(LongestPause, pause));
}

/// For an answer to a question other than the open one.
void GvcpChannel::ForgetLate(const Bytes& answer)
{
    // Answered twice: nothing was lost, we have only been impatient.
    if (answer.size() >= HeaderSize && Word(answer.data() + 6) == m_questionBefore)
        SetPause(2 * m_pause);
}

bool GvcpChannel::Receive(Bytes& answer) const
{
    answer.resize(LongestAnswer);
    const ssize_t received = recv(m_socket, answer.data(), answer.size(), MSG_DONTWAIT);
    answer.resize(static_cast<std::size_t>(std::max<ssize_t>(received, 0)));
    return received >= 0;
}

void GvcpChannel::ForgetLateAnswers()
{
    Bytes answer;
    // No more than fit into the socket: a camera could send them faster than they are read.
    for (int i = 0; i < 1000 && Receive(answer); ++i)
        ForgetLate(answer);
}

Failure GvcpChannel::Ask(std::uint16_t command, const Bytes& question, std::size_t size, Bytes& answer)
{
    const Bytes packet = PacketOf(command, question);
    ForgetLateAnswers();
    const bool answered = Converse(packet, size, answer);
    m_questionBefore = Word(packet.data() + 6);
    if (!answered)
        return KltErrorTimeout;
    if (const std::uint16_t status = Word(answer.data()))
    {
        const std::size_t refusal = status - std::size_t(NotImplemented);
        const bool known = status >= NotImplemented && refusal < std::size(Refusals);
        return known ? Refusals[refusal] : static_cast<KltErrorType>(KltErrorInternalFault);
    }
    answer.erase(answer.begin(), answer.begin() + HeaderSize);
    return KltErrorSuccess;
}

bool GvcpChannel::Converse(const Bytes& packet, std::size_t size, Bytes& answer)
{
    const Clock::time_point start = Clock::now();
    const Clock::time_point giveUp = std::min(start + Patience, *m_deadline);
    Clock::duration pause = m_pause;
    for (Clock::time_point now = start; now < giveUp; now = Clock::now())
    {
        Send(packet);
        if (Await(packet, size, std::min(now + pause, giveUp), answer))
        {
            // Only the answer to the first question shows how quick the camera is.
            if (now == start)
                SetPause(2 * (Clock::now() - start));
            return true;
        }
        pause = std::min<Clock::duration>(2 * pause, LongestPause);
    }
    return false;
}

bool GvcpChannel::Await(const Bytes& packet, std::size_t size, Clock::time_point until, Bytes& answer)
{
    for (Clock::time_point now = Clock::now(); now < until; now = Clock::now())
    {
        pollfd readable = {m_socket, POLLIN, 0};
        const auto wait = std::chrono::duration_cast<milliseconds>(until - now).count() + 1;
        if (poll(&readable, 1, static_cast<int>(wait)) <= 0 || !Receive(answer) || answer.size() < HeaderSize)
            continue;
        const std::uint16_t kind = Word(answer.data() + 2);
        const std::size_t length = answer.size() - HeaderSize;
        if (!std::equal(packet.begin() + 6, packet.begin() + 8, answer.begin() + 6))
            ForgetLate(answer);
        else if (kind == PendingAnswer && length >= 4)
            until = std::min(Clock::now() + milliseconds(Word(answer.data() + HeaderSize + 2)), *m_deadline);
        // Damaged answers are as good as lost.
        else if (Word(answer.data()) != 0 || (kind == Word(packet.data() + 2) + 1 && length >= size))
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
        Bytes bytes = BytesOf({address + done});
        bytes.insert(bytes.end(), buffer + done, buffer + std::min(done + BlockSize, size));
        Failure failure = Ask(WriteMemoryCommand, bytes, 0, bytes);
        if (failure.code == KltErrorNotImplemented && done == 0 && size % 4 == 0)
            return WriteWords(address, size, buffer);
        if (failure)
            return failure;
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
