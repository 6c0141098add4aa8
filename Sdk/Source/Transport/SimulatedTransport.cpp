#include "Transport/SimulatedTransport.h"

#include "Base/ParserLock.h"
#include "Base/Report.h"
#include "Base/Texts.h"
#include "Description/CheckedDescription.h"
#include "Transport/MemoryDevice.h"
#include "Transport/StartValues.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace fs = std::filesystem;

namespace OPX
{
namespace KltAPI
{
namespace
{

const char Variable[] = "KOLTA_CAMERA_PATH";

fs::path FolderOfLibrary()
{
    Dl_info info;
    if (dladdr(reinterpret_cast<const void*>(&FolderOfLibrary), &info) == 0 || info.dli_fname == nullptr)
        return fs::path();
    std::error_code error;
    const fs::path library = fs::weakly_canonical(info.dli_fname, error);
    return library.parent_path();
}

bool IsDescription(const fs::path& path)
{
    return path.extension() == ".xml" || path.extension() == ".zip";
}

KltErrorType Connect(const fs::path& path, Connection& connection)
{
    const CheckedDescription description = ReadDescription(path.string());
    if (!description.problem.empty())
    {
        Report(path.string() + ": " + description.problem);
        return KltErrorNotFound;
    }
    connection.device = NewMemoryDevice();
    connection.patience = std::chrono::seconds(4); // Memory is quick: only a hostile description takes longer.
    const std::lock_guard<std::mutex> lock(ParserLock());
    connection.description.reset(arv_gc_new(connection.device.get(), description.xml.data(), description.xml.size()));
    if (!connection.description)
        return KltErrorOther;
    connection.xml = description.xml;
    ApplyStartValues(connection.description.get(), path);
    return KltErrorSuccess;
}

std::string Unique(const std::string& name, std::set<std::string>& taken)
{
    std::string unique = name;
    for (int number = 2; !taken.insert(unique).second; ++number)
        unique = name + "-" + std::to_string(number);
    return unique;
}

} // namespace

SimulatedTransport::SimulatedTransport()
{
    const char* variable = std::getenv(Variable);
    std::istringstream places(variable == nullptr ? "" : variable);
    for (std::string place; std::getline(places, place, ':');)
        if (!place.empty())
            m_places.emplace_back(place);
    const fs::path shipped = FolderOfLibrary() / "Cameras";
    std::error_code error;
    if (fs::is_directory(shipped, error))
        m_places.push_back(shipped);
}

std::vector<CameraRecord> SimulatedTransport::Scan()
{
    std::vector<CameraRecord> records;
    std::set<std::string> taken;
    std::map<fs::path, KnownFile> known;
    for (const fs::path& path : Files())
    {
        const KnownFile* file = Examine(path);
        if (file == nullptr)
            continue;
        known[path] = *file;
        if (!file->usable)
            continue;
        // Another content under the same name is another camera.
        const std::string id = path.string() + ":" + std::to_string(file->time.time_since_epoch().count()) + ":" +
                               std::to_string(file->size);
        const std::string serialNumber = Unique(WithoutControls(path.stem().string()), taken);
        records.push_back({id, file->modelName, serialNumber, "simulated", path.string(),
            [path](Connection& connection) { return Connect(path, connection); }});
    }
    m_known.swap(known);
    m_scanned = true;
    return records;
}

std::vector<fs::path> SimulatedTransport::Files()
{
    std::vector<fs::path> files;
    for (const fs::path& place : m_places)
    {
        std::error_code error;
        if (!fs::exists(place, error))
        {
            if (m_missing.insert(place).second)
                Report(std::string(Variable) + " names '" + place.string() + "', which does not exist.");
            continue;
        }
        const std::size_t first = files.size();
        if (!fs::is_directory(place, error))
            files.push_back(place);
        else
            for (fs::directory_iterator entry(place, error), end; !error && entry != end; entry.increment(error))
                if (IsDescription(entry->path()) && !entry->is_directory(error))
                    files.push_back(entry->path());
        std::sort(files.begin() + static_cast<std::ptrdiff_t>(first), files.end());
    }
    return files;
}

const SimulatedTransport::KnownFile* SimulatedTransport::Examine(const fs::path& path)
{
    std::error_code error;
    KnownFile file;
    file.time = fs::last_write_time(path, error);
    if (!error)
        file.size = fs::file_size(path, error);
    if (error && !fs::is_directory(path.parent_path(), error))
        return nullptr; // Gone in the meantime.

    const auto known = m_known.find(path);
    if (known != m_known.end() && known->second.time == file.time && known->second.size == file.size)
    {
        ReportProblem(path, known->second);
        return &known->second;
    }
    const CheckedDescription description = ReadDescription(path.string());
    file.modelName = description.modelName;
    file.usable = description.problem.empty();
    file.unreported = description.problem;
    if (!m_scanned)
        ReportProblem(path, file);
    return &(m_known[path] = file);
}

void SimulatedTransport::ReportProblem(const fs::path& path, KnownFile& file)
{
    if (!file.unreported.empty())
        Report(path.string() + ": " + file.unreported);
    file.unreported.clear();
}

} // namespace KltAPI
} // namespace OPX
