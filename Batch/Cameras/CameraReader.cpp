#include "Cameras/CameraReader.h"

#include "Cameras/CatalogueExcerpt.h"
#include "Cameras/SdkExtensions.h"
#include "Cameras/SdkSession.h"
#include "Document/DescriptionFile.h"
#include "Document/Texts.h"
#include "Safety/SafeDescription.h"
#include "SdkReads.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <functional>
#include <future>
#include <mutex>
#include <thread>
#include <utility>

using namespace OPX::KltAPI;
namespace fs = std::filesystem;

namespace
{

const std::size_t MostThreads = 16;

/// Whether it is the standard input, "-" or by its other name, or what a shell makes of <(command): nothing lies
/// beside.
bool IsStream(const std::string& file)
{
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    return file == "-" || fs::is_fifo(status) || fs::is_character_file(status);
}

std::string ContentOfStream(const std::string& file)
{
    static std::atomic<bool> isRead(false);
    const bool isInput = file == "-";
    if (isInput && isRead.exchange(true))
        throw CommandError(ExitUsage, "The standard input was given twice, but it can be read only once.");
    const int stream = isInput ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC);
    std::string content;
    const std::string problem = stream < 0 ? std::strerror(errno) : ReadStream(stream, content);
    if (stream > STDIN_FILENO)
        close(stream);
    if (!problem.empty())
        throw CommandError(
            ExitFile, (isInput ? "The standard input" : "'" + file + "'") + " cannot be read: " + problem + ".");
    return content;
}

std::string ContentOf(const std::string& file)
{
    if (IsStream(file))
        return ContentOfStream(file);
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (fs::is_directory(status))
        throw CommandError(ExitCamera, "'" + file + "' is a folder. Give a description file.");
    if (!fs::is_regular_file(status))
        throw CommandError(ExitCamera, "There is no description file '" + file + "'. Check the path.");
    std::string content;
    const std::string problem = ReadFile(file, content);
    if (!problem.empty())
        throw CommandError(ExitCamera, "The description '" + file + "' cannot be read: " + problem + ".");
    return content;
}

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

/// What the SDK is to read of a description. Values to start with may be those of any node.
std::string XmlOf(const CameraFeatures& camera, const std::string& file, Extent extent)
{
    std::error_code error;
    const bool hasValues = !IsStream(file) && fs::exists(fs::path(file).replace_extension(".values"), error);
    return extent == Extent::Catalogue && !hasValues ? CatalogueExcerpt(camera.description->Root(), camera.Names())
                                                     : camera.description->Xml();
}

CameraFeatures Read(const CameraChoice& choice, Extent extent, const std::function<void(CameraFeatures&)>& ask)
{
    CameraFeatures read;
    read.label = choice.Text();
    const auto use = [&read](Camera& camera) { return ReadOpenCamera(camera, read); };
    if (choice.descriptionFile.empty())
        WithOpenCamera(choice.serialNumber,
            [&](Camera& camera)
            {
                const KltErrorType result = use(camera);
                if (result == KltErrorSuccess && ask)
                    ask(read);
                return result;
            });
    else
    {
        RequireDescriptions();
        const std::string& file = choice.descriptionFile;
        read.description = std::make_shared<const Document>(ContentOf(file));
        const std::string name = WithoutControls(fs::path(file).stem().string());
        const SafeDescription checked = CheckDocument(*read.description, name);
        if (checked.problem)
            throw CannotBeUsed(choice, checked.problem);
        const CameraPtr camera =
            SimulatedCamera(XmlOf(read, file, extent), checked.modelName, IsStream(file) ? std::string() : file);
        Keep(camera);
        WithOpenCamera(camera, use);
    }
    return read;
}

} // namespace

const NodeNames& CameraFeatures::Names() const
{
    if (!m_names)
        m_names = std::make_shared<const NodeNames>(description->Root());
    return *m_names;
}

std::vector<CameraFeatures> ReadFeatures(
    const std::vector<CameraChoice>& choices, Extent extent, const std::function<void(CameraFeatures&)>& ask)
{
    std::vector<std::future<CameraFeatures>> reads;
    // With one core, threads only cost: each has memory of its own, which grows page by page.
    const bool areApart = choices.size() > 1 && std::thread::hardware_concurrency() != 1;
    for (const CameraChoice& choice : choices)
    {
        // A camera may be given twice, but not opened twice at the same time.
        const bool isApart = areApart && !choice.descriptionFile.empty() && reads.size() < MostThreads;
        reads.push_back(std::async(
            isApart ? std::launch::async : std::launch::deferred, Read, std::cref(choice), extent, std::cref(ask)));
    }
    std::vector<CameraFeatures> cameras;
    cameras.reserve(choices.size());
    for (std::future<CameraFeatures>& read : reads)
        cameras.push_back(read.get());
    return cameras;
}

CommandError CannotBeUsed(const CameraChoice& choice, const Problem& problem)
{
    const std::string what = choice.Text() == "-" ? "The standard input" : "The description '" + choice.Text() + "'";
    return {ExitCamera, what + " cannot be used: " + problem.InOneLine() + "."};
}

std::shared_ptr<const Document> ReadDescription(const CameraChoice& choice, Problem& problem)
{
    if (!choice.descriptionFile.empty())
    {
        auto document = std::make_shared<const Document>(ContentOf(choice.descriptionFile));
        problem = CheckDocument(*document, choice.descriptionFile).problem;
        return document;
    }
    RequireDescriptions();
    std::shared_ptr<const Document> document;
    WithOpenCamera(choice.serialNumber,
        [&document](const Camera& camera)
        {
            document = std::make_shared<const Document>(DescriptionOf(camera));
            return KltErrorSuccess;
        });
    problem = document->WhyNot();
    return document;
}
