#ifndef SESSION_H
#define SESSION_H

#include "Base/TimedMutex.h"
#include "KoltaCPP/Feature.h"
#include "Transport/Connection.h"
#include "Transport/RegisterDevice.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace OPX::KltAPI
{

/// What a camera and its features share: the connection, while there is one, and the lock around it. Aravis allows one
/// thread at a time per device.
///
/// No call takes longer than ten seconds, whatever the camera and other threads do; it fails with KltErrorTimeout then.
///
/// A session that has lost its camera stays open, but has ended: all calls fail with KltErrorDeviceNotOpen until it is
/// closed and opened again.
///
/// Lives as long as the camera or one of its features; opened again, it serves the earlier features, too.
class Session : public std::enable_shared_from_this<Session>
{
public:
    /// \param camera its id, for messages
    Session(Connector connect, std::string camera);

    KltErrorType Open();
    KltErrorType Close();

    /// The features, read from the camera at the first call after Open. The same handles until Close.
    KltErrorType GetFeatures(FeaturePtrVector& features);

    KltErrorType GetDescription(std::string& xml);

    /// The feature of this name; KltErrorNotFound if there is none.
    KltErrorType GetFeature(const std::string& name, FeaturePtr& feature);

    /// What Look() has found.
    enum class Life
    {
        GoesOn,
        HasJustEnded, ///< Said once.
        IsOver        ///< Or has not begun.
    };

    /// Looks whether the camera has been lost, without waiting for the calls of others.
    Life Look();

    /// Calls \a access with the node of this name, which it must not keep, and the connection; returns its code. No
    /// exception leaves it, and no register is read twice in it.
    template <class Access>
    KltErrorType Use(const std::string& nodeName, Access access)
    {
        return Caught([&] { return UseNode(nodeName, access); });
    }

private:
    template <class Access>
    KltErrorType UseNode(const std::string& nodeName, Access& access)
    {
        const Call call(*this);
        if (const KltErrorType refusal = call.Refusal())
            return refusal;
        ArvGcNode* node = arv_gc_get_node(m_connection.nodeMap.get(), nodeName.c_str());
        if (!ARV_IS_GC_FEATURE_NODE(node))
            return KltErrorNotFound;
        const ReadOnce readOnce(m_connection.device.get());
        return access(ARV_GC_FEATURE_NODE(node), static_cast<const Connection&>(m_connection)).code;
    }

    /// One call, from its beginning: the lock, and the deadline of what is done under it.
    class Call
    {
    public:
        explicit Call(Session& session, Connection::Clock::duration limit = CallLimit);
        ~Call();
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

        bool HasLock() const { return m_hasLock; }
        Connection::Clock::time_point Deadline() const { return m_deadline; }

        /// Why the camera cannot be used: KltErrorTimeout others take too long, KltErrorDeviceNotOpen not opened or
        /// lost; or success.
        KltErrorType Refusal() const;

    private:
        Session& m_session;
        const Connection::Clock::time_point m_deadline;
        const bool m_hasLock;
    };

    /// Ten seconds are promised. What remains is for closing the connection again, and for what the processor does
    /// after the camera's last answer.
    static constexpr std::chrono::seconds CallLimit{9};

    bool IsOpen() const { return m_connection.nodeMap != nullptr; }
    bool HasEnded();
    KltErrorType EnsureListed(const Call& call);

    const Connector m_connect;
    const std::string m_camera;
    TimedMutex m_mutex; ///< Around what follows.
    Connection m_connection;
    bool m_listed = false;
    FeaturePtrVector m_features;
    std::unordered_map<std::string, std::size_t> m_indices; ///< Of the features, by name.
};

} // namespace OPX::KltAPI

#endif
