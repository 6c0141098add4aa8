// Against cameras in the network. To be run in a network of its own, see in-own-network.

#include "SdkFixture.h"

#include <arv.h>

#include <csignal>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace OPX::KltAPI;
using std::chrono::seconds;
using std::chrono::steady_clock;

namespace
{

/// A camera in a process of its own.
class FakeCamera
{
public:
    FakeCamera(const std::string& address, const std::string& serialNumber, const std::string& description)
    {
        const char* arguments[] = {"arv-fake-gv-camera-0.8", "-i", address.c_str(), "-s", serialNumber.c_str(), "-g",
            description.c_str(), nullptr};
        EXPECT_EQ(posix_spawnp(&m_process, arguments[0], nullptr, nullptr, const_cast<char**>(arguments), environ), 0);
    }

    ~FakeCamera() { Unplug(); }

    void Unplug()
    {
        if (m_process == 0)
            return;
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    pid_t m_process = 0;
};

} // namespace

class GigE : public SdkTest
{
protected:
    GigE() { setenv("KOLTA_TRANSPORTS", "gige", 1); }

    /// Closes the camera before it is unplugged: a dead one takes seconds.
    ~GigE() override
    {
        if (m_camera)
            m_camera->Close();
    }

    FakeCamera& Plug(const std::string& address, const std::string& serialNumber,
        const std::string& description = CAMERA_DESCRIPTION)
    {
        m_plugged.push_back(std::make_unique<FakeCamera>(address, serialNumber, description));
        return *m_plugged.back();
    }

    /// Starts the SDK and waits for the camera.
    CameraPtr Await(const std::string& serialNumber)
    {
        System().Startup();
        EXPECT_TRUE(WaitFor([&] { return Find(serialNumber).get() != nullptr; })) << serialNumber;
        return Find(serialNumber);
    }

private:
    std::vector<std::unique_ptr<FakeCamera>> m_plugged;
};

TEST_F(GigE, CamerasComeAndGoWithOneNoticeEach)
{
    const auto start = steady_clock::now();
    ASSERT_EQ(System().Startup(), 0);
    EXPECT_LT(steady_clock::now() - start, std::chrono::milliseconds(500));
    std::atomic<int> came(0);
    std::atomic<int> went(0);
    ASSERT_EQ(System().RegisterCameraListObserver(ICameraListObserverPtr(new Counter(came, went))), 0);

    Plug("127.0.0.1", "First");
    EXPECT_TRUE(WaitFor([&] { return came == 1; }, seconds(3)));
    FakeCamera& second = Plug("127.0.0.2", "Second");
    EXPECT_TRUE(WaitFor([&] { return came == 2; }, seconds(3)));
    ASSERT_NE(Find("First").get(), nullptr);
    ASSERT_NE(Find("Second").get(), nullptr);
    for (const CameraPtr& camera : Cameras())
        EXPECT_EQ(camera->Open(1) + camera->Close(), 0);

    second.Unplug();
    EXPECT_TRUE(WaitFor([&] { return went == 1; }, seconds(6)));
    EXPECT_EQ(Cameras().size(), 1u);
    EXPECT_NE(Find("First").get(), nullptr);
    std::this_thread::sleep_for(seconds(4));
    EXPECT_EQ(came, 2);
    EXPECT_EQ(went, 1);
}

TEST_F(GigE, ValuesAreThoseOfTheCamera)
{
    Plug("127.0.0.1", "Values");
    m_camera = Await("Values");
    ASSERT_EQ(m_camera->Open(1), 0);
    const FeaturePtr width = Feature("Width");
    KltInt64_t value = 0;
    EXPECT_EQ(width->GetValue(value), 0);
    EXPECT_EQ(value, 512);
    EXPECT_EQ(width->SetValue(1024), 0);
    EXPECT_EQ(width->SetValue(4096), KltErrorInvalidValue);
    EXPECT_EQ(width->SetValue(1030), KltErrorInvalidValue);
    EXPECT_EQ(Feature("SensorWidth")->SetValue(1), KltErrorInvalidAccess);
    EXPECT_EQ(Feature("AcquisitionStart")->RunCommand(), 0);
    EXPECT_EQ(m_camera->Close(), 0);
    EXPECT_EQ(width->GetValue(value), KltErrorDeviceNotOpen);
    EXPECT_EQ(Text(*width, &Feature::GetName), "Width");
    ASSERT_EQ(m_camera->Open(1), 0);
    EXPECT_EQ(width->GetValue(value), 0);
    EXPECT_EQ(value, 1024);
}

TEST_F(GigE, ACameraThatAnotherProgramControlsIsRefused)
{
    Plug("127.0.0.1", "Taken");
    m_camera = Await("Taken");
    // For the camera, whoever has another socket is another program.
    ArvDevice* other = arv_open_device("Aravis-Fake-Taken", nullptr);
    ASSERT_NE(other, nullptr);
    const auto start = steady_clock::now();
    EXPECT_EQ(m_camera->Open(1), KltErrorInvalidAccess);
    EXPECT_LT(steady_clock::now() - start, seconds(5));
    std::cout << "The refusal took " << (steady_clock::now() - start) / std::chrono::milliseconds(1) << " ms.\n";
    unsigned int count = 0;
    EXPECT_EQ(m_camera->GetFeatures(nullptr, count), KltErrorDeviceNotOpen);
    g_object_unref(other);
    EXPECT_EQ(m_camera->Open(1), 0);
}

TEST_F(GigE, ACameraThatDiesWhileItIsReadCostsTenSecondsAtMost)
{
    std::vector<std::string> names;
    std::string nodes = "<IntReg Name='Yes'><Address>0x11C</Address><Length>4</Length><AccessMode>RO</AccessMode>"
                        "<pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>BigEndian</Endianess></IntReg>";
    for (int i = 0; i < 10000; ++i)
    {
        names.push_back("F" + std::to_string(i));
        nodes += "<Integer Name='" + names.back() + "'><pIsImplemented>Yes</pIsImplemented><Value>1</Value></Integer>";
    }
    Write("Mortal.xml", Description(names, nodes));
    FakeCamera& fake = Plug("127.0.0.1", "Mortal", (m_folder / "Mortal.xml").string());
    m_camera = Await("Mortal");
    ASSERT_EQ(m_camera->Open(1), 0);

    std::thread murder(
        [&]
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            fake.Unplug();
        });
    const auto start = steady_clock::now();
    unsigned int count = 0;
    EXPECT_EQ(m_camera->GetFeatures(nullptr, count), KltErrorTimeout);
    const auto closing = steady_clock::now();
    EXPECT_EQ(m_camera->Close(), 0);
    EXPECT_LT(steady_clock::now() - closing, seconds(1));
    const auto duration = steady_clock::now() - start;
    murder.join();
    EXPECT_GT(duration, std::chrono::milliseconds(100));
    EXPECT_LT(duration, seconds(10));
    std::cout << "The reading and the closing took " << duration / std::chrono::milliseconds(1) << " ms.\n";
    EXPECT_TRUE(WaitFor([&] { return Find("Mortal").get() == nullptr; }, seconds(6)));
    EXPECT_EQ(m_camera->Open(1), KltErrorNotFound);
}

TEST_F(GigE, ACameraWithoutAUsableDescriptionIsAnError)
{
    for (const std::string name : {"NoXml", "Half", "Circle", "OtherRoot"})
    {
        FakeCamera& fake = Plug("127.0.0.1", name, BROKEN_DESCRIPTIONS "/" + name + ".xml");
        m_camera = Await(name);
        ASSERT_NE(m_camera.get(), nullptr);
        EXPECT_NE(m_camera->Open(1), 0) << name;
        m_camera.reset();
        System().Shutdown();
        fake.Unplug();
    }
}
