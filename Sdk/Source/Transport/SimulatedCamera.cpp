#include "Transport/SimulatedCamera.h"

#include "Document/Texts.h"
#include "Transport/RegisterDevice.h"
#include "Transport/SparseMemory.h"
#include "Transport/StartValues.h"

namespace fs = std::filesystem;

namespace OPX::KltAPI
{
namespace
{

Failure Connect(const DescriptionFile& file, Connection& connection)
{
    if (!file.IsUnchanged())
        return KltErrorNotFound;
    auto memory = std::make_unique<SparseMemory>();
    connection.takeUnknown = [known = memory.get()] { return known->TakeUnknown(); };
    connection.device = NewRegisterDevice(std::move(memory), DeviceKind::Plain);
    connection.patience = std::chrono::seconds(4); // Memory is quick: only a hostile description takes longer.
    connection.isThere = [file] { return file.IsUnchanged(); };
    if (Failure failure = connection.Use(file.Content()))
        return failure;
    ApplyStartValues(connection.nodeMap.get(), file.Path());
    return KltErrorSuccess;
}

} // namespace

DescriptionFile::State::State(const fs::path& path, std::error_code error)
    : time(fs::last_write_time(path, error)),
      size(fs::file_size(path, error))
{
}

DescriptionFile::DescriptionFile(const fs::path& path)
    : m_path(path),
      m_state(path),
      m_content(std::make_shared<const SafeDescription>(ReadDescription(path.string())))
{
}

bool DescriptionFile::IsUnchanged() const
{
    const State now(m_path);
    return now.time == m_state.time && now.size == m_state.size;
}

std::string DescriptionFile::Id() const
{
    return m_path.string() + ":" + std::to_string(m_state.time.time_since_epoch().count()) + ":" +
           std::to_string(m_state.size);
}

CameraRecord RecordOf(const DescriptionFile& file)
{
    return {file.Id(), file.Content()->modelName, WithoutControls(file.Path().stem().string()), "simulated",
        file.Path().string(), [file](Connection& connection) { return Connect(file, connection); }};
}

} // namespace OPX::KltAPI
