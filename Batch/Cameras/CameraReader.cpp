#include "Cameras/CameraReader.h"

#include "Cameras/InputDescription.h"
#include "Cameras/SdkExtensions.h"
#include "Cameras/SdkSession.h"
#include "SdkReads.h"

#include <functional>
#include <future>
#include <mutex>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

const std::size_t MostThreads = 16;

/// Opens the camera and calls \a use with it. What it returns is an error code.
template <class Use>
void WithOpenCamera(const CameraPtr& camera, Use use)
{
    const std::string name = TextOf(*camera, &Camera::GetName);
    const int opened = camera->Open(KltAccessModeFull);
    if (opened != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to open camera '" + name + "': " + ReasonOf(opened));
    const int used = use(*camera);
    if (used != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to read camera '" + name + "': " + ReasonOf(used));
}

/// Looks for the camera first, and closes it in the end.
template <class Use>
void WithOpenCamera(const std::string& serialNumber, Use use)
{
    const SdkSession session;
    const CameraPtr camera = session.Find(serialNumber);
    WithOpenCamera(camera, use);
    camera->Close();
}

/// Never released: freeing every node of a description takes longer than reading it, and the program ends soon.
void Keep(const CameraPtr& camera)
{
    static std::mutex mutex;
    static std::vector<CameraPtr>& kept = *new std::vector<CameraPtr>;
    const std::lock_guard<std::mutex> lock(mutex);
    kept.push_back(camera);
}

KltErrorType ReadOpenCamera(Camera& camera, CameraFeatures& read)
{
    read.name = TextOf(camera, &Camera::GetName);
    if (!read.description)
        read.description = std::make_shared<const Document>(DescriptionOf(camera));
    return FeatureInfos::Read(camera, read.features);
}

CameraFeatures Read(const CameraChoice& choice)
{
    CameraFeatures read;
    read.label = choice.Text();
    const auto use = [&read](Camera& camera) { return ReadOpenCamera(camera, read); };
    if (choice.descriptionFile.empty())
        WithOpenCamera(choice.serialNumber, use);
    else
    {
        RequireDescriptions();
        const auto input = std::make_shared<const InputDescription>(choice.descriptionFile);
        if (input->checked.problem)
            throw CannotBeUsed(choice, input->checked.problem);
        read.description = std::shared_ptr<const Document>(input, &input->document);
        const CameraPtr camera = SimulatedCamera(input->document.Xml(), input->checked.modelName, input->path);
        Keep(camera);
        WithOpenCamera(camera, use);
    }
    return read;
}

} // namespace

std::vector<CameraFeatures> ReadFeatures(const std::vector<CameraChoice>& choices)
{
    std::vector<std::future<CameraFeatures>> reads;
    for (const CameraChoice& choice : choices)
    {
        // A camera may be given twice, but not opened twice at the same time.
        const bool isApart = !choice.descriptionFile.empty() && choices.size() > 1 && reads.size() < MostThreads;
        reads.push_back(std::async(isApart ? std::launch::async : std::launch::deferred, Read, std::cref(choice)));
    }
    std::vector<CameraFeatures> cameras;
    cameras.reserve(choices.size());
    for (std::future<CameraFeatures>& read : reads)
        cameras.push_back(read.get());
    return cameras;
}

CommandError CannotBeUsed(const CameraChoice& choice, const Problem& problem)
{
    return {ExitCamera, "The description '" + choice.Text() + "' cannot be used: " + problem.InOneLine() + "."};
}

std::shared_ptr<const Document> ReadDescription(const CameraChoice& choice, Problem& problem)
{
    if (!choice.descriptionFile.empty())
    {
        const auto input = std::make_shared<const InputDescription>(choice.descriptionFile);
        problem = input->checked.problem;
        return std::shared_ptr<const Document>(input, &input->document);
    }
    RequireDescriptions();
    std::shared_ptr<const Document> document;
    WithOpenCamera(choice.serialNumber,
        [&document](Camera& camera)
        {
            document = std::make_shared<const Document>(DescriptionOf(camera));
            return KltErrorSuccess;
        });
    problem = document->WhyNot();
    return document;
}
