#include "Transport/SimulatedCamera.h"

#include "Document/Texts.h"
#include "Transport/RegisterDevice.h"
#include "Transport/SparseMemory.h"
#include "Transport/StartValues.h"

#include <utility>

namespace fs = std::filesystem;

namespace OPX::KltAPI
{
namespace
{

Failure Connect(const std::shared_ptr<const SafeDescription>& description, const fs::path& file, Connection& connection)
{
    auto memory = std::make_unique<SparseMemory>();
    connection.takeUnknown = [known = memory.get()] { return known->TakeUnknown(); };
    connection.device = NewRegisterDevice(std::move(memory), DeviceKind::Plain);
    connection.patience = std::chrono::seconds(4); // Memory is quick: only a hostile description takes longer.
    if (Failure failure = connection.Use(description))
        return failure;
    if (!file.empty())
        ApplyStartValues(connection.nodeMap.get(), file);
    return KltErrorSuccess;
}

std::string IdOf(const fs::path& path)
{
    std::error_code error;
    return path.string() + ":" + std::to_string(fs::last_write_time(path, error).time_since_epoch().count()) + ":" +
           std::to_string(fs::file_size(path, error));
}

} // namespace

DescriptionFile::DescriptionFile(const fs::path& path)
    : m_path(path),
      m_id(IdOf(path)),
      m_content(std::make_shared<const SafeDescription>(ReadDescription(path.string())))
{
}

bool DescriptionFile::IsUnchanged() const
{
    return IdOf(m_path) == m_id;
}

CameraRecord RecordOf(const DescriptionFile& file)
{
    const auto connect = [file](Connection& connection)
    {
        connection.isThere = [file] { return file.IsUnchanged(); };
        return connection.isThere() ? Connect(file.Content(), file.Path(), connection) : KltErrorNotFound;
    };
    return {file.Id(), file.Content()->modelName, WithoutControls(file.Path().stem().string()), "simulated",
        file.Path().string(), connect};
}

CameraRecord RecordOf(SafeDescription description, const fs::path& file)
{
    const std::string name = description.modelName;
    const std::string serialNumber = file.empty() ? name : WithoutControls(file.stem().string());
    const auto shared = std::make_shared<const SafeDescription>(std::move(description));
    return {file.string(), name, serialNumber, "simulated", file.string(),
        [shared, file](Connection& connection) { return Connect(shared, file, connection); }};
}

} // namespace OPX::KltAPI
