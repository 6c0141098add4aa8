#ifndef SESSION_H
#define SESSION_H

#include "Base/GlibPtr.h"
#include "Description/ValueCopies.h"
#include "KoltaCPP/Feature.h"
#include "Session/NodeState.h"

#include <arv.h>

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

namespace OPX
{
namespace KltAPI
{

/// An open connection to a camera. The description goes first.
struct Connection
{
    ObjectPtr<ArvDevice> device;
    ObjectPtr<ArvGc> description;
    std::string xml; ///< What the description was made from.

    /// How long the listing of all features may take. A camera that dies meanwhile costs 2.5 s for every register:
    /// nobody waits longer than this for all of them.
    std::chrono::seconds patience{10};

    TakeUnknown takeUnknown; ///< For simulated cameras.

    /// Whether the camera is still there. Empty for cameras that do not answer when they are gone.
    std::function<bool()> isThere;

    ValueCopies copies; ///< Filled in by the session.
};

/// Connects to one camera.
typedef std::function<KltErrorType(Connection& connection)> Connector;

/// What a camera and its features share: the connection, while there is one, and the lock around it. Aravis allows one
/// thread at a time per device.
///
/// Lives as long as the camera or one of its features; opened again, it serves the features of before.
class Session : public std::enable_shared_from_this<Session>
{
public:
    explicit Session(Connector connect);

    KltErrorType Open();
    KltErrorType Close();

    /// The features, read from the camera at the first call after Open. The same handles until Close.
    KltErrorType GetFeatures(FeaturePtrVector& features);

    KltErrorType GetDescription(std::string& xml);

    /// The feature of this name; -3 if there is none.
    KltErrorType GetFeature(const std::string& name, FeaturePtr& feature);

    /// Calls \a access with the node of this name, which it must not keep, and the connection; returns its result.
    template <class Access>
    KltErrorType Use(const std::string& nodeName, Access access)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_connection.description)
            return KltErrorDeviceNotOpen;
        if (!IsThere())
            return KltErrorTimeout;
        ArvGcNode* node = arv_gc_get_node(m_connection.description.get(), nodeName.c_str());
        if (!ARV_IS_GC_FEATURE_NODE(node))
            return KltErrorNotFound;
        const KltErrorType result = access(ARV_GC_FEATURE_NODE(node), static_cast<const Connection&>(m_connection));
        m_silent = m_silent || result == KltErrorTimeout;
        return result;
    }

private:
    bool IsThere() const { return !m_connection.isThere || m_connection.isThere(); }
    KltErrorType EnsureListed();

    /// A camera that is dead or does not listen to us is said goodbye for five seconds and more: nobody waits for that,
    /// but who opens it again.
    void CloseLater(Connection connection);

    const Connector m_connect;
    std::mutex m_mutex;
    Connection m_connection;
    bool m_silent = false;       ///< The camera did not answer once.
    std::future<void> m_closing; ///< The end of an earlier connection.
    bool m_listed = false;
    FeaturePtrVector m_features;
    std::unordered_map<std::string, std::size_t> m_indices; ///< Of the features, by name.
};

} // namespace KltAPI
} // namespace OPX

#endif
