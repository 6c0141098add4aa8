#include "PlayedCamera.h"

#include <algorithm>
#include <arpa/inet.h>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace
{

typedef std::vector<std::uint8_t> Bytes;

// The answer to each has the next number.
const std::uint16_t Search = 0x02;
const std::uint16_t ReadRegister = 0x80;
const std::uint16_t ReadMemory = 0x84;
const std::uint16_t WriteMemory = 0x86;
const std::uint16_t Patience = 0x88; ///< There is only the answer, which asks for it.

std::uint32_t Number(const Bytes& bytes, std::size_t at, int size)
{
    std::uint32_t number = 0;
    for (int i = 0; i < size; ++i)
        number = number << 8 | bytes.at(at + i);
    return number;
}

Bytes BytesOf(std::uint32_t number, int size = 4)
{
    Bytes bytes(size);
    for (int i = size; i-- > 0; number >>= 8)
        bytes[i] = static_cast<std::uint8_t>(number);
    return bytes;
}

Bytes BytesOf(const std::string& text)
{
    return Bytes(text.begin(), text.end());
}

int Listening(const std::string& address)
{
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in name{};
    name.sin_family = AF_INET;
    name.sin_port = htons(3956);
    inet_pton(AF_INET, address.c_str(), &name.sin_addr);
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&name), sizeof name) != 0)
        std::perror("bind");
    return descriptor;
}

} // namespace

PlayedCamera::PlayedCamera(const std::string& address, const std::string& serialNumber)
    : m_address(address),
      m_serialNumber(serialNumber),
      m_sockets({Listening(address), Listening("127.255.255.255"), Listening("255.255.255.255")})
{
    Play(Role());
    m_thread = std::thread([this] { Listen(); });
}

PlayedCamera::~PlayedCamera()
{
    m_ending = true;
    m_thread.join();
    for (const int descriptor : m_sockets)
        close(descriptor);
}

void PlayedCamera::Play(const Role& role)
{
    std::ostringstream own;
    own << "Local:Camera." << (role.description.substr(0, 2) == "PK" ? "zip;" : "xml;") << std::hex
        << DescriptionAddress << ';' << role.description.size();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_manner = role.manner;
    m_askedForPlace = false;
    m_askedForWidth = false;
    m_memory.assign(DescriptionAddress + role.description.size() + 4, 0);
    Store(0x24, BytesOf(ntohl(inet_addr(m_address.c_str()))));
    Store(0x48, BytesOf("OPX"));
    Store(0x68, BytesOf("Played"));
    Store(0xD8, BytesOf(m_serialNumber));
    Store(0x200, BytesOf(role.address.empty() ? own.str() : role.address));
    Store(0x400, BytesOf(role.secondAddress == "own" ? own.str() : role.secondAddress));
    Store(0xA00, BytesOf(role.control));
    Store(DescriptionAddress, BytesOf(role.description));
}

void PlayedCamera::Change(Manner manner)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_manner = manner;
    m_askedForWidth = false;
}

std::uint32_t PlayedCamera::Register(std::uint32_t address)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return Number(m_memory, address, 4);
}

std::vector<std::uint32_t> PlayedCamera::Questions(std::uint16_t command)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_questions[command];
}

void PlayedCamera::Store(std::uint32_t address, const Bytes& bytes)
{
    std::copy(bytes.begin(), bytes.end(), m_memory.begin() + address);
}

void PlayedCamera::Listen()
{
    while (!m_ending)
    {
        std::vector<pollfd> readable;
        for (const int descriptor : m_sockets)
            readable.push_back({descriptor, POLLIN, 0});
        poll(readable.data(), readable.size(), 20);
        SendWhatIsDue();
        for (const pollfd& one : readable)
        {
            Bytes question(1024);
            sockaddr_in sender{};
            socklen_t size = sizeof sender;
            const ssize_t received = recvfrom(
                one.fd, question.data(), question.size(), MSG_DONTWAIT, reinterpret_cast<sockaddr*>(&sender), &size);
            if (received < 8)
                continue;
            question.resize(received);
            Answer(question, sender);
            SendWhatIsDue();
        }
    }
}

void PlayedCamera::SendWhatIsDue()
{
    const auto isLater = [now = Clock::now()](const Packet& packet) { return packet.due > now; };
    const auto due = std::stable_partition(m_outgoing.begin(), m_outgoing.end(), isLater);
    for (auto packet = due; packet != m_outgoing.end(); ++packet)
        sendto(m_sockets.front(), packet->bytes.data(), packet->bytes.size(), 0,
            reinterpret_cast<const sockaddr*>(&packet->receiver), sizeof packet->receiver);
    m_outgoing.erase(due, m_outgoing.end());
}

void PlayedCamera::Answer(const Bytes& question, const sockaddr_in& sender)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto command = static_cast<std::uint16_t>(Number(question, 2, 2));
    m_questions[command].push_back(Number(question, 6, 2));
    m_isSecond = command == Search ? m_isSecond : !m_isSecond;
    const auto send =
        [&](std::uint16_t kind, std::uint16_t status, const Bytes& content, std::chrono::milliseconds delay)
    {
        Bytes packet = BytesOf(status, 2);
        for (const Bytes& part :
            {BytesOf(kind + 1, 2), BytesOf(content.size(), 2), BytesOf(Number(question, 6, 2), 2), content})
            packet.insert(packet.end(), part.begin(), part.end());
        if (command != Search && m_manner == Manner::AnswersHalf)
            packet.resize(packet.size() / 2);
        m_outgoing.push_back({Clock::now() + delay, packet, sender});
    };
    std::uint16_t status = 0;
    const Bytes content = Perform(command, question, status);
    std::chrono::milliseconds delay(0);
    if (command == Search ? m_manner == Manner::IsOverlooked
                          : m_manner == Manner::KeepsSilent || (m_manner == Manner::LosesEverySecond && m_isSecond))
        return;
    if (command != Search && m_manner == Manner::AsksForPatience)
        return send(Patience, 0, BytesOf(0xFFFF), delay);
    if (command != Search && m_manner == Manner::IsSlow)
        delay = std::chrono::milliseconds(100);
    const bool asksForNothing = m_manner == Manner::AsksForNothing;
    if ((asksForNothing || m_manner == Manner::AsksForFiveSeconds) && command == ReadMemory &&
        Number(question, 8, 4) == WidthAddress)
    {
        send(Patience, 0, BytesOf(asksForNothing ? 0 : 5000), delay);
        delay = std::chrono::seconds(4);
        if (std::exchange(m_askedForWidth, true))
            return;
    }
    send(command, status, content, delay);
}

std::uint16_t PlayedCamera::Refusal(std::uint16_t command, std::uint32_t address, std::size_t size) const
{
    if (command == WriteMemory && m_manner == Manner::WritesWords)
        return 0x8001;
    if (size > 536)
        return 0x8002;
    if (address % 4 != 0 || size % 4 != 0)
        return 0x8005;
    return address + size > m_memory.size() ? 0x8003 : 0;
}

PlayedCamera::Bytes PlayedCamera::Perform(std::uint16_t command, const Bytes& question, std::uint16_t& status)
{
    if (command == Search)
        return Bytes(m_memory.begin(), m_memory.begin() + 0xF8);
    std::uint32_t address = Number(question, 8, 4);
    const std::size_t size = command == ReadMemory     ? Number(question, 14, 2)
                             : command == ReadRegister ? 4
                                                       : question.size() - 12;
    status = Refusal(command, address, size);
    if (status != 0)
        return Bytes();
    if (m_manner == Manner::Lies && address == 0x200 && m_askedForPlace)
        Store(0x200, BytesOf("File:///dev/zero"));
    m_askedForPlace = m_askedForPlace || address == 0x200;
    if (command == ReadMemory && m_manner == Manner::MixesUp && m_isSecond)
        address = 0;
    Bytes answer;
    if (command == ReadMemory)
        answer = BytesOf(address);
    if (command == ReadMemory || command == ReadRegister)
        answer.insert(answer.end(), m_memory.begin() + address, m_memory.begin() + address + size);
    if (!answer.empty())
        return answer;
    const bool isHalf = command == WriteMemory && m_manner == Manner::WritesHalf;
    Store(address, Bytes(question.begin() + 12, question.end() - (isHalf ? size / 2 : 0)));
    // How many registers, or bytes.
    return BytesOf(command == WriteMemory ? size / (isHalf ? 2 : 1) : 1);
}
