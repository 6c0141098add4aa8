#include "Session/Session.h"

#include "Session/FeatureImpl.h"
#include "Session/FeatureReader.h"
#include "Session/FormulaNodes.h"

#include <utility>

namespace OPX
{
namespace KltAPI
{

Session::Session(Connector connect) : m_connect(std::move(connect))
{
}

KltErrorType Session::Open()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_connection.description)
        return KltErrorInvalidAccess;
    if (m_closing.valid())
        m_closing.get();
    Connection connection;
    const KltErrorType result = m_connect(connection);
    if (result == KltErrorSuccess)
    {
        UseOwnFormulas(connection.description.get());
        connection.copies = ValueCopiesOf(connection.xml);
        m_connection = std::move(connection);
    }
    else
        CloseLater(std::move(connection));
    return result;
}

void Session::CloseLater(Connection connection)
{
    m_closing = std::async(std::launch::async,
        [closing = std::move(connection)]() mutable { const Connection closed = std::move(closing); });
}

KltErrorType Session::Close()
{
    // The features know this session: released only after the lock was, or the last one would destroy it.
    FeaturePtrVector features;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_connection.description)
        return KltErrorDeviceNotOpen;
    Connection connection;
    std::swap(connection, m_connection);
    if (m_silent)
        CloseLater(std::move(connection));
    m_silent = false;
    m_listed = false;
    m_features.swap(features);
    m_indices.clear();
    return KltErrorSuccess;
}

KltErrorType Session::GetFeatures(FeaturePtrVector& features)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const KltErrorType result = EnsureListed();
    if (result == KltErrorSuccess)
        features = m_features;
    return result;
}

KltErrorType Session::GetFeature(const std::string& name, FeaturePtr& feature)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const KltErrorType result = EnsureListed();
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
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_connection.description)
        return KltErrorDeviceNotOpen;
    xml = m_connection.xml;
    return KltErrorSuccess;
}

KltErrorType Session::EnsureListed()
{
    if (!m_connection.description)
        return KltErrorDeviceNotOpen;
    if (m_listed)
        return KltErrorSuccess;
    if (!IsThere())
        return KltErrorTimeout;
    std::vector<FeatureData> read;
    const KltErrorType result = FeatureReader(m_connection).Read(read);
    m_silent = m_silent || result == KltErrorTimeout;
    if (result != KltErrorSuccess)
        return result;
    for (FeatureData& data : read)
    {
        m_indices.emplace(data.name, m_features.size());
        m_features.push_back(FeaturePtr(new Feature(new Feature::Impl{std::move(data), shared_from_this()})));
    }
    m_listed = true;
    return KltErrorSuccess;
}

} // namespace KltAPI
} // namespace OPX
