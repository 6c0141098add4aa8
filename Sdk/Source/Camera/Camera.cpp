#include "KoltaCPP/Camera.h"

#include "Base/TwoCalls.h"
#include "Camera/Impls.h"

namespace OPX::KltAPI
{

CameraPtr NewCamera(const CameraRecord& record)
{
    return CameraPtr(new Camera(new FeatureContainer::Impl{record.name, record.serialNumber, record.transport,
        record.address, std::make_shared<Session>(record.connect, record.id)}));
}

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
    const KltErrorType result = Caught([&] { return m_impl->session->GetFeatures(list); });
    return result == KltErrorSuccess ? DeliverList(list, features, count) : result;
}

KltErrorType FeatureContainer::GetFeatureByName(const char* name, FeaturePtr& feature)
{
    if (name == nullptr)
        return KltErrorBadParameter;
    return Caught([&] { return m_impl->session->GetFeature(name, feature); });
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

KltErrorType Camera::Open(KltAccessModeType accessMode)
{
    if (accessMode != KltAccessModeFull)
        return KltErrorBadParameter;
    return Caught([&] { return m_impl->session->Open(); });
}

KltErrorType Camera::Close()
{
    return m_impl->session->Close();
}

} // namespace OPX::KltAPI
