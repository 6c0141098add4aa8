#ifndef GVCPCHANNEL_H
#define GVCPCHANNEL_H

#include "Transport/RegisterAccess.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace OPX::KltAPI
{

/// The registers and the memory of a GigE Vision camera, over its control protocol.
///
/// Not with Aravis' own device: that one fetches, unpacks and parses the camera's description before anybody can look
/// at it, and waits for as long as the camera asks it to.
///
/// What gets lost in the network is asked for again, writing less hastily than reading: there are cameras that do again
/// what they are told again. A call fails with a timeout when the camera has been silent for three seconds, and at the
/// deadline in any case. One thread at a time, except for Touch() and IsLost().
///
/// A camera that has been silent for so long, or says that nobody or somebody else controls it, is lost: all calls fail
/// with KltErrorDeviceNotOpen from then on, whether it comes back or not.
class GvcpChannel : public RegisterAccess
{
public:
    typedef std::chrono::steady_clock Clock;
    typedef std::shared_ptr<const Clock::time_point> Deadline;

    /// \param address the camera's address in the network; nothing answers if it is not an address
    GvcpChannel(const std::string& address, Deadline deadline);
    ~GvcpChannel() override;

    /// From now on, calls end at another deadline.
    void SetDeadline(Deadline deadline);

    Failure ReadRegister(std::uint64_t address, std::uint32_t& value) override;
    Failure WriteRegister(std::uint64_t address, std::uint32_t value) override;
    Failure ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer) override;
    Failure WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer) override;

    /// Asks who controls the camera, without waiting for the answer, so that the camera knows that somebody is there.
    /// Looks at earlier answers.
    void Touch();

    bool IsLost() const { return m_isLost; }

protected:
    static constexpr std::uint32_t ControlRegister = 0xA00;
    static constexpr std::uint32_t Controlled = 2; ///< By one who lets others read.

private:
    typedef std::vector<std::uint8_t> Bytes;

    Bytes PacketOf(std::uint16_t command, const Bytes& question, std::uint16_t idFlag);
    void Send(const Bytes& packet) const;
    bool Receive(Bytes& answer);
    void SetPause(Clock::duration pause);
    void TakeIn(const Bytes& answer);
    void TakeInLateAnswers();
    bool IsSilent() const;

    /// Asks and waits for an answer of at least \a size bytes.
    Failure Ask(std::uint16_t command, const Bytes& question, std::size_t size, Bytes& answer);
    bool Converse(const Bytes& packet, std::size_t size, Bytes& answer);
    bool Await(const Bytes& packet, std::size_t size, Clock::duration pause, Clock::time_point& giveUp, Bytes& answer);
    Failure WriteWords(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer);

    Deadline m_deadline;
    std::atomic<std::uint16_t> m_lastId{0};
    std::atomic<bool> m_isLost{false};
    std::mutex m_mutex;                 ///< Held by who receives; around what follows.
    std::vector<int> m_sockets;         ///< One, as soon as the camera has answered.
    std::uint16_t m_questionBefore = 0; ///< Its id.
    Clock::duration m_pause;            ///< After which a question is repeated.
    Clock::time_point m_heard;          ///< When the camera was heard; later if it has asked for patience.
};

} // namespace OPX::KltAPI

#endif
