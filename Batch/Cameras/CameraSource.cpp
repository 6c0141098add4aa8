#include "Cameras/CameraSource.h"

#include "Base/ExitCodes.h"
#include "Cameras/SdkExtensions.h"
#include "KoltaHelper.h"
#include "SdkReads.h"

#include <KoltaCPP/KoltaSystem.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <memory>
#include <sys/mman.h>
#include <thread>
#include <unistd.h>
#include <utility>

using namespace OPX::KltAPI;
namespace fs = std::filesystem;

namespace
{

/// Cameras in a network take a second to answer; the first answer can get lost.
const std::chrono::milliseconds TimeToAppear(4000);
const std::chrono::milliseconds TimeBetweenLooks(50);

const std::size_t MostThreads = 16;

std::string Reason(int code)
{
    return KoltaHelper::ReturnCodeToString(code).toStdString();
}

bool OnlySimulated()
{
    const char* transports = std::getenv("KOLTA_TRANSPORTS");
    return transports != nullptr && std::string(transports) == "simulated";
}

/// Far more than a description may have.
const std::size_t MaximumStream = 256U << 20;

/// A file in memory with what a stream delivers. Its path is good for as long as the program runs.
std::string InMemory(std::FILE* stream, const std::string& what)
{
    const int file = memfd_create("description", MFD_CLOEXEC);
    char block[1 << 16];
    std::size_t size = 1;
    std::size_t all = 0;
    bool written = file >= 0 && stream != nullptr;
    while (written && size > 0 && all <= MaximumStream)
    {
        size = std::fread(block, 1, sizeof block, stream);
        all += size;
        written = write(file, block, size) == static_cast<ssize_t>(size);
    }
    if (!written || std::ferror(stream) != 0)
        throw CommandError(ExitFile, what + " cannot be read: " + std::strerror(errno) + ".");
    return "/proc/self/fd/" + std::to_string(file);
}

std::string StandardInput()
{
    static bool isRead = false;
    if (std::exchange(isRead, true))
        throw CommandError(ExitUsage, "'-' was given twice, but the standard input can be read only once.");
    return InMemory(stdin, "The standard input");
}

/// The standard input by its other name, or what a shell makes of <(command).
std::string Pipe(const std::string& path)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(path.c_str(), "rb"), &std::fclose);
    return InMemory(stream.get(), "'" + path + "'");
}

/// A regular file with what \a file names; "-" is the standard input.
std::string RegularFile(const std::string& file)
{
    if (file == "-")
        return StandardInput();
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (fs::is_regular_file(status))
        return file;
    if (fs::is_fifo(status) || fs::is_character_file(status))
        return Pipe(file);
    if (fs::is_directory(status))
        throw CommandError(ExitCamera, "'" + file + "' is a folder. Give a description file.");
    throw CommandError(ExitCamera, "There is no description file '" + file + "'. Check the path.");
}

/// Looks at this file and at nothing else.
CameraPtr Simulate(const std::string& file)
{
    RequireDescriptions();
    CameraPtr camera = SimulatedCamera(RegularFile(file));
    if (!camera)
        throw CommandError(ExitCamera, "The description '" + file + "' cannot be used.");
    return camera;
}

/// Opens the camera and calls \a use with it. What it returns is an error code.
template <class Use>
void WithOpenCamera(const CameraPtr& camera, Use use)
{
    const std::string name = TextOf(*camera, &Camera::GetName);
    const int opened = camera->Open(KltAccessModeFull);
    if (opened != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to open camera '" + name + "': " + Reason(opened));
    const int used = use(camera);
    if (used != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to read camera '" + name + "': " + Reason(used));
}

/// The camera of a description; null if the choice is one to look for.
CameraPtr CameraOfFile(const CameraChoice& choice)
{
    if (choice.descriptionFile.empty())
        return CameraPtr();
    // Never released: freeing every node of a description takes longer than reading it, and the program ends soon.
    static std::vector<CameraPtr>& kept = *new std::vector<CameraPtr>;
    kept.push_back(Simulate(choice.descriptionFile));
    return kept.back();
}

/// The same for the camera of a choice.
template <class Use>
void WithOpenCamera(const CameraChoice& choice, const CameraPtr& ofFile, Use use)
{
    if (ofFile)
        return WithOpenCamera(ofFile, use);
    const SdkSession session;
    const CameraPtr camera = session.Find(choice.serialNumber);
    WithOpenCamera(camera, use);
    camera->Close();
}

} // namespace

SdkSession::SdkSession()
{
    const KltErrorType result = KoltaSystem::GetInstance().Startup();
    if (result != KltErrorSuccess)
        throw CommandError(ExitCamera, "Cannot start Kolta: " + Reason(result) + " Check KOLTA_TRANSPORTS.");
}

SdkSession::~SdkSession()
{
    KoltaSystem::GetInstance().Shutdown();
}

std::vector<CameraPtr> SdkSession::Cameras() const
{
    std::vector<CameraPtr> cameras;
    const KltErrorType result = ReadList(KoltaSystem::GetInstance(), &KoltaSystem::GetCameras, cameras);
    if (result != KltErrorSuccess)
        throw CommandError(ExitCamera, "Unable to get camera list: " + Reason(result));
    return cameras;
}

std::vector<CameraPtr> SdkSession::AllCameras() const
{
    if (!OnlySimulated())
        std::this_thread::sleep_for(TimeToAppear);
    return Cameras();
}

CameraPtr SdkSession::Find(const std::string& serialNumber) const
{
    const auto end = std::chrono::steady_clock::now() + TimeToAppear;
    do
    {
        for (const CameraPtr& camera : Cameras())
            if (TextOf(*camera, &Camera::GetSerialNumber) == serialNumber)
                return camera;
        if (OnlySimulated())
            break;
        std::this_thread::sleep_for(TimeBetweenLooks);
    } while (std::chrono::steady_clock::now() < end);
    throw CommandError(
        ExitCamera, "There is no camera with the serial number '" + serialNumber + "'. See 'kolta-classgen list'.");
}

namespace
{

KltErrorType GetDescription(const Camera& camera, std::string& description)
{
    description = DescriptionOf(camera);
    return description.empty() ? KltErrorOther : KltErrorSuccess;
}

/// The line in which a description begins. Some tools put one of their own before it; the SDK leaves that out.
int FirstLine(const std::string& path)
{
    std::ifstream file(path);
    std::string before;
    std::getline(file, before, '<');
    return before.compare(0, 2, "PK") == 0 ? 1 : 1 + static_cast<int>(std::count(before.begin(), before.end(), '\n'));
}

CameraFeatures Read(const CameraChoice& choice, const CameraPtr& ofFile)
{
    CameraFeatures read;
    read.label = choice.Text();
    WithOpenCamera(choice, ofFile,
        [&read](const CameraPtr& camera)
        {
            read.name = TextOf(*camera, &Camera::GetName);
            std::string description;
            GetDescription(*camera, description);
            read.description = std::make_shared<const DescriptionElement>(ReadNodes(description));
            return FeatureInfos::Read(
                *camera, [&read](FeatureInfo& info) { read.features.push_back(std::move(info)); });
        });
    return read;
}

} // namespace

std::vector<CameraFeatures> ReadFeatures(const std::vector<CameraChoice>& choices)
{
    // Files are looked at in their order, so that what is said of them comes in order.
    std::vector<std::future<CameraFeatures>> reads;
    for (const CameraChoice& choice : choices)
    {
        const CameraPtr ofFile = CameraOfFile(choice);
        // A camera may be given twice, but not opened twice at the same time.
        const bool isApart = ofFile && choices.size() > 1 && reads.size() < MostThreads;
        reads.push_back(
            std::async(isApart ? std::launch::async : std::launch::deferred, Read, std::cref(choice), ofFile));
    }
    std::vector<CameraFeatures> cameras;
    cameras.reserve(choices.size());
    for (std::future<CameraFeatures>& read : reads)
        cameras.push_back(read.get());
    return cameras;
}

std::string ReadDescription(const CameraChoice& choice)
{
    RequireDescriptions();
    std::string description;
    WithOpenCamera(choice, CameraOfFile(choice),
        [&description](const CameraPtr& camera) { return GetDescription(*camera, description); });
    return description;
}

CameraNodes ReadNodes(const CameraChoice& choice)
{
    RequireDescriptions();
    CameraNodes nodes;
    WithOpenCamera(choice, CameraOfFile(choice),
        [&](const CameraPtr& camera)
        {
            std::string description;
            KltErrorType result = GetDescription(*camera, description);
            if (result != KltErrorSuccess)
                return result;
            const bool isFile = !choice.descriptionFile.empty();
            nodes.root = ReadNodes(description, isFile ? FirstLine(AddressOf(*camera)) : 1);
            unsigned int count = 0;
            result = camera->GetFeatures(nullptr, count);
            nodes.hasFeatures = count > 0;
            return result;
        });
    return nodes;
}
