#ifndef SIMULATEDCAMERA_H
#define SIMULATEDCAMERA_H

#include "Safety/SafeDescription.h"
#include "Transport/Transport.h"

#include <filesystem>
#include <memory>
#include <string>

namespace OPX::KltAPI
{

/// A description file with the content that it had when it was read. The camera is made from exactly what was checked.
class DescriptionFile
{
public:
    /// Reads and checks the file.
    explicit DescriptionFile(const std::filesystem::path& path);

    const std::filesystem::path& Path() const { return m_path; }
    bool IsUsable() const { return !m_content->problem; }
    const KltAPI::Problem& Problem() const { return m_content->problem; }

    /// Whether the file is still there and the same. Different content under the same name is another camera.
    bool IsUnchanged() const;

    /// Identifies this file with this content.
    const std::string& Id() const { return m_id; }

    const std::shared_ptr<const SafeDescription>& Content() const { return m_content; }

private:
    std::filesystem::path m_path;
    std::string m_id; ///< From before the file was read: a change meanwhile is noticed.
    std::shared_ptr<const SafeDescription> m_content;
};

/// The camera that is simulated from a usable file. Its serial number is the name of the file without its extension.
CameraRecord RecordOf(const DescriptionFile& file);

/// The camera that is simulated from a usable description, whatever becomes of the file that it comes from. Without a
/// file (the path is empty) the serial number is the model's name.
CameraRecord RecordOf(SafeDescription description, const std::filesystem::path& file);

} // namespace OPX::KltAPI

#endif
