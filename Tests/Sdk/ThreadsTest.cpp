#include "SdkFixture.h"

#include <atomic>

using namespace OPX::KltAPI;

namespace
{

class Toucher : public ICameraListObserver
{
public:
    explicit Toucher(std::atomic<bool>& allowed) : m_allowed(allowed) {}

    void CameraListChanged(CameraPtr camera, UpdateTriggerType) override
    {
        EXPECT_TRUE(m_allowed) << "told after the shutdown";
        unsigned int length = 0;
        camera->GetName(nullptr, length);
    }

private:
    std::atomic<bool>& m_allowed;
};

} // namespace

class Threads : public SdkTest
{
};

TEST_F(Threads, ListOpenReadAndShutDownAtTheSameTime)
{
    std::atomic<bool> done(false);
    std::vector<std::thread> threads;
    threads.emplace_back(
        [&]
        {
            for (int i = 0; !done; ++i)
            {
                Write("Plug" + std::to_string(i % 3) + ".xml", Description({}, ""));
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
                std::filesystem::remove(m_folder / ("Plug" + std::to_string((i + 1) % 3) + ".xml"));
            }
        });
    for (int i = 0; i < 3; ++i)
        threads.emplace_back(
            [&]
            {
                while (!done)
                {
                    unsigned int count = 0;
                    if (System().GetCameras(nullptr, count) != KltErrorSuccess || count == 0)
                        continue;
                    CameraPtrVector cameras(count);
                    if (System().GetCameras(cameras.data(), count) != KltErrorSuccess)
                        continue;
                    const CameraPtr camera = cameras[count - 1];
                    const bool opened = camera->Open(1) == KltErrorSuccess;
                    FeaturePtr width;
                    KltInt64_t value = 0;
                    if (camera->GetFeatureByName("Width", width) == KltErrorSuccess)
                    {
                        width->GetValue(value);
                        width->SetValue(value);
                    }
                    if (opened)
                        camera->Close();
                }
            });
    for (int i = 0; i < 6; ++i)
    {
        std::atomic<bool> allowed(true);
        ASSERT_EQ(System().Startup(), 0);
        ASSERT_EQ(System().RegisterCameraListObserver(ICameraListObserverPtr(new Toucher(allowed))), 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        EXPECT_EQ(System().Shutdown(), 0);
        allowed = false;
    }
    done = true;
    for (std::thread& thread : threads)
        thread.join();
}

/// The program still has to end, even in the middle of a scan.
TEST_F(Threads, EndWithAProgramThatForgetsToShutDown)
{
    for (int i = 0; i < 300; ++i)
        Write("Many" + std::to_string(i) + ".xml", Description({}, ""));
    for (int i = 0; i < 10; ++i)
        EXPECT_EXIT(std::exit(System().Startup()), testing::ExitedWithCode(0), "");
}
