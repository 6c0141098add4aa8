#include "Cameras/SdkExtensions.h"

#include "Base/ExitCodes.h"
#include "SdkReads.h"

#if __has_include(<KoltaCPP/Extensions.h>)

#include <KoltaCPP/Extensions.h>

using namespace OPX::KltAPI;

namespace
{

std::string Delivered(const Camera& camera, KltErrorType (*getter)(const Camera&, char*, unsigned int&))
{
    std::string text;
    ReadText([&](char* buffer, unsigned int& length) { return getter(camera, buffer, length); }, text);
    return text;
}

} // namespace

void RequireDescriptions()
{
}

CameraPtr SimulatedCamera(const std::string& xml, const std::string& modelName, const std::string& path)
{
    CameraPtr camera;
    FromCheckedDescription(xml.data(), xml.size(), modelName.c_str(), path.empty() ? nullptr : path.c_str(), camera);
    return camera;
}

std::string DescriptionOf(const Camera& camera)
{
    return Delivered(camera, &GetDescription);
}

std::string TransportOf(const Camera& camera)
{
    return Delivered(camera, &GetTransport);
}

std::string AddressOf(const Camera& camera)
{
    return Delivered(camera, &GetAddress);
}

#else

using namespace OPX::KltAPI;

void RequireDescriptions()
{
    throw CommandError(ExitCamera,
        "The camera SDK that kolta-classgen was built with cannot do this: it has no operations for descriptions.");
}

CameraPtr SimulatedCamera(const std::string&, const std::string&, const std::string&)
{
    return CameraPtr();
}

std::string DescriptionOf(const Camera&)
{
    return std::string();
}

std::string TransportOf(const Camera&)
{
    return std::string();
}

std::string AddressOf(const Camera&)
{
    return std::string();
}

#endif
