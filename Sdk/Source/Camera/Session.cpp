#include "Camera/Session.h"

#include "Base/Report.h"
#include "Camera/FeatureReader.h"
#include "Camera/Impls.h"

#include <utility>

namespace OPX::KltAPI
{

Session::Call::Call(Session& session, Connection::Clock::duration limit)
    : m_session(session),
      m_deadline(Connection::Clock::now() + limit),
      m_hasLock(session.m_mutex.LockUntil(m_deadline))
{
    if (m_hasLock)
        *session.m_connection.deadline = m_deadline;
}

Session::Call::~Call()
{
    if (m_hasLock)
        m_session.m_mutex.Unlock();
}

KltErrorType Session::Call::Refusal() const
{
    if (!m_hasLock)
        return KltErrorTimeout;
    return m_session.IsOpen() && !m_session.HasEnded() ? KltErrorSuccess : KltErrorDeviceNotOpen;
}

Session::Session(Connector connect, std::string camera) : m_connect(std::move(connect)), m_camera(std::move(camera))
{
}

KltErrorType Session::Open()
{
    const Call call(*this);
    if (!call.HasLock() || IsOpen())
        return call.HasLock() ? KltErrorInvalidAccess : KltErrorTimeout;
    Connection connection;
    *connection.deadline = call.Deadline();
    const Failure failure = m_connect(connection);
    if (failure.reason)
        Report("The description of " + m_camera + " cannot be used: " + failure.reason.InOneLine());
    if (!failure)
        m_connection = std::move(connection);
    return failure.code;
}

KltErrorType Session::Close()
{
    // The features own this session: they are released only after the lock, or the last one would destroy it.
    FeaturePtrVector features;
    const Call call(*this);
    if (!call.HasLock() || !IsOpen())
        return call.HasLock() ? KltErrorDeviceNotOpen : KltErrorTimeout;
    Connection closed;
    std::swap(closed, m_connection);
    m_listed = false;
    m_features.swap(features);
    m_indices.clear();
    return KltErrorSuccess;
}

KltErrorType Session::GetFeatures(FeaturePtrVector& features)
{
    const Call call(*this);
    const KltErrorType result = EnsureListed(call);
    if (result == KltErrorSuccess)
        features = m_features;
    return result;
}

KltErrorType Session::GetFeature(const std::string& name, FeaturePtr& feature)
{
    const Call call(*this);
    const KltErrorType result = EnsureListed(call);
    if (result != KltErrorSuccess)
        return result;
    const auto index = m_indices.find(name);
    if (index == m_indices.end())
        return KltErrorNotFound;
    feature = m_features[index->second];
    return KltErrorSuccess;
}

KltErrorType Session::GetDescription(std::string& xml)
{
    const Call call(*this);
    const KltErrorType refusal = call.Refusal();
    if (refusal == KltErrorSuccess)
        xml = m_connection.description->xml;
    return refusal;
}

Session::Life Session::Look()
{
    const Call call(*this, Connection::Clock::duration::zero());
    if (!call.HasLock())
        return Life::GoesOn;
    if (!IsOpen())
        return Life::IsOver;
    if (!HasEnded())
        return Life::GoesOn;
    return std::exchange(m_connection.isEndTold, true) ? Life::IsOver : Life::HasJustEnded;
}

bool Session::HasEnded()
{
    if (!m_connection.isThere())
        m_connection.hasEnded = true;
    return m_connection.hasEnded;
}

KltErrorType Session::EnsureListed(const Call& call)
{
    const KltErrorType refusal = call.Refusal();
    if (refusal != KltErrorSuccess || m_listed)
        return refusal;
    std::vector<FeatureData> read;
    if (Failure failure = FeatureReader(m_connection).Read(read))
        return failure.code;
    for (FeatureData& data : read)
    {
        m_indices.emplace(data.name, m_features.size());
        m_features.push_back(FeaturePtr(new Feature(new Feature::Impl{std::move(data), shared_from_this()})));
    }
    m_listed = true;
    return KltErrorSuccess;
}

} // namespace OPX::KltAPI
