#ifndef PLAYEDCAMERA_H
#define PLAYEDCAMERA_H

#include <atomic>
#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <netinet/in.h>

/// A GigE Vision camera that plays any role a test gives it.
class PlayedCamera
{
public:
    enum class Manner
    {
        Answers,
        KeepsSilent,        ///< Is found, but answers nothing else.
        AsksForPatience,    ///< For a minute, again and again.
        AsksForFiveSeconds, ///< Only for the width, which it tells after four, once.
        AsksForNothing,     ///< The same, again and again, but for no time at all.
        AnswersHalf,        ///< The second half of every answer is missing.
        LosesEverySecond,   ///< Of its answers.
        MixesUp,            ///< Every second answer is that for another address.
        IsSlow,
        IsOverlooked, ///< By those who look for cameras.
        WritesWords,  ///< And no memory.
        WritesHalf,   ///< Of memory, and says so.
        Lies          ///< Where its description is, when it is asked again.
    };

    struct Role
    {
        std::string address;       ///< Where it says that its description is; by default where it is.
        std::string secondAddress; ///< Where else.
        std::string description;
        std::uint32_t control = 0; ///< Who controls it.
        Manner manner = Manner::Answers;
    };

    static const std::uint32_t DescriptionAddress = 0x10000;
    static const std::uint32_t WidthAddress = 0x9000;

    PlayedCamera(const std::string& address, const std::string& serialNumber);
    ~PlayedCamera();

    /// Forgets everything, and plays \a role from now on.
    void Play(const Role& role);
    void Change(Manner manner);

    std::uint32_t Register(std::uint32_t address);

    /// The numbers of all questions of a kind that came.
    std::vector<std::uint32_t> Questions(std::uint16_t command);

private:
    typedef std::vector<std::uint8_t> Bytes;
    typedef std::chrono::steady_clock Clock;

    struct Packet
    {
        Clock::time_point due;
        Bytes bytes;
        sockaddr_in receiver;
    };

    void Store(std::uint32_t address, const Bytes& bytes);
    void Listen();
    void SendWhatIsDue();
    void Answer(const Bytes& question, const sockaddr_in& sender);
    std::uint16_t Refusal(std::uint16_t command, std::uint32_t address, std::size_t size) const;
    Bytes Perform(std::uint16_t command, const Bytes& question, std::uint16_t& status);

    const std::string m_address;
    const std::string m_serialNumber;
    std::vector<int> m_sockets; ///< Its own, and those for broadcasts.
    std::mutex m_mutex;
    Bytes m_memory;
    Manner m_manner = Manner::Answers;
    std::map<std::uint16_t, std::vector<std::uint32_t>> m_questions;
    std::vector<Packet> m_outgoing;
    bool m_isSecond = false;
    bool m_askedForPlace = false;
    bool m_askedForWidth = false;
    std::atomic<bool> m_ending{false};
    std::thread m_thread;
};

#endif
