#include "Transport/U3vDescription.h"

#include "Transport/CameraDescription.h"

#include <algorithm>
#include <vector>

namespace OPX::KltAPI
{
namespace
{

/// Holds the address of the list.
const std::uint64_t ListRegister = 0x1D0;

const std::uint64_t MostEntries = 64; ///< Cameras have one to three.
const std::uint64_t EntrySize = 64;

struct ListEntry
{
    std::uint64_t version = 0; ///< Of the standard, then of the file.
    std::uint64_t address = 0;
    std::uint64_t size = 0;
};

/// Appends what the camera lists here, if it is a description that we can read.
Failure ReadEntry(U3vChannel& camera, std::uint64_t address, std::vector<ListEntry>& entries)
{
    ListEntry entry;
    std::uint64_t fileVersion = 0;
    std::uint64_t kind = 0;
    if (Failure failure = camera.ReadNumber(address, 4, fileVersion))
        return failure;
    if (Failure failure = camera.ReadNumber(address + 4, 4, kind))
        return failure;
    if (Failure failure = camera.ReadNumber(address + 8, 8, entry.address))
        return failure;
    if (Failure failure = camera.ReadNumber(address + 16, 8, entry.size))
        return failure;
    const bool isOfCamera = (kind & 7) == 0; // Others are of images.
    const bool isXmlOrZip = (kind >> 10 & 0x3F) <= 1;
    const std::uint64_t standard = kind >> 16;
    entry.version = standard << 32 | fileVersion;
    if (isOfCamera && isXmlOrZip && standard < 0x200)
        entries.push_back(entry);
    return KltErrorSuccess;
}

Failure ReadList(U3vChannel& camera, std::vector<ListEntry>& entries)
{
    std::uint64_t address = 0;
    std::uint64_t count = 0;
    if (Failure failure = camera.ReadNumber(ListRegister, 8, address))
        return failure;
    if (Failure failure = camera.ReadNumber(address, 8, count))
        return failure;
    if (count > MostEntries)
        return {KltErrorOther, {"the camera lists too many"}};
    for (std::uint64_t i = 0; i < count; ++i)
        if (Failure failure = ReadEntry(camera, address + 8 + i * EntrySize, entries))
            return failure;
    if (entries.empty())
        return {KltErrorOther, {"the camera lists none that can be read"}};
    return KltErrorSuccess;
}

} // namespace

Failure FetchDescription(U3vChannel& camera, SafeDescription& description)
{
    std::vector<ListEntry> entries;
    if (Failure failure = ReadList(camera, entries))
        return failure;
    std::stable_sort(entries.begin(), entries.end(),
        [](const ListEntry& one, const ListEntry& other) { return one.version > other.version; });
    return FetchFirst(entries,
        [&](const ListEntry& entry) { return FetchDescriptionAt(camera, entry.address, entry.size, description); });
}

} // namespace OPX::KltAPI
