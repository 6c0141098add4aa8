#ifndef GVCPCHANNEL_H
#define GVCPCHANNEL_H

#include "Transport/RegisterDevice.h"

#include <atomic>
#include <chrono>
#include <string>
#include <vector>

namespace OPX::KltAPI
{

/// The registers and the memory of a GigE Vision camera, over its control protocol.
///
/// Not with Aravis' own device: that one fetches, unpacks and parses the camera's description before anybody can look
/// at it, and waits for as long as the camera asks it to.
///
/// What gets lost in the network is asked for again. A call fails with a timeout when the camera has been silent for
/// three seconds, and at the deadline in any case. One thread at a time, except for Touch().
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

    /// Reads a register without waiting for its value, so that the camera knows that somebody is there. Any thread.
    void Touch(std::uint32_t address);

private:
    typedef std::vector<std::uint8_t> Bytes;

    Bytes PacketOf(std::uint16_t command, const Bytes& question);
    void Send(const Bytes& packet) const;
    bool Receive(Bytes& answer) const;
    void SetPause(Clock::duration pause);
    void ForgetLate(const Bytes& answer);
    void ForgetLateAnswers();

    /// Asks and waits for an answer of at least \a size bytes.
    Failure Ask(std::uint16_t command, const Bytes& question, std::size_t size, Bytes& answer);
    bool Converse(const Bytes& packet, std::size_t size, Bytes& answer);
    bool Await(const Bytes& packet, std::size_t size, Clock::time_point until, Bytes& answer);
    Failure WriteWords(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer);

    Deadline m_deadline;
    const int m_socket;
    std::atomic<std::uint16_t> m_lastId;
    std::uint16_t m_questionBefore = 0; ///< Its id.
    Clock::duration m_pause;            ///< After which a question is repeated.
};

} // namespace OPX::KltAPI

#endif
