#include "Transport/U3vChannel.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

using std::chrono::milliseconds;

const std::uint32_t Prefix = 0x43563355; // "U3VC"
const std::uint16_t WantsAnswer = 0x4000;

// The answer to each has the next number.
const std::uint16_t ReadCommand = 0x0800;
const std::uint16_t WriteCommand = 0x0802;
const std::uint16_t PatienceAnswer = 0x0805; ///< The camera asks for it.

const std::uint32_t PrologueSize = 12;
const std::uint32_t AddressSize = 8;

// Where the camera says how long its answers take and, behind the address of more registers, how long packets may be.
const std::uint64_t ResponseTimeRegister = 0x1CC;
const std::uint64_t MoreRegisters = 0x1D8;
const std::uint64_t CommandRegister = 0x14;
const std::uint64_t AnswerRegister = 0x18;

/// For cameras that say nothing sensible.
const std::uint32_t SureBlock = 64;
const std::uint32_t LongestBlock = 0xFF00;
const milliseconds UsualResponseTime(500);
const milliseconds ShortestResponseTime(100);

const milliseconds LongestSilence(3000);

/// As long as the system tries to clear a stall of a camera that is dead.
const milliseconds LongestClearing(5000);

void Append(std::vector<std::uint8_t>& bytes, std::uint64_t number, int size)
{
    for (int i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

std::uint64_t NumberAt(const std::uint8_t* bytes, std::uint32_t size)
{
    std::uint64_t number = 0;
    while (size > 0)
        number = number << 8 | bytes[--size];
    return number;
}

std::uint16_t KindOf(const std::vector<std::uint8_t>& packet)
{
    return static_cast<std::uint16_t>(NumberAt(packet.data() + 6, 2));
}

/// How much fits into a packet of this length beside what else is in there.
std::uint32_t BlockOf(std::uint64_t packetLength, std::uint32_t rest)
{
    const std::uint64_t block = packetLength < rest ? 0 : (packetLength - rest) & ~std::uint64_t(7);
    return block == 0 ? SureBlock : static_cast<std::uint32_t>(std::min<std::uint64_t>(block, LongestBlock));
}

/// Whether it is the answer to this question or a request for patience with it.
bool IsAnswerTo(const std::vector<std::uint8_t>& packet, const std::vector<std::uint8_t>& answer)
{
    if (answer.size() < PrologueSize || NumberAt(answer.data(), 4) != Prefix ||
        !std::equal(packet.begin() + 10, packet.begin() + 12, answer.begin() + 10))
        return false;
    return KindOf(answer) == KindOf(packet) + 1 ||
           (KindOf(answer) == PatienceAnswer && answer.size() >= PrologueSize + 4);
}

} // namespace

U3vChannel::U3vChannel(UsbDevice device, Deadline deadline)
    : m_device(std::move(device)),
      m_deadline(std::move(deadline)),
      m_longestRead(SureBlock),
      m_longestWrite(SureBlock),
      m_responseTime(UsualResponseTime),
      // Answers to whoever used the camera before may still be waiting.
      m_lastId(static_cast<std::uint16_t>(Clock::now().time_since_epoch() / std::chrono::microseconds(1)))
{
}

U3vChannel::~U3vChannel()
{
    if (m_control)
        libusb_release_interface(m_handle.get(), m_control->number);
}

Failure U3vChannel::Open()
{
    const std::optional<ControlInterface> control = ControlInterfaceOf(m_device);
    if (!control)
        return KltErrorNotFound;
    int error = 0;
    m_handle = OpenUsb(m_device, error);
    if (error == 0)
        error = libusb_claim_interface(m_handle.get(), control->number);
    if (error != 0)
        return CodeOfUsb(error);
    m_control = control;
    return ReadAbilities();
}

Failure U3vChannel::ReadAbilities()
{
    std::uint64_t responseTime = 0;
    std::uint64_t registers = 0;
    std::uint64_t command = 0;
    std::uint64_t answer = 0;
    if (Failure failure = ReadNumber(ResponseTimeRegister, 4, responseTime))
        return failure;
    if (Failure failure = ReadNumber(MoreRegisters, 8, registers))
        return failure;
    if (Failure failure = ReadNumber(registers + CommandRegister, 4, command))
        return failure;
    if (Failure failure = ReadNumber(registers + AnswerRegister, 4, answer))
        return failure;
    m_responseTime = std::max(milliseconds(responseTime), ShortestResponseTime);
    m_longestWrite = BlockOf(command, PrologueSize + AddressSize);
    m_longestRead = BlockOf(answer, PrologueSize);
    return KltErrorSuccess;
}

std::size_t U3vChannel::Transfer(
    std::uint8_t endpoint, const std::uint8_t* bytes, std::size_t size, Clock::time_point until)
{
    int done = 0;
    const auto wait = std::chrono::ceil<milliseconds>(until - Clock::now()).count();
    const int error = libusb_bulk_transfer(m_handle.get(), endpoint, const_cast<std::uint8_t*>(bytes),
        static_cast<int>(size), &done, static_cast<unsigned int>(std::max<decltype(wait)>(wait, 1)));
    if (error == LIBUSB_ERROR_NO_DEVICE)
        m_isLost = true;
    else if (error == LIBUSB_ERROR_PIPE && Clock::now() + LongestClearing < *m_deadline &&
             !std::exchange(m_isCleared, true))
        libusb_clear_halt(m_handle.get(), endpoint);
    else if (error != 0 && error != LIBUSB_ERROR_TIMEOUT && error != LIBUSB_ERROR_OVERFLOW)
        std::this_thread::sleep_until(until); // What is broken is not asked in a hurry.
    return static_cast<std::size_t>(std::max(done, 0));
}

Failure U3vChannel::Ask(std::uint16_t command, const Bytes& question, std::uint32_t size, Bytes& answer)
{
    Bytes packet;
    Append(packet, Prefix, 4);
    Append(packet, WantsAnswer, 2);
    Append(packet, command, 2);
    Append(packet, question.size(), 2);
    Append(packet, ++m_lastId, 2);
    packet.insert(packet.end(), question.begin(), question.end());
    m_isCleared = false;
    m_heard = Clock::now();
    const Clock::duration patience = std::max<Clock::duration>(m_responseTime, LongestSilence);
    Clock::time_point giveUp = m_heard + patience;
    bool isAnswered = false;
    while (!isAnswered && !m_isLost && Clock::now() < std::min(giveUp, *m_deadline))
    {
        const Clock::time_point until = std::min({Clock::now() + m_responseTime, giveUp, *m_deadline});
        isAnswered = Transfer(m_control->out, packet.data(), packet.size(), until) == packet.size() &&
                     Await(packet, size, giveUp, answer);
    }
    if (m_isLost)
        return KltErrorDeviceNotOpen;
    m_isLost = !isAnswered && Clock::now() - m_heard >= patience;
    if (!isAnswered)
        return KltErrorTimeout;
    if (const KltErrorType refusal = CodeOfState(static_cast<std::uint16_t>(NumberAt(answer.data() + 4, 2))))
        return refusal;
    answer.erase(answer.begin(), answer.begin() + PrologueSize);
    return KltErrorSuccess;
}

bool U3vChannel::Await(const Bytes& packet, std::uint32_t size, Clock::time_point& giveUp, Bytes& answer)
{
    const std::size_t packetSize = m_control->packetSize;
    const std::size_t room = (PrologueSize + std::max<std::size_t>(size, 4) + packetSize - 1) / packetSize * packetSize;
    Clock::time_point until = std::min(Clock::now() + m_responseTime, giveUp);
    while (!m_isLost && Clock::now() < std::min(until, *m_deadline))
    {
        answer.resize(room);
        answer.resize(Transfer(m_control->in, answer.data(), room, std::min(until, *m_deadline)));
        if (!answer.empty())
            m_heard = Clock::now();
        // Others are late, or damaged: as good as none.
        if (!IsAnswerTo(packet, answer))
            continue;
        if (KindOf(answer) == PatienceAnswer)
        {
            const milliseconds asked(NumberAt(answer.data() + PrologueSize + 2, 2));
            until = Clock::now() + std::max<Clock::duration>(asked, m_responseTime);
            giveUp = until + LongestSilence;
            m_heard = std::min(until, *m_deadline);
        }
        else if (NumberAt(answer.data() + 4, 2) != 0 || KindOf(packet) == WriteCommand ||
                 answer.size() == PrologueSize + size)
            return true;
    }
    return false;
}

Failure U3vChannel::ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer)
{
    for (std::uint32_t done = 0, length = 0; done < size; done += length)
    {
        length = std::min(size - done, m_longestRead);
        Bytes question;
        Bytes answer;
        Append(question, address + done, AddressSize);
        Append(question, 0, 2);
        Append(question, length, 2);
        if (Failure failure = Ask(ReadCommand, question, length, answer))
            return failure;
        std::copy(answer.begin(), answer.end(), buffer + done);
    }
    return KltErrorSuccess;
}

Failure U3vChannel::WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer)
{
    for (std::uint32_t done = 0, length = 0; done < size; done += length)
    {
        length = std::min(size - done, m_longestWrite);
        Bytes question;
        Bytes answer;
        Append(question, address + done, AddressSize);
        question.insert(question.end(), buffer + done, buffer + done + length);
        if (Failure failure = Ask(WriteCommand, question, 0, answer))
            return failure;
        // How much was written, if the camera says it.
        const std::uint64_t written = answer.size() < 4 ? 0 : NumberAt(answer.data() + 2, 2);
        if (written != 0 && written < length)
            return KltErrorIncomplete;
    }
    return KltErrorSuccess;
}

Failure U3vChannel::ReadNumber(std::uint64_t address, std::uint32_t size, std::uint64_t& number)
{
    Bytes bytes(size);
    Failure failure = ReadMemory(address, size, bytes.data());
    number = NumberAt(bytes.data(), size);
    return failure;
}

} // namespace OPX::KltAPI
