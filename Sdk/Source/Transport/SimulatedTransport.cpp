#include "Transport/SimulatedTransport.h"

#include "Base/Report.h"
#include "Document/Texts.h"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <utility>

namespace fs = std::filesystem;

namespace OPX::KltAPI
{
namespace
{

const char Variable[] = "KOLTA_CAMERA_PATH";

fs::path FolderOfLibrary()
{
    Dl_info info;
    link_map* map = nullptr;
    if (dladdr1(reinterpret_cast<const void*>(&FolderOfLibrary), &info, reinterpret_cast<void**>(&map),
            RTLD_DL_LINKMAP) == 0)
        return fs::path();
    // Linked statically, we are part of the program, which has no name there.
    const fs::path library = *map->l_name == '\0' ? "/proc/self/exe" : map->l_name;
    std::error_code error;
    return fs::weakly_canonical(library, error).parent_path();
}

/// The cameras that ship: beside the library, as in the build, or where they are installed, seen from the library. What
/// is linked statically has one place more, which is absolute.
fs::path ShippedCameras()
{
    std::error_code error;
    for (const char* place : {"Cameras", KOLTACPP_CAMERAS})
    {
        fs::path cameras = fs::canonical(FolderOfLibrary() / place, error);
        if (!error && fs::is_directory(cameras, error))
            return cameras;
    }
    return fs::path();
}

/// The cameras of the user, who may not be able to set a variable: what a menu starts does not see it.
fs::path UsersCameras()
{
    const char* data = std::getenv("XDG_DATA_HOME");
    const char* home = std::getenv("HOME");
    fs::path folder = data == nullptr ? "" : data;
    if (!folder.is_absolute())
        folder = fs::path(home == nullptr ? "/" : home) / ".local/share";
    return folder / "KoltaCPP/Cameras";
}

bool IsDescription(const fs::path& path)
{
    const std::string name = path.filename().string();
    return HasExtension(name, ".xml") || HasExtension(name, ".zip");
}

std::string Unique(const std::string& name, std::set<std::string>& taken)
{
    std::string unique = name;
    for (int number = 2; !taken.insert(unique).second; ++number)
        unique = name + "-" + std::to_string(number);
    return unique;
}

} // namespace

SimulatedTransport::SimulatedTransport() : m_usersCameras(UsersCameras())
{
    const char* variable = std::getenv(Variable);
    std::istringstream places(variable == nullptr ? "" : variable);
    for (std::string place; std::getline(places, place, ':');)
        if (!place.empty())
            m_places.emplace_back(place);
    m_places.push_back(m_usersCameras);
    const fs::path shipped = ShippedCameras();
    if (!shipped.empty())
        m_places.push_back(shipped);
}

std::vector<CameraRecord> SimulatedTransport::Scan()
{
    std::vector<CameraRecord> records;
    std::set<std::string> taken;
    std::map<fs::path, KnownFile> known;
    for (const fs::path& path : Files())
    {
        std::error_code error;
        if (!fs::exists(fs::symlink_status(path, error)) && !fs::is_directory(path.parent_path(), error))
            continue; // Gone in the meantime.
        const auto before = m_known.find(path);
        const bool isUnchanged = before != m_known.end() && before->second.content.IsUnchanged();
        KnownFile& file =
            known.emplace(path, isUnchanged ? before->second : KnownFile{DescriptionFile(path)}).first->second;
        // Files that arrive while we are running are incomplete until they have been copied.
        if ((isUnchanged || !m_scanned) && !std::exchange(file.reported, true) && !file.content.IsUsable())
            Report(path.string() + ": " + file.content.Problem().InOneLine());
        if (!file.content.IsUsable())
            continue;
        records.push_back(RecordOf(file.content));
        records.back().serialNumber = Unique(records.back().serialNumber, taken);
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
            if (place != m_usersCameras)
                ReportOnce(place, std::string(Variable) + " names '" + place.string() + "', which does not exist.");
            continue;
        }
        const std::size_t first = files.size();
        if (!fs::is_directory(place, error))
            files.push_back(place);
        else
            for (fs::directory_iterator entry(place, error), end; !error && entry != end; entry.increment(error))
                if (IsDescription(entry->path()) && !entry->is_directory(error))
                    files.push_back(entry->path());
        if (error)
            ReportOnce(place, place.string() + ": " + error.message());
        std::sort(files.begin() + static_cast<std::ptrdiff_t>(first), files.end());
    }
    return files;
}

void SimulatedTransport::ReportOnce(const fs::path& place, const std::string& message)
{
    if (m_reported.insert(place).second)
        Report(message);
}

} // namespace OPX::KltAPI
