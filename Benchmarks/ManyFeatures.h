#ifndef MANYFEATURES_H
#define MANYFEATURES_H

#include <KoltaCPP/KoltaCPP.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

/// A simulated camera with a number of integer features, a hundred in a category, while the object lives.
class ManyFeatures
{
public:
    explicit ManyFeatures(long count) : m_file(std::filesystem::temp_directory_path() / "kolta-many-features.xml")
    {
        Write(count);
        setenv("KOLTA_TRANSPORTS", "simulated", 1);
        setenv("KOLTA_CAMERA_PATH", m_file.c_str(), 1);
        OPX::KltAPI::KoltaSystem& system = OPX::KltAPI::KoltaSystem::GetInstance();
        unsigned int cameras = 0;
        if (system.Startup() != KltErrorSuccess || system.GetCameras(nullptr, cameras) != KltErrorSuccess)
            throw std::runtime_error("The SDK does not start.");
        OPX::KltAPI::CameraPtrVector list(cameras);
        system.GetCameras(list.data(), cameras);
        m_camera = list.at(0);
    }

    ~ManyFeatures()
    {
        m_camera.reset();
        OPX::KltAPI::KoltaSystem::GetInstance().Shutdown();
        std::filesystem::remove(m_file);
    }

    const OPX::KltAPI::CameraPtr& Camera() const { return m_camera; }

private:
    void Write(long count) const
    {
        std::ofstream file(m_file);
        file << "<RegisterDescription ModelName='Many' SchemaMajorVersion='1' SchemaMinorVersion='1' "
                "SchemaSubMinorVersion='0'><Category Name='Root'>";
        for (long i = 0; i < count; i += 100)
            file << "<pFeature>Category" << i / 100 << "</pFeature>";
        file << "</Category>";
        for (long i = 0; i < count; ++i)
        {
            if (i % 100 == 0)
                file << (i > 0 ? "</Category>" : "") << "<Category Name='Category" << i / 100 << "'>";
            file << "<pFeature>FeatureNumber" << i << "</pFeature>";
        }
        file << "</Category>";
        for (long i = 0; i < count; ++i)
            file << "<Integer Name='FeatureNumber" << i << "'><Value>" << i << "</Value></Integer>\n";
        file << "</RegisterDescription>";
    }

    std::filesystem::path m_file;
    OPX::KltAPI::CameraPtr m_camera;
};

#endif
