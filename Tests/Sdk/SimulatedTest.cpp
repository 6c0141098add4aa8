#include "SdkFixture.h"

#include "Safety/SafeDescription.h"

#include <KoltaCPP/Extensions.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <map>
#include <mutex>
#include <set>
#include <stdexcept>

using namespace OPX::KltAPI;

class Simulated : public SdkTest
{
protected:
    void OpenCopyOf(const std::string& camera)
    {
        std::filesystem::copy(CAMERAS "/" + camera + ".xml", m_folder);
        Open(camera);
    }

    std::string Told(KltErrorType (*getter)(const Camera&, char*, unsigned int&)) const
    {
        std::string text;
        EXPECT_TRUE(
            ReadText([&](char* buffer, unsigned int& length) { return getter(*m_camera, buffer, length); }, text));
        return text;
    }
};

TEST_F(Simulated, WhatCannotBeDoneHasItsCode)
{
    OpenCopyOf("Zoo");
    for (KltInt64_t value : {2ll, 18ll, 10ll})
        EXPECT_EQ(Feature("I")->SetValue(value), 0) << value;
    for (KltInt64_t value : {1ll, 19ll, 22ll, 8ll, -9223372036854775807ll})
        EXPECT_EQ(Feature("I")->SetValue(value), KltErrorInvalidValue) << value;
    for (double value : {-1.1, 2.1, std::stod("nan")})
        EXPECT_EQ(Feature("F")->SetValue(value), KltErrorInvalidValue) << value;
    EXPECT_EQ(Feature("E")->SetValue(7), KltErrorInvalidValue);
    EXPECT_EQ(Feature("R")->SetValue(UcharVector(3)), KltErrorInvalidValue);
    EXPECT_EQ(Feature("Ro")->SetValue(1), KltErrorInvalidAccess);
    EXPECT_EQ(Feature("Locked")->SetValue(1), KltErrorInvalidAccess);
    KltInt64_t integer = 42;
    EXPECT_EQ(Feature("Wo")->GetValue(integer), KltErrorInvalidAccess);
    EXPECT_EQ(Feature("Away")->GetValue(integer), KltErrorInvalidAccess);
    EXPECT_EQ(Feature("F")->GetValue(integer), KltErrorWrongType);
    EXPECT_EQ(integer, 42);
    EXPECT_EQ(Feature("I")->SetValue(1.0), KltErrorWrongType);
    EXPECT_EQ(Feature("I")->RunCommand(), KltErrorWrongType);
    EXPECT_EQ(Feature("S")->SetValue(static_cast<const char*>(nullptr)), KltErrorBadParameter);
    FeaturePtr none;
    EXPECT_EQ(m_camera->GetFeatureByName("Missing", none), KltErrorNotFound);
    EXPECT_EQ(m_camera->GetFeatureByName(nullptr, none), KltErrorBadParameter);
    EXPECT_EQ(m_camera->Open(1), KltErrorInvalidAccess);
    EXPECT_EQ(m_camera->Open(2), KltErrorBadParameter);
    EXPECT_EQ(Feature("I")->GetValue(integer), 0);
    EXPECT_EQ(integer, 10);
}

TEST_F(Simulated, MetadataOutlivesTheConnectionAndHandlesServeTheNextOne)
{
    OpenCopyOf("Zoo");
    const FeaturePtr feature = Feature("E");
    EXPECT_EQ(m_camera->Close(), 0);
    unsigned int count = 0;
    KltInt64_t value = 0;
    EXPECT_EQ(m_camera->GetFeatures(nullptr, count), KltErrorDeviceNotOpen);
    EXPECT_EQ(feature->GetValue(value), KltErrorDeviceNotOpen);
    EXPECT_EQ(feature->SetValue(-1), KltErrorDeviceNotOpen);
    EXPECT_EQ(feature->GetEntries(nullptr, count), 0);
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(m_camera->Open(1), 0);
    EXPECT_EQ(feature->GetValue(value), 0);
    EXPECT_EQ(value, -1);
    EXPECT_EQ(Features().size(), 13u);
    System().Shutdown();
    m_camera.reset();
    EXPECT_EQ(Text(*feature, &Feature::GetName), "E");
    EXPECT_EQ(feature->GetValue(value), KltErrorDeviceNotOpen);
}

TEST_F(Simulated, TextsAndListsFitOrSayHowMuchTheyNeed)
{
    OpenCopyOf("Zoo");
    char buffer[8] = "xxxxxxx";
    unsigned int length = 5;
    EXPECT_EQ(Feature("Memory")->GetName(buffer, length), KltErrorMoreData);
    EXPECT_EQ(length, 6u);
    EXPECT_EQ(Feature("Memory")->GetName(buffer, length), 0);
    EXPECT_EQ(std::string(buffer), "Memoryx");
    length = 7;
    EXPECT_EQ(Feature("Memory")->GetName(buffer, length), 0);
    EXPECT_EQ(std::string(buffer), "Memory");
    FeaturePtr few[2];
    unsigned int count = 2;
    EXPECT_EQ(m_camera->GetFeatures(few, count), KltErrorMoreData);
    EXPECT_EQ(count, 13u);
}

TEST_F(Simulated, CamerasComeAndGoWithTheirFiles)
{
    std::atomic<int> came(0), went(0), lost(0);
    ASSERT_EQ(System().Startup(), 0);
    const std::size_t shipped = Cameras().size();
    EXPECT_GE(shipped, 3u);
    ASSERT_EQ(System().RegisterCameraListObserver(ICameraListObserverPtr(new Counter(came, went, lost))), 0);
    Write("Plug.xml",
        Description({"M"}, "<IntReg Name='M'><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode>"
                           "<pPort>Device</pPort></IntReg>"));
    EXPECT_TRUE(WaitFor([&] { return came == 1; }));
    m_camera = Find("Plug");
    ASSERT_NE(m_camera.get(), nullptr);
    EXPECT_EQ(Text(*m_camera, &Camera::GetName), "Model");
    unsigned int count = 0;
    EXPECT_EQ(System().GetCameras(nullptr, count) + m_camera->Open(1), 0);
    const FeaturePtr memory = Feature("M");
    KltInt64_t value = 0;
    EXPECT_EQ(memory->SetValue(77), 0);
    std::filesystem::rename(m_folder / "Plug.xml", m_folder / "Plug");
    EXPECT_EQ(memory->GetValue(value), KltErrorDeviceNotOpen);
    EXPECT_TRUE(WaitFor([&] { return went == 1; }));
    CameraPtrVector listed(count);
    EXPECT_EQ(System().GetCameras(listed.data(), count), 0);
    EXPECT_EQ(count, shipped + 1);
    EXPECT_EQ(Cameras().size(), shipped);
    EXPECT_EQ(came + went + lost, 3);
    // The camera is back, but not the session.
    std::filesystem::rename(m_folder / "Plug", m_folder / "Plug.xml");
    EXPECT_TRUE(WaitFor([&] { return came == 2; }));
    EXPECT_EQ(memory->SetValue(78), KltErrorDeviceNotOpen);
    EXPECT_EQ(m_camera->GetFeatures(nullptr, count), KltErrorDeviceNotOpen);
    EXPECT_EQ(m_camera->Open(1), KltErrorInvalidAccess);
    EXPECT_EQ(m_camera->Close() + m_camera->Open(1) + memory->GetValue(value), 0);
    EXPECT_EQ(value, 0xFFFFFFFF);
    std::filesystem::remove(m_folder / "Plug.xml");
    EXPECT_EQ(m_camera->Close() + m_camera->Open(1), KltErrorNotFound);
}

TEST_F(Simulated, TheSystemHasToBeStarted)
{
    unsigned int count = 0;
    EXPECT_EQ(System().GetCameras(nullptr, count), KltErrorApiNotStarted);
    std::atomic<int> calls(0);
    const ICameraListObserverPtr observer(new Counter(calls, calls, calls));
    EXPECT_EQ(System().RegisterCameraListObserver(observer), KltErrorApiNotStarted);
    EXPECT_EQ(System().Shutdown(), 0);
    setenv("KOLTA_TRANSPORTS", "none", 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(System().Startup(), KltErrorNoTransportLayer);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("'none'"), std::string::npos);
    setenv("KOLTA_TRANSPORTS", "simulated", 1);
    EXPECT_EQ(System().Startup() + System().Startup(), 0);
    EXPECT_EQ(System().RegisterCameraListObserver(observer), 0);
    EXPECT_EQ(System().Shutdown() + System().GetCameras(nullptr, count), 0);
    EXPECT_EQ(observer.use_count(), 2);
    EXPECT_EQ(System().Shutdown(), 0);
    EXPECT_EQ(observer.use_count(), 1);
}

TEST_F(Simulated, FilesThatAreBeingCopiedAreNotBroken)
{
    // A place that is missing is reported now, and not again.
    setenv("KOLTA_CAMERA_PATH", (m_folder.string() + ":" + (m_folder / "missing").string()).c_str(), 1);
    testing::internal::CaptureStderr();
    ASSERT_EQ(System().Startup(), 0);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("missing', which"), std::string::npos);
    const std::string whole = Description({"A"}, "<Integer Name='A'><Value>1</Value></Integer>");
    testing::internal::CaptureStderr();
    {
        std::ofstream file(m_folder / "Slow.xml");
        for (const char character : whole.substr(0, 20))
        {
            file << character << std::flush;
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        file << whole.substr(20);
    }
    EXPECT_TRUE(WaitFor([] { return Find("Slow").get() != nullptr; }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    Write("Slow.xml", "broken");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(WaitFor([] { return Find("Slow").get() == nullptr; }));
    // Not once more with the next look.
    Write("Next.xml", Description({}, ""));
    EXPECT_TRUE(WaitFor([] { return Find("Next").get() != nullptr; }));
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
}

TEST_F(Simulated, AFileThatSomebodyHasLeasedHoldsUpNobody)
{
    // Whoever opens it and can wait waits until the lease is given back.
    signal(SIGIO, SIG_IGN);
    Write("Busy.xml", Description({}, ""));
    const int file = open((m_folder / "Busy.xml").c_str(), O_RDWR);
    if (fcntl(file, F_SETLEASE, F_WRLCK) != 0)
        GTEST_SKIP() << "no leases in this folder";
    const auto begin = std::chrono::steady_clock::now();
    testing::internal::CaptureStderr();
    ASSERT_EQ(System().Startup(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "KoltaCPP: " + (m_folder / "Busy.xml").string() + ": " + std::strerror(EWOULDBLOCK) + "\n");
    EXPECT_GE(Cameras().size(), 3u);
    close(file);
}

TEST_F(Simulated, WhatAnObserverThrowsEndsNothing)
{
    struct Thrower : ICameraListObserver
    {
        void CameraListChanged(CameraPtr, UpdateTriggerType) override { throw std::runtime_error("thrown"); }
    };
    ASSERT_EQ(System().Startup(), 0);
    ASSERT_EQ(System().RegisterCameraListObserver(ICameraListObserverPtr(new Thrower)), 0);
    Write("First.xml", Description({}, ""));
    EXPECT_TRUE(WaitFor([] { return Find("First").get() != nullptr; }));
    Write("Second.xml", Description({}, ""));
    EXPECT_TRUE(WaitFor([] { return Find("Second").get() != nullptr; }));
}

TEST_F(Simulated, FeaturesMayLimitEachOther)
{
    OpenCopyOf("Circles");
    const FeaturePtrVector features = Features();
    ASSERT_EQ(features.size(), 10u);
    for (std::size_t i = 0; i < 8; ++i)
    {
        KltInt64_t value = 0;
        EXPECT_EQ(features[i]->GetValue(value), 0) << Text(*features[i], &Feature::GetName);
        features[i]->SetValue(value);
    }
    // Of unreasonable length and of none.
    for (const auto& row : {std::make_pair("Text", KltErrorResources), std::make_pair("None", KltErrorInvalidValue)})
    {
        std::string text;
        EXPECT_EQ(Feature(row.first)->GetValue(text), row.second);
        EXPECT_EQ(Feature(row.first)->SetValue("x"), row.second);
    }
}

TEST_F(Simulated, ValuesStartAsTheFileBesideTheDescriptionSays)
{
    Write("Zoo.values", "I = 14\nS=a = b\nRo=9\nE = Big\nR = 1 02 fe FF\n");
    OpenCopyOf("Zoo");
    UcharVector bytes;
    EXPECT_TRUE(Feature("R")->GetValue(bytes) == 0 && bytes == (UcharVector{1, 2, 0xFE, 0xFF}));
    const std::pair<const char*, KltInt64_t> numbers[] = {{"I", 14}, {"Ro", 9}, {"E", 4294967296}};
    for (const auto& number : numbers)
    {
        KltInt64_t value = 0;
        EXPECT_TRUE(Feature(number.first)->GetValue(value) == 0 && value == number.second) << number.first;
    }
    std::string text;
    EXPECT_TRUE(Feature("S")->GetValue(text) == 0 && text == "a = b");
}

TEST_F(Simulated, CamerasAreMadeFromAnyFileWithoutTheSystem)
{
    setenv("KOLTA_TRANSPORTS", "none", 1);
    const std::filesystem::path path = m_folder / "a\tb: c%s.xml";
    std::filesystem::copy(CAMERAS "/Zoo.xml", path);
    std::filesystem::last_write_time(path, {});
    Write("a\tb: c%s.values", "I = 14\n");
    ASSERT_EQ(FromDescription(path.c_str(), m_camera), 0);
    EXPECT_EQ(Text(*m_camera, &Camera::GetName), "Model");
    EXPECT_EQ(Text(*m_camera, &Camera::GetSerialNumber), "a_b: c%s");
    EXPECT_EQ(Told(&GetTransport), "simulated");
    EXPECT_EQ(Told(&GetAddress), path.string());
    EXPECT_EQ(m_camera->Open(1), 0);
    KltInt64_t value = 0;
    EXPECT_TRUE(Feature("I")->GetValue(value) == 0 && value == 14);
    EXPECT_EQ(m_camera->Close(), 0);
    // Different content is another camera, even if the size is the same, and the earlier camera is gone.
    const CameraPtr before = m_camera;
    Write("a\tb: c%s.xml", std::string(std::filesystem::file_size(path), '-'));
    EXPECT_EQ(before->Open(1), KltErrorNotFound);
    testing::internal::CaptureStderr();
    EXPECT_EQ(FromDescription(path.c_str(), m_camera), KltErrorNotFound);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "KoltaCPP: " + m_folder.string() + "/a_b: c%s.xml: it holds no XML\n");
    testing::internal::CaptureStderr();
    DescriptionProblem problem;
    Write("Other.xml", "\n<a/>");
    EXPECT_EQ(FromDescription((m_folder / "Other.xml").c_str(), m_camera, problem), KltErrorNotFound);
    EXPECT_EQ(std::to_string(problem.line) + " " + problem.text, "2 its root element is not RegisterDescription");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(m_camera.get(), before.get());
    EXPECT_EQ(FromDescription(nullptr, m_camera), KltErrorBadParameter);
}

TEST_F(Simulated, CamerasAreMadeFromCheckedText)
{
    SafeDescription checked = ReadDescription(CAMERAS "/Chains.xml");
    Write("Ch.ains.values", "Gain = 0.5\n");
    const std::string path = (m_folder / "Ch.ains.xml").string();
    ASSERT_EQ(FromCheckedDescription(checked.xml.data(), checked.xml.size(), "Name", path.c_str(), m_camera), 0);
    checked.xml.assign(checked.xml.size(), 'x');
    EXPECT_EQ(Told(&GetAddress) + " " + Text(*m_camera, &Camera::GetSerialNumber), path + " Ch.ains");
    ASSERT_EQ(m_camera->Open(1), 0);
    // There is no such file, and none is missed.
    Expect({"Gain: 0.5", "Copied = 5: 0", "First: 5", "Second: 5"});
    EXPECT_EQ(Told(&GetDescription), ReadDescription(CAMERAS "/Chains.xml").xml);

    std::filesystem::current_path(m_folder);
    Write(".values", "I = 14\n");
    checked = ReadDescription(CAMERAS "/Zoo.xml");
    ASSERT_EQ(FromCheckedDescription(checked.xml.data(), checked.xml.size(), "Name", nullptr, m_camera), 0);
    EXPECT_EQ(Told(&GetAddress) + " " + Text(*m_camera, &Camera::GetSerialNumber), " Name");
    EXPECT_EQ(m_camera->Open(1), 0);
    EXPECT_EQ(Get("I"), "10");
    std::filesystem::current_path(m_folder.parent_path());
    EXPECT_EQ(FromCheckedDescription(nullptr, 0, "Name", nullptr, m_camera), KltErrorBadParameter);
    EXPECT_EQ(FromCheckedDescription("", 0, nullptr, nullptr, m_camera), KltErrorBadParameter);
}

TEST_F(Simulated, MasksOfEitherByteOrderAreWritten)
{
    Open("Sim1-Mono");
    Expect({"GevSCPHostPort = 513: 0", "GevSCPInterfaceIndex = 2: 0", "GevTimestampTrim = -2048: 0",
        "GevSCPHostPort: 513", "GevSCPInterfaceIndex: 2", "GevTimestampTrim: -2048", "GevSCPHostPort = 65536: -11",
        "GevSCPHostPort = -1: -11", "GevSCPInterfaceIndex = 16: -11", "GevTimestampTrim = 2048: -11"});
}

TEST_F(Simulated, TheShippedCameraLimitsLocksAndSelects)
{
    Open("Sim1-Mono");
    Expect({"OffsetX = 8: -11", "Width = 2440: 0", "OffsetX = 8: 0", "Width = 2448: -11", "TLParamsLocked = 1: 0",
        "Width = 1224: -6", "ExposureAuto = 2: 0", "ExposureTime = 50: -6", "ExposureAuto = 0: 0",
        "ExposureTime = 50: 0", "ExposureAutoLowerLimit = 500000: 0", "ExposureAutoLowerLimit = 500001: -11",
        "DeviceTemperature: 41.5", "DeviceTemperatureSelector = 1: 0", "DeviceTemperature: 38.25", "LineStatus: 1",
        "LineSelector = 1: 0", "LineStatus: 0", "UserOutputSelector = 1: 0", "UserOutputValue = 1: 0",
        "UserOutputValueAll: 2"});
}

TEST_F(Simulated, NoFormulaEndsTheProcess)
{
    Write("Formulas.values", "Smallest = -9223372036854775808\n");
    OpenCopyOf("Formulas");
    Expect({"Quotient: code -14", "Remainder: 0", "RealRemainder: 0", "Converted: code -14", "Implemented: code -14",
        "Addressed = 7: 0", "Addressed: 7", "Converted = 5: 0", "Smallest: -5", "Converted: 5", "Chosen: 7",
        "Absolute: 9", "Constant: -6", "Endless: code -13", "Scaled = 0.29: 0", "Whole: 29", "Scaled = 2.6: -11"});
}

TEST_F(Simulated, EveryNodeOnTheWayToAValueCounts)
{
    OpenCopyOf("Chains");
    Expect({"ReadOnly = 1: -6", "Locked = 1: -6", "Locked: 4294967295", "Away = 1: -6", "Away: code -6", "Mode = 1: 0",
        "Mode = 2: -6", "Mode = 3: -11", "Copied = 5: 0", "First: 5", "Second: 5", "Gain = 99.9: 0", "Gain = 0.75: -11",
        "Unlimited = 0.3: 0", "Unlimited = 1e300: -14", "First: 0", "Text: code -14", "Text = a: -14",
        "Label = abcd: 0", "Label: abcd", "Label = abcde: -11", "Chunk: code -6", "Chunk = 1: -6", "Event: code -6",
        "EventNumber: 36865", "ChunkSelf: code -6", "ChunkSwitch = 1: 0", "ChunkSwitch: 1", "ExtendedNode: 5",
        "AllBits = 4294967296: 0", "AllBits: 4294967296"});
}

TEST_F(Simulated, MemoryKeepsWhatIsWritten)
{
    OpenCopyOf("Zoo");
    KltInt64_t value = 0;
    EXPECT_TRUE(Feature("Memory")->GetValue(value) == 0 && value == 0xFFFFFFFF);
    EXPECT_EQ(Feature("C")->RunCommand(), 0);
    // It crosses the end of a page; the others are on the next one.
    Expect({"Memory: 77", "R: 0 77 255 255 "});
    EXPECT_EQ(Feature("E")->SetValue(4294967296), 0);
    EXPECT_TRUE(Feature("E")->GetValue(value) == 0 && value == 4294967296);
    double real = 0;
    EXPECT_TRUE(Feature("F")->SetValue(-0.25) == 0 && Feature("F")->GetValue(real) == 0 && real == -0.25);
}
