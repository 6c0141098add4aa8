#include "KoltaCPP/Extensions.h"

#include "Base/Report.h"
#include "Base/TwoCalls.h"
#include "Camera/Impls.h"
#include "Document/Texts.h"
#include "Transport/SimulatedCamera.h"

#include <utility>

namespace OPX::KltAPI
{
namespace
{

/// The description comes without what the check has found in it, but for the name.
SafeDescription WithFindings(std::string xml, const char* modelName)
{
    SafeDescription description;
    // Few descriptions have these. The name of an element is in ASCII in each encoding that passes the check.
    if (xml.find("pValueCopy") != std::string::npos || xml.find("ValidValueSet") != std::string::npos)
        description = CheckDescription(xml, modelName);
    description.xml = std::move(xml);
    description.modelName = modelName;
    return description;
}

} // namespace

KltErrorType FromDescription(const char* path, CameraPtr& camera)
{
    DescriptionProblem problem;
    const KltErrorType result = FromDescription(path, camera, problem);
    if (result == KltErrorNotFound)
        Report(std::string(path) + ": " + Problem{problem.text, problem.line}.InOneLine());
    return result;
}

KltErrorType FromDescription(const char* path, CameraPtr& camera, DescriptionProblem& problem)
{
    if (path == nullptr)
        return KltErrorBadParameter;
    return Caught(
        [&]() -> KltErrorType
        {
            const DescriptionFile file(path);
            if (file.IsUsable())
                camera = NewCamera(RecordOf(file));
            else
                problem = {WithoutControls(file.Problem().text), file.Problem().line};
            return file.IsUsable() ? KltErrorSuccess : KltErrorNotFound;
        });
}

KltErrorType FromCheckedDescription(
    const char* xml, std::size_t size, const char* modelName, const char* path, CameraPtr& camera)
{
    if (xml == nullptr || modelName == nullptr)
        return KltErrorBadParameter;
    return Caught(
        [&]
        {
            camera = NewCamera(RecordOf(WithFindings(std::string(xml, size), modelName), path == nullptr ? "" : path));
            return KltErrorSuccess;
        });
}

KltErrorType GetTransport(const Camera& camera, char* transport, unsigned int& length)
{
    return DeliverText(FeatureContainer::Impl::Of(camera).transport, transport, length);
}

KltErrorType GetAddress(const Camera& camera, char* address, unsigned int& length)
{
    return DeliverText(FeatureContainer::Impl::Of(camera).address, address, length);
}

KltErrorType GetDescription(const Camera& camera, char* description, unsigned int& length)
{
    std::string xml;
    const KltErrorType result = Caught([&] { return FeatureContainer::Impl::Of(camera).session->GetDescription(xml); });
    return result == KltErrorSuccess ? DeliverText(xml, description, length) : result;
}

} // namespace OPX::KltAPI
