#include "KoltaCPP/Extensions.h"

#include "Camera/Impls.h"
#include "ErrorTexts.h"
#include "KoltaCPP/KoltaSystem.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

namespace OPX::KltAPI
{
namespace
{

const std::chrono::milliseconds TimeBetweenLooks(20);

KltErrorType Look(const std::string& serialNumber, CameraPtr& camera)
{
    unsigned int count = 0;
    if (const KltErrorType result = KoltaSystem::GetInstance().GetCameras(nullptr, count))
        return result;
    CameraPtrVector cameras(count);
    if (const KltErrorType result = KoltaSystem::GetInstance().GetCameras(cameras.data(), count))
        return count == 0 ? KltErrorNotFound : result;
    for (const CameraPtr& each : cameras)
        if (FeatureContainer::Impl::Of(*each).serialNumber == serialNumber)
        {
            camera = each;
            return KltErrorSuccess;
        }
    return KltErrorNotFound;
}

} // namespace

KltErrorType FindCamera(const char* serialNumber, unsigned int milliseconds, CameraPtr& camera)
{
    if (serialNumber == nullptr)
        return KltErrorBadParameter;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    for (;;)
    {
        const KltErrorType result = Look(serialNumber, camera);
        const auto left = end - std::chrono::steady_clock::now();
        if (result != KltErrorNotFound || left <= std::chrono::steady_clock::duration::zero())
            return result;
        std::this_thread::sleep_for(std::min<std::chrono::steady_clock::duration>(TimeBetweenLooks, left));
    }
}

const char* ErrorText(KltErrorType code)
{
    const char* const text = TextOfCode(code);
    return text == nullptr ? "The code is unknown." : text;
}

} // namespace OPX::KltAPI
