#include "Cameras/SdkExtensions.h"

#include "SdkReads.h"

#include <KoltaCPP/Extensions.h>

using namespace OPX::KltAPI;

namespace
{

std::string Read(const Camera& camera, KltErrorType (*getter)(const Camera&, char*, unsigned int&))
{
    std::string text;
    ReadText([&](char* buffer, unsigned int& length) { return getter(camera, buffer, length); }, text);
    return text;
}

} // namespace

CameraPtr SimulatedCamera(const std::string& xml, const std::string& modelName, const std::string& path)
{
    CameraPtr camera;
    FromCheckedDescription(xml.data(), xml.size(), modelName.c_str(), path.empty() ? nullptr : path.c_str(), camera);
    return camera;
}

std::string DescriptionOf(const Camera& camera)
{
    return Read(camera, &GetDescription);
}

std::string TransportOf(const Camera& camera)
{
    return Read(camera, &GetTransport);
}

std::string AddressOf(const Camera& camera)
{
    return Read(camera, &GetAddress);
}
