#include "PlayedCamera.h"

#include <algorithm>
#include <arpa/inet.h>
#include <chrono>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

typedef std::vector<std::uint8_t> Bytes;

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
}

std::uint32_t PlayedCamera::Register(std::uint32_t address)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return Number(m_memory, address, 4);
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
        }
    }
}

void PlayedCamera::Answer(const Bytes& question, const sockaddr_in& sender)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto command = static_cast<std::uint16_t>(Number(question, 2, 2));
    const bool search = command == 2;
    m_questions += search ? 0 : 1;
    std::uint16_t status = 0;
    std::uint16_t kind = command + 1;
    Bytes answer = Perform(command, question, status);
    if (!search && m_manner == Manner::AsksForPatience)
    {
        kind = 0x89;
        answer = {0, 0, 0xFF, 0xFF};
    }
    Bytes packet = BytesOf(status, 2);
    for (const Bytes& part : {BytesOf(kind, 2), BytesOf(answer.size(), 2), BytesOf(Number(question, 6, 2), 2), answer})
        packet.insert(packet.end(), part.begin(), part.end());
    if (!search && m_manner == Manner::AnswersHalf)
        packet.resize(packet.size() / 2);
    if (!search && m_manner == Manner::IsSlow)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const bool lost = m_manner == Manner::LosesEverySecond && m_questions % 2 != 0;
    if (search || (m_manner != Manner::KeepsSilent && !lost))
        sendto(m_sockets.front(), packet.data(), packet.size(), 0, reinterpret_cast<const sockaddr*>(&sender),
            sizeof sender);
}

PlayedCamera::Bytes PlayedCamera::Perform(std::uint16_t command, const Bytes& question, std::uint16_t& status)
{
    const std::uint32_t address = command == 2 ? 0 : Number(question, 8, 4);
    const bool reads = command == 0x80 || command == 0x84;
    const std::size_t size = command == 2      ? 0xF8
                             : command == 0x84 ? Number(question, 14, 2)
                             : command == 0x80 ? 4
                                               : question.size() - 12;
    if (address + size > m_memory.size())
    {
        status = 0x8003;
        return Bytes();
    }
    if (m_manner == Manner::Lies && address == 0x200 && m_askedForPlace)
        Store(0x200, BytesOf("File:///dev/zero"));
    m_askedForPlace = m_askedForPlace || address == 0x200;
    Bytes answer;
    if (command == 0x84)
        answer = BytesOf(address);
    if (reads || command == 2)
        answer.insert(answer.end(), m_memory.begin() + address, m_memory.begin() + address + size);
    if (!answer.empty())
        return answer;
    Store(address, Bytes(question.begin() + 12, question.end()));
    return BytesOf(1); // One access was done.
}
