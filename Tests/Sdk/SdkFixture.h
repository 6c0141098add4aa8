#ifndef SDKFIXTURE_H
#define SDKFIXTURE_H

#include "SdkReads.h"

#include <KoltaCPP/KoltaCPP.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

/// Counts the cameras that come, go and are lost.
class Counter : public OPX::KltAPI::ICameraListObserver
{
public:
    Counter(std::atomic<int>& came, std::atomic<int>& went, std::atomic<int>& lost) : m_counts{&came, &went, &lost} {}

    /// Nothing is locked while observers die.
    ~Counter() override { EXPECT_EQ(OPX::KltAPI::KoltaSystem::GetInstance().Shutdown(), 0); }

    void CameraListChanged(OPX::KltAPI::CameraPtr camera, UpdateTriggerType reason) override
    {
        EXPECT_NE(camera.get(), nullptr);
        EXPECT_EQ(OPX::KltAPI::KoltaSystem::GetInstance().Shutdown(), KltErrorInvalidCall);
        ++*m_counts[reason];
    }

private:
    std::atomic<int>* m_counts[3];
};

/// The SDK over a folder of descriptions of its own.
class SdkTest : public testing::Test
{
protected:
    SdkTest()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "kolta-XXXXXX").string();
        m_folder = mkdtemp(pattern.data());
        setenv("KOLTA_CAMERA_PATH", m_folder.c_str(), 1);
    }

    ~SdkTest() override
    {
        m_camera.reset();
        System().Shutdown();
        unsetenv("KOLTA_CAMERA_PATH");
        setenv("KOLTA_TRANSPORTS", "simulated", 1);
        std::filesystem::remove_all(m_folder);
    }

    static OPX::KltAPI::KoltaSystem& System() { return OPX::KltAPI::KoltaSystem::GetInstance(); }

    void Write(const std::string& file, const std::string& content)
    {
        // In one step: the scanner must not see half of it.
        std::ofstream(m_folder / "unfinished", std::ios::binary) << content;
        std::filesystem::rename(m_folder / "unfinished", m_folder / file);
    }

    /// A description with these features and nodes.
    static std::string Description(const std::vector<std::string>& names, const std::string& nodes)
    {
        std::string links;
        for (const std::string& name : names)
            links += "<pFeature>" + name + "</pFeature>";
        return "<?xml version='1.0'?><RegisterDescription ModelName='Model' VendorName='V' SchemaMajorVersion='1' "
               "SchemaMinorVersion='1' SchemaSubMinorVersion='0' MajorVersion='1' MinorVersion='0' "
               "SubMinorVersion='0'><Category Name='Root'><pFeature>Cat</pFeature></Category><Category Name='Cat'>" +
               links + "</Category>" + nodes + "<Port Name='Device'/></RegisterDescription>";
    }

    static OPX::KltAPI::CameraPtrVector Cameras()
    {
        OPX::KltAPI::CameraPtrVector cameras;
        EXPECT_EQ(ReadList(System(), &OPX::KltAPI::KoltaSystem::GetCameras, cameras), 0);
        return cameras;
    }

    template <class Object>
    static std::string Text(const Object& object, KltErrorType (Object::*getter)(char*, unsigned int&) const)
    {
        std::string text;
        EXPECT_TRUE(ReadString(object, getter, text));
        return text;
    }

    static OPX::KltAPI::CameraPtr Find(const std::string& serialNumber)
    {
        for (const OPX::KltAPI::CameraPtr& camera : Cameras())
            if (Text(*camera, &OPX::KltAPI::Camera::GetSerialNumber) == serialNumber)
                return camera;
        return OPX::KltAPI::CameraPtr();
    }

    /// Starts the SDK and opens a camera. Without it the test ends.
    void Open(const std::string& serialNumber)
    {
        EXPECT_EQ(System().Startup(), 0);
        m_camera = Find(serialNumber);
        const KltErrorType code = m_camera ? m_camera->Open(1) : static_cast<KltErrorType>(KltErrorNotFound);
        if (code != 0)
            throw std::runtime_error("opening " + serialNumber + ": code " + std::to_string(code));
    }

    OPX::KltAPI::FeaturePtr Feature(const std::string& name)
    {
        OPX::KltAPI::FeaturePtr feature;
        const KltErrorType code = m_camera->GetFeatureByName(name.c_str(), feature);
        return code == 0 ? feature : throw std::runtime_error(name + ": code " + std::to_string(code));
    }

    /// The value of a feature as text, or the code that reading it gives.
    std::string Get(const std::string& name)
    {
        const OPX::KltAPI::FeaturePtr feature = Feature(name);
        KltFeatureDataType type = KltFeatureDataUnknown;
        feature->GetDataType(type);
        std::ostringstream text;
        const auto read = [&](auto value)
        {
            const KltErrorType code = feature->GetValue(value);
            if (code != KltErrorSuccess)
                text << "code " << code;
            else if constexpr (std::is_same<decltype(value), OPX::KltAPI::UcharVector>::value)
                for (unsigned char byte : value)
                    text << int(byte) << ' ';
            else
                text << value;
        };
        if (type == KltFeatureDataFloat)
            read(0.0);
        else if (type == KltFeatureDataBool)
            read(false);
        else if (type == KltFeatureDataString)
            read(std::string());
        else if (type == KltFeatureDataRaw)
            read(OPX::KltAPI::UcharVector());
        else
            read(KltInt64_t(0));
        return text.str();
    }

    /// Writes \a value in the way that the feature's type asks for; an empty one runs a command.
    KltErrorType Set(const std::string& name, const std::string& value)
    {
        const OPX::KltAPI::FeaturePtr feature = Feature(name);
        KltFeatureDataType type = KltFeatureDataUnknown;
        feature->GetDataType(type);
        if (type == KltFeatureDataFloat)
            return feature->SetValue(std::stod(value));
        if (type == KltFeatureDataBool)
            return feature->SetValue(value == "1");
        if (type == KltFeatureDataString)
            return feature->SetValue(value.c_str());
        if (type == KltFeatureDataCommand)
            return feature->RunCommand();
        return feature->SetValue(KltInt64_t(std::stoll(value)));
    }

    /// Does what each row says, "Name: expected value" or "Name = value: expected code".
    void Expect(const std::vector<const char*>& rows)
    {
        for (const std::string row : rows)
        {
            const std::size_t colon = row.rfind(": ");
            const std::size_t equals = row.find(" = ");
            const std::string expected = row.substr(colon + 2);
            if (equals == std::string::npos)
                EXPECT_EQ(Get(row.substr(0, colon)), expected) << row;
            else
                EXPECT_EQ(Set(row.substr(0, equals), row.substr(equals + 3, colon - equals - 3)), std::stoi(expected))
                    << row;
        }
    }

    OPX::KltAPI::FeaturePtrVector Features()
    {
        OPX::KltAPI::FeaturePtrVector features;
        EXPECT_EQ(ReadList(*m_camera, &OPX::KltAPI::Camera::GetFeatures, features), 0);
        return features;
    }

    template <class Condition>
    static bool WaitFor(Condition condition, std::chrono::seconds limit = std::chrono::seconds(5))
    {
        const auto end = std::chrono::steady_clock::now() + limit;
        while (!condition())
        {
            if (std::chrono::steady_clock::now() > end)
                return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return true;
    }

    std::filesystem::path m_folder;
    OPX::KltAPI::CameraPtr m_camera;
};

#endif
