// Real GigE Vision cameras, as far as the protocol goes. To be run in a network of its own.

#include "SdkFixture.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>

using namespace OPX::KltAPI;
using std::chrono::seconds;

namespace
{

/// A camera that is a process.
class FakeCamera
{
public:
    explicit FakeCamera(const char* address, const char* serialNumber) : m_process(fork())
    {
        if (m_process == 0)
        {
            execl(FAKE_CAMERA, FAKE_CAMERA, "-i", address, "-s", serialNumber, static_cast<char*>(nullptr));
            _exit(1);
        }
    }

    ~FakeCamera() { Kill(); }

    void Kill()
    {
        if (m_process <= 0)
            return;
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = -1;
    }

private:
    pid_t m_process;
};

class Counter : public ICameraListObserver
{
public:
    explicit Counter(std::atomic<int>& count) : m_count(count) {}
    void CameraListChanged(CameraPtr, UpdateTriggerType) override { ++m_count; }

private:
    std::atomic<int>& m_count;
};

} // namespace

class GigE : public SdkTest
{
protected:
    GigE() { setenv("KOLTA_TRANSPORTS", "gige", 1); }

    /// Starts the SDK and waits until the camera is in the list.
    void WaitForCamera(const std::string& serialNumber)
    {
        ASSERT_TRUE(WaitFor([&] { return Find(serialNumber).get() != nullptr; }, seconds(3)));
        m_camera = Find(serialNumber);
    }
};

TEST_F(GigE, CamerasAppearAreReadAndLeave)
{
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(System().Startup(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1500));
    std::atomic<int> changes(0);
    System().RegisterCameraListObserver(ICameraListObserverPtr(new Counter(changes)));
    EXPECT_TRUE(Cameras().empty());

    FakeCamera first("127.0.0.1", "GV1");
    FakeCamera second("127.0.0.2", "GV2");
    WaitForCamera("GV2");
    WaitForCamera("GV1");
    EXPECT_FALSE(Text(*m_camera, &Camera::GetName).empty());
    ASSERT_EQ(m_camera->Open(1), 0);
    EXPECT_GT(Features().size(), 10u);
    KltInt64_t width = 0;
    EXPECT_EQ(Feature("Width")->SetValue(128), 0);
    EXPECT_EQ(Feature("Width")->GetValue(width), 0);
    EXPECT_EQ(width, 128);
    EXPECT_EQ(Text(*Feature("Width"), &Feature::GetCategory), "/ImageFormatControl");
    EXPECT_EQ(m_camera->Close(), 0);

    second.Kill();
    EXPECT_TRUE(WaitFor([&] { return Find("GV2").get() == nullptr; }, seconds(6)));
    EXPECT_NE(Find("GV1").get(), nullptr);
    EXPECT_EQ(changes, 3);
}

TEST_F(GigE, ACameraThatDiesCostsTenSecondsAtMost)
{
    ASSERT_EQ(System().Startup(), 0);
    FakeCamera fake("127.0.0.1", "GV3");
    WaitForCamera("GV3");
    ASSERT_EQ(m_camera->Open(1), 0);
    fake.Kill();
    const auto start = std::chrono::steady_clock::now();
    unsigned int count = 0;
    KltInt64_t width = 0;
    FeaturePtr feature;
    const KltErrorType listed = m_camera->GetFeatures(nullptr, count);
    if (listed == 0)
    {
        ASSERT_EQ(m_camera->GetFeatureByName("Width", feature), 0);
        EXPECT_EQ(feature->GetValue(width), KltErrorTimeout);
    }
    else
    {
        EXPECT_EQ(listed, KltErrorTimeout);
    }
    m_camera->Close();
    EXPECT_LT(std::chrono::steady_clock::now() - start, seconds(10));
    EXPECT_NE(m_camera->Open(1), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, seconds(20));
    EXPECT_TRUE(WaitFor([&] { return Cameras().empty(); }, seconds(6)));
}

TEST_F(GigE, ACameraThatAnotherProgramControlsIsNotOpened)
{
    FakeCamera fake("127.0.0.1", "GV4");
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t other = fork();
    if (other == 0)
    {
        System().Startup();
        const bool found = WaitFor([] { return Find("GV4").get() != nullptr; });
        const KltErrorType opened = found ? Find("GV4")->Open(1) : -3;
        const char result = opened == 0 ? 'y' : 'n';
        if (write(ready[1], &result, 1) == 1)
            pause();
        _exit(0);
    }
    char opened = 0;
    ASSERT_EQ(read(ready[0], &opened, 1), 1);
    EXPECT_EQ(opened, 'y');
    ASSERT_EQ(System().Startup(), 0);
    WaitForCamera("GV4");
    EXPECT_EQ(m_camera->Open(1), KltErrorInvalidAccess);
    kill(other, SIGKILL);
    waitpid(other, nullptr, 0);
    close(ready[0]);
    close(ready[1]);
}

TEST_F(GigE, AGeneratedClassWorks)
{
    FakeCamera fake("127.0.0.1", "GV5");
    const std::string folder = m_folder.string();
    const std::string command = "cd '" + folder +
                                "' && '" BIN "/kolta-classgen' generate --camera GV5 --output . "
                                "--class RealCamera 2>messages && g++ -std=c++11 -Wall -Wextra -Werror -I'" SDK_INCLUDE
                                "' -I. '" SOURCE "/UseRealCamera.cpp' RealCamera.cpp -L'" BIN "' -lKoltaCPP "
                                "-Wl,-rpath,'" BIN "' -o use && ./use";
    EXPECT_EQ(std::system(command.c_str()), 0);
}
