#ifndef U3VCHANNEL_H
#define U3VCHANNEL_H

#include "Transport/RegisterAccess.h"
#include "Transport/UsbBus.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace OPX::KltAPI
{

/// The memory of a USB3 Vision camera, over its control protocol. While it is open, nobody else can use the camera.
///
/// Not with Aravis' own device: that one fetches, unpacks and parses the camera's description before anybody can look
/// at it, and waits for as long as the camera likes.
///
/// What the camera does not answer in the time that it says it needs is asked again, with the same number. A call fails
/// with a timeout when there has been no answer for three seconds, and at the deadline in any case. One thread at a
/// time, except for IsLost().
///
/// A camera that is unplugged, or has been silent for so long, is lost: all calls fail with KltErrorDeviceNotOpen from
/// then on, whether it comes back or not.
class U3vChannel : public RegisterAccess
{
public:
    typedef std::chrono::steady_clock Clock;
    typedef std::shared_ptr<const Clock::time_point> Deadline;

    U3vChannel(UsbDevice device, Deadline deadline);

    /// Releases the camera.
    ~U3vChannel() override;

    /// Once, and before anything else.
    /// \return KltErrorInvalidAccess if another program uses the camera, or this one may not
    Failure Open();

    Failure ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer) override;
    Failure WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer) override;

    /// Reads a number of \a size bytes.
    Failure ReadNumber(std::uint64_t address, std::uint32_t size, std::uint64_t& number);

    bool IsLost() const { return m_isLost; }

private:
    typedef std::vector<std::uint8_t> Bytes;

    Failure ReadAbilities();

    /// Asks, and waits for an answer of \a size bytes, or of any number when writing.
    Failure Ask(std::uint16_t command, const Bytes& question, std::uint32_t size, Bytes& answer);
    bool Await(const Bytes& packet, std::uint32_t size, Clock::time_point& giveUp, Bytes& answer);

    /// \return how many bytes were sent or received
    std::size_t Transfer(std::uint8_t endpoint, const std::uint8_t* bytes, std::size_t size, Clock::time_point until);

    const UsbDevice m_device;
    const Deadline m_deadline;
    UsbHandle m_handle;
    std::optional<ControlInterface> m_control; ///< Ours.
    std::uint32_t m_longestRead;
    std::uint32_t m_longestWrite;
    Clock::duration m_responseTime;
    std::uint16_t m_lastId;
    bool m_isCleared = false;  ///< The stall of this question.
    Clock::time_point m_heard; ///< When the camera was heard; later if it has asked for patience.
    std::atomic<bool> m_isLost{false};
};

} // namespace OPX::KltAPI

#endif
