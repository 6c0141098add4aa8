#ifndef TRANSPORT_H
#define TRANSPORT_H

#include "Transport/Connection.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace OPX::KltAPI
{

/// A camera as a scan finds it.
struct CameraRecord
{
    std::string id; ///< Stays the same from scan to scan, and is unique.
    std::string name;
    std::string serialNumber;
    std::string transport; ///< One of the words of KOLTA_TRANSPORTS.
    std::string address;
    Connector connect;
};

/// A way in which cameras are reached. Called by one thread at a time.
class Transport
{
public:
    virtual ~Transport() = default;

    /// The cameras that are there now.
    virtual std::vector<CameraRecord> Scan() = 0;

    /// How often in a row a camera may be missed before it counts as gone.
    virtual int ToleratedMisses() const = 0;

    /// Whether a scan is a matter of milliseconds.
    virtual bool IsQuick() const = 0;

    /// From now on, has \a notify called whenever it is time for a scan, by any thread, if the transport hears of it.
    virtual void Watch(const std::function<void()>& /*notify*/) {}
};

/// Where the cameras were in the last scan, for their connectors: a camera can move. Any thread.
template <class Place>
class Places
{
public:
    /// Empty if the camera was not seen.
    Place Of(const std::string& id) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_byId.find(id);
        return found == m_byId.end() ? Place() : found->second;
    }

    void Replace(std::map<std::string, Place> byId)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_byId.swap(byId);
    }

private:
    mutable std::mutex m_mutex;
    std::map<std::string, Place> m_byId;
};

typedef std::vector<std::unique_ptr<Transport>> Transports;

} // namespace OPX::KltAPI

#endif
