#include "KoltaCPP/Camera.h"

#include "Base/TwoCalls.h"
#include "Session/FeatureImpl.h"
#include "System/CameraImpl.h"

#include <algorithm>

namespace OPX
{
namespace KltAPI
{

FeatureContainer::FeatureContainer(Impl* impl) : m_impl(impl)
{
}

FeatureContainer::~FeatureContainer()
{
    delete m_impl;
}

KltErrorType FeatureContainer::GetFeatures(FeaturePtr* features, unsigned int& count)
{
    FeaturePtrVector list;
    const KltErrorType result = m_impl->session->GetFeatures(list);
    return result == KltErrorSuccess ? DeliverList(list, features, count) : result;
}

KltErrorType FeatureContainer::GetFeatureByName(const char* name, FeaturePtr& feature)
{
    if (name == nullptr)
        return KltErrorBadParameter;
    return m_impl->session->GetFeature(name, feature);
}

Camera::Camera(Impl* impl) : FeatureContainer(impl)
{
}

Camera::~Camera()
{
    m_impl->session->Close();
}

KltErrorType Camera::GetName(char* name, unsigned int& length) const
{
    return DeliverText(m_impl->name, name, length);
}

KltErrorType Camera::GetSerialNumber(char* serialNumber, unsigned int& length) const
{
    return DeliverText(m_impl->serialNumber, serialNumber, length);
}

KltErrorType Camera::GetTransport(char* transport, unsigned int& length) const
{
    return DeliverText(m_impl->transport, transport, length);
}

KltErrorType Camera::GetAddress(char* address, unsigned int& length) const
{
    return DeliverText(m_impl->address, address, length);
}

KltErrorType Camera::GetDescription(char* description, unsigned int& length) const
{
    std::string xml;
    const KltErrorType result = m_impl->session->GetDescription(xml);
    return result == KltErrorSuccess ? DeliverText(xml, description, length) : result;
}

KltErrorType Camera::Open(KltAccessModeType accessMode)
{
    if (accessMode != KltAccessModeFull)
        return KltErrorBadParameter;
    return m_impl->session->Open();
}

KltErrorType Camera::Close()
{
    return m_impl->session->Close();
}

} // namespace KltAPI
} // namespace OPX
