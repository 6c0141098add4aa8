#include "Cameras/SdkExtensions.h"

#include "Base/ExitCodes.h"
#include "SdkReads.h"

#if __has_include(<KoltaCPP/Extensions.h>)

#include "Schema/Number.h"

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

std::vector<Limit> PresentLimits(const Feature& feature)
{
    KltInt64_t whole[3];
    double real[3];
    if (GetRange(feature, whole[0], whole[1], whole[2]) == KltErrorSuccess)
        return {
            {"Min", std::to_string(whole[0])}, {"Max", std::to_string(whole[1])}, {"Inc", std::to_string(whole[2])}};
    if (GetRange(feature, real[0], real[1], real[2]) == KltErrorSuccess)
        return {{"Min", DecimalText(real[0]), true}, {"Max", DecimalText(real[1]), true},
            {"Inc", DecimalText(real[2]), true}};
    if (GetLength(feature, whole[0]) == KltErrorSuccess)
        return {{"Length", std::to_string(whole[0])}};
    return {};
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

std::vector<Limit> PresentLimits(const Feature&)
{
    return {};
}

#endif
