#ifndef SIMULATEDTRANSPORT_H
#define SIMULATEDTRANSPORT_H

#include "Transport/SimulatedCamera.h"
#include "Transport/Transport.h"

#include <filesystem>
#include <map>
#include <set>

namespace OPX::KltAPI
{

/// Cameras that are simulated from description files: those that the environment variable KOLTA_CAMERA_PATH names
/// (files and folders, separated by colons), those in the user's folder for them, and those that ship with the library.
class SimulatedTransport : public Transport
{
public:
    SimulatedTransport();

    std::vector<CameraRecord> Scan() override;
    int ToleratedMisses() const override { return 0; }
    bool IsQuick() const override { return true; }

private:
    /// What is known of a file, as long as it does not change.
    struct KnownFile
    {
        DescriptionFile content;
        bool reported = false; ///< Whether its problem has been reported.
    };

    std::vector<std::filesystem::path> Files();
    void ReportOnce(const std::filesystem::path& place, const std::string& message);

    const std::filesystem::path m_usersCameras; ///< Need not exist, and may be made while we are running.
    std::vector<std::filesystem::path> m_places;
    std::set<std::filesystem::path> m_reported; ///< Places with a report.
    std::map<std::filesystem::path, KnownFile> m_known;
    bool m_scanned = false;
};

} // namespace OPX::KltAPI

#endif
