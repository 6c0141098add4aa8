#ifndef PLAYEDCAMERA_H
#define PLAYEDCAMERA_H

#include <atomic>
#include <cstdint>
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
        KeepsSilent,      ///< Is found, but answers nothing else.
        AsksForPatience,  ///< For a minute, again and again.
        AnswersHalf,      ///< The second half of every answer is missing.
        LosesEverySecond, ///< Of its answers.
        IsSlow,
        Lies ///< Where its description is, when it is asked again.
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

    PlayedCamera(const std::string& address, const std::string& serialNumber);
    ~PlayedCamera();

    /// Forgets everything, and plays \a role from now on.
    void Play(const Role& role);
    void Change(Manner manner);

    std::uint32_t Register(std::uint32_t address);
    int Questions() const { return m_questions; }

private:
    typedef std::vector<std::uint8_t> Bytes;

    void Store(std::uint32_t address, const Bytes& bytes);
    void Listen();
    void Answer(const Bytes& question, const sockaddr_in& sender);
    Bytes Perform(std::uint16_t command, const Bytes& question, std::uint16_t& status);

    const std::string m_address;
    const std::string m_serialNumber;
    std::vector<int> m_sockets; ///< Its own, and those for broadcasts.
    std::mutex m_mutex;
    Bytes m_memory;
    Manner m_manner = Manner::Answers;
    std::atomic<int> m_questions{0};
    bool m_askedForPlace = false;
    std::atomic<bool> m_ending{false};
    std::thread m_thread;
};

#endif
