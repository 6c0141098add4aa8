// With cameras in the network. To be run in a network namespace of its own, see in-own-network.

#include "PlayedCamera.h"
#include "RangeProperty.h"
#include "SdkFixture.h"

#include <arv.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

using namespace OPX::KltAPI;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

namespace
{

const char Nodes[] = "<IntReg Name='Width'><Address>0x9000</Address><Length>4</Length><AccessMode>RW</AccessMode>"
                     "<pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>BigEndian</Endianess></IntReg>"
                     "<StringReg Name='Label'><Address>0x9010</Address><Length>8</Length><AccessMode>RW</AccessMode>"
                     "<pPort>Device</pPort><Cachable>NoCache</Cachable></StringReg>";
const std::uint32_t LabelAddress = 0x9010;
const std::uint32_t ControlRegister = 0xA00;

const std::uint16_t ReadRegister = 0x80;
const std::uint16_t ReadMemory = 0x84;
const std::uint16_t WriteMemory = 0x86;

std::string Content(const std::filesystem::path& file)
{
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}

std::string Hex(std::size_t number)
{
    std::ostringstream hex;
    hex << std::hex << number;
    return hex.str();
}

/// What the call returns. It has to return within the limit.
template <class SdkCall>
KltErrorType Timed(SdkCall call, milliseconds limit)
{
    const auto start = steady_clock::now();
    const KltErrorType result = call();
    EXPECT_LT((steady_clock::now() - start) / milliseconds(1), limit.count());
    return result;
}

/// A camera in a process of its own.
class FakeCamera
{
public:
    FakeCamera(const char* address, const char* serialNumber)
    {
        const char* arguments[] = {
            std::getenv("FAKE_CAMERA"), "-i", address, "-s", serialNumber, "-g", CAMERA_DESCRIPTION, nullptr};
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

    /// Closes the camera before it is unplugged.
    ~GigE() override
    {
        if (m_camera)
            m_camera->Close();
    }

    /// With a width and a label.
    static std::string SmallDescription() { return Description({"Width", "Label"}, Nodes); }

    /// Starts the SDK and waits for the camera.
    CameraPtr Await(const std::string& serialNumber)
    {
        System().Startup();
        if (!WaitFor([&] { return Find(serialNumber).get() != nullptr; }))
            throw std::runtime_error("no camera " + serialNumber);
        return Find(serialNumber);
    }
};

TEST_F(GigE, CamerasComeAndGoWithOneNoticeEach)
{
    const auto start = steady_clock::now();
    ASSERT_EQ(System().Startup(), 0);
    const auto started = steady_clock::now();
    std::atomic<int> came(0), went(0), lost(0);
    ASSERT_EQ(System().RegisterCameraListObserver(ICameraListObserverPtr(new Counter(came, went, lost))), 0);

    const FakeCamera first("127.0.0.1", "First");
    FakeCamera second("127.0.0.2", "Second");
    EXPECT_TRUE(WaitFor([&] { return came == 2; }));
    EXPECT_LT(2 * (started - start), steady_clock::now() - start) << "it waited for a scan";
    ASSERT_NE(Find("First").get(), nullptr);
    ASSERT_NE(Find("Second").get(), nullptr);
    for (const CameraPtr& camera : Cameras())
        EXPECT_EQ(camera->Open(1) + camera->Close(), 0);

    // To the camera, another socket is another program.
    m_camera = Find("First");
    ArvDevice* other = arv_open_device("Aravis-Fake-First", nullptr);
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(Timed([&] { return m_camera->Open(1); }, seconds(3)), KltErrorInvalidAccess);
    unsigned int count = 0;
    EXPECT_EQ(m_camera->GetFeatures(nullptr, count), KltErrorDeviceNotOpen);
    g_object_unref(other);
    EXPECT_EQ(m_camera->Open(1), 0);

    const CameraPtr dying = Find("Second");
    ASSERT_EQ(dying->Open(1), 0);
    second.Unplug();
    EXPECT_EQ(Timed([&] { return dying->GetFeatures(nullptr, count); }, seconds(5)), KltErrorTimeout);
    EXPECT_TRUE(WaitFor([&] { return lost == 1; }, seconds(10)));
    EXPECT_EQ(Timed([&] { return dying->Close(); }, seconds(3)), 0);
    EXPECT_TRUE(WaitFor([&] { return went == 1; }, seconds(6)));
    EXPECT_EQ(Cameras().size(), 1u);
    // Meanwhile two scans run, and nothing changes.
    EXPECT_EQ(Timed([&] { return dying->Open(1); }, seconds(5)), KltErrorNotFound);
    EXPECT_EQ(came, 2);
    EXPECT_EQ(went, 1);
    EXPECT_EQ(lost, 1);
}

TEST_F(GigE, ADescriptionIsReadOrRefusedWhateverTheCameraSaysOfIt)
{
    const std::string sound = SmallDescription();
    std::string attributes;
    for (int i = 0; i < 60000; ++i)
        attributes += " a" + std::to_string(i) + "=''";
    Write("Sound.xml", sound);
    ASSERT_EQ(std::system(("cd " + m_folder.string() + "; zip -q Sound.zip Sound.xml; mkfifo Pipe").c_str()), 0);
    const std::string zip = Content(m_folder / "Sound.zip");
    // The list of its files is said to be far away. It is not needed.
    std::string damaged = zip;
    damaged.replace(damaged.size() - 6, 4, "\xF0\xFF\xFF\x7F");
    typedef PlayedCamera::Manner Manner;
    const struct
    {
        PlayedCamera::Role role;
        KltErrorType code;
    } rows[] = {
        {{"", "", sound}, 0},
        {{"", "", sound + std::string(300, '\0')}, 0},
        {{"", "", sound + "\n" + std::string(300, '\xFF')}, 0},
        {{"", "", zip + std::string(300, '\xFF')}, 0},
        {{"", "", zip}, 0},
        {{"LOCAL:///Camera.xml;0x10000;" + Hex(sound.size()) + "?SchemaVersion=1.1.0", "", sound}, 0},
        {{"http://localhost/Camera.xml", "own", sound}, 0},
        {{"Local:Nothing.xml;7FFFFFF0;100", "own", sound}, 0},
        {{"", "", sound, 0, Manner::LosesEverySecond}, 0},
        {{"", "", sound, 0, Manner::IsSlow}, 0},
        {{"", "", sound, 0, Manner::MixesUp}, 0},
        {{"", "", sound, 0, Manner::WritesWords}, 0},
        {{"", "", sound, 0, Manner::Lies}, 0},
        {{"", "", sound, 2}, KltErrorInvalidAccess},
        {{"", "", sound, 1, Manner::IsSlow}, KltErrorInvalidAccess},
        {{"File://" + (m_folder / "Pipe").string(), "", sound}, KltErrorOther},
        {{"File:///dev/zero", "Local:", sound}, KltErrorOther},
        {{"Local:Large.xml;10000;FFFFFFFF", "Local:Beyond.xml;FFFFFFF0;100", sound}, KltErrorOther},
        {{"Local:Nothing.xml;10000;0", "Local:;;;x;-1;-1", sound}, KltErrorOther},
        {{"", "", damaged}, 0},
        {{"", "", zip.substr(0, zip.size() / 2)}, KltErrorOther},
        {{"", "", "<?xml version='1.0' encoding='none'?" + sound}, KltErrorOther},
        {{"", "", Description({"I"}, "<Integer Name='I'" + attributes + "/>")}, KltErrorOther},
        {{"", "", Content(BROKEN_DESCRIPTIONS "/Half.xml")}, KltErrorOther},
        {{"", "", Content(BROKEN_DESCRIPTIONS "/Circle.xml")}, KltErrorOther},
    };
    PlayedCamera played("127.0.0.1", "Hostile");
    m_camera = Await("Hostile");
    for (const auto& row : rows)
    {
        SCOPED_TRACE(&row - rows);
        played.Play(row.role);
        ASSERT_EQ(Timed([&] { return m_camera->Open(1); }, seconds(3)), row.code);
        if (row.code != 0)
            continue;
        EXPECT_EQ(Feature("Width")->SetValue(640), 0);
        EXPECT_EQ(played.Register(PlayedCamera::WidthAddress), 640u);
        EXPECT_EQ(Feature("Label")->SetValue("wordABCD"), 0);
        EXPECT_EQ(played.Register(LabelAddress + 4), 0x41424344u);
        EXPECT_EQ(played.Register(ControlRegister), 2u);
        EXPECT_EQ(m_camera->Close(), 0);
        EXPECT_EQ(played.Register(ControlRegister), 0u);
    }
}

TEST_F(GigE, RangesAreWhatCanBeSet)
{
    PlayedCamera played("127.0.0.1", "Ranged");
    m_camera = Await("Ranged");
    int tried = 0;
    for (const char* folder : {CAMERAS, SHIPPED_CAMERAS})
        for (const auto& file : std::filesystem::directory_iterator(folder))
        {
            played.Play({"", "", Content(file)});
            if (m_camera->Open(1) != 0)
                continue;
            tried += CheckRanges(Features(), file.path().filename());
            EXPECT_EQ(m_camera->Close(), 0);
        }
    EXPECT_GT(tried, 1000);
}

TEST_F(GigE, NoCallTakesTenSecondsWhateverTheCameraDoes)
{
    PlayedCamera first("127.0.0.1", "First");
    PlayedCamera second("127.0.0.2", "Second");
    first.Play({"", "", SmallDescription(), 0, PlayedCamera::Manner::AsksForPatience});
    second.Play({"", "", SmallDescription()});
    m_camera = Await("Second");
    ASSERT_EQ(m_camera->Open(1), 0);
    const FeaturePtr width = Feature("Width");
    second.Change(PlayedCamera::Manner::AsksForPatience);
    const CameraPtr other = Await("First");
    std::thread opening([&] { EXPECT_EQ(Timed([&] { return other->Open(1); }, seconds(10)), KltErrorTimeout); });
    const auto read = [&]
    {
        KltInt64_t value = 0;
        EXPECT_EQ(Timed([&] { return width->GetValue(value); }, seconds(10)), KltErrorTimeout);
    };
    std::thread waiting(read);
    read();
    waiting.join();
    opening.join();
    EXPECT_EQ(Timed([&] { return m_camera->Close(); }, seconds(3)), 0);

    first.Change(PlayedCamera::Manner::KeepsSilent);
    std::thread silence([&] { EXPECT_EQ(Timed([&] { return other->Open(1); }, seconds(4)), KltErrorTimeout); });
    second.Change(PlayedCamera::Manner::AnswersHalf);
    EXPECT_EQ(Timed([&] { return m_camera->Open(1); }, seconds(4)), KltErrorTimeout);
    silence.join();
    second.Change(PlayedCamera::Manner::Answers);
    EXPECT_EQ(Timed([&] { return m_camera->Open(1); }, seconds(3)), 0);
}

TEST_F(GigE, ALostCameraServesAgainOnlyAfterCloseAndOpen)
{
    const PlayedCamera::Role free = {"", "", SmallDescription()};
    auto played = std::make_unique<PlayedCamera>("127.0.0.1", "Lost");
    m_camera = Await("Lost");
    std::atomic<int> came(0), went(0), lost(0);
    ASSERT_EQ(System().RegisterCameraListObserver(ICameraListObserverPtr(new Counter(came, went, lost))), 0);
    FeaturePtr width;
    KltInt64_t value = 0;
    unsigned int count = 0;
    PlayedCamera::Role silent = free, foreign = free;
    silent.manner = PlayedCamera::Manner::KeepsSilent;
    foreign.control = 1;
    int losses = 0;
    for (const PlayedCamera::Role& role : {free, silent, foreign})
    {
        SCOPED_TRACE(++losses);
        played->Play(free);
        ASSERT_EQ(m_camera->Open(1), 0);
        if (!width)
            width = Feature("Width");
        EXPECT_TRUE(width->SetValue(256) == 0 && width->GetValue(value) == 0 && value == 256);
        // What was set and who controls it are forgotten.
        played->Play(role);
        if (role.manner == silent.manner)
            EXPECT_EQ(Timed([&] { return width->GetValue(value); }, seconds(5)), KltErrorTimeout);
        else
            EXPECT_TRUE(WaitFor([&] { return lost == losses; }, seconds(10)));
        EXPECT_EQ(Timed([&] { return width->GetValue(value); }, seconds(3)), KltErrorDeviceNotOpen);
        EXPECT_TRUE(WaitFor([&] { return lost == losses; }, seconds(10)));
        played->Change(free.manner);
        EXPECT_EQ(width->SetValue(512), KltErrorDeviceNotOpen);
        EXPECT_EQ(m_camera->GetFeatures(nullptr, count), KltErrorDeviceNotOpen);
        EXPECT_EQ(m_camera->Open(1), KltErrorInvalidAccess);
        EXPECT_EQ(m_camera->Close(), 0);
        EXPECT_EQ(played->Register(PlayedCamera::WidthAddress), 0u);
        EXPECT_EQ(played->Register(ControlRegister), role.control);
    }
    // Cameras can get another address.
    played.reset();
    played = std::make_unique<PlayedCamera>("127.0.0.2", "Lost");
    played->Play(free);
    EXPECT_TRUE(WaitFor([&] { return m_camera->Open(1) == 0; }, seconds(15)));
    EXPECT_EQ(width->SetValue(512), 0);
    EXPECT_EQ(came + went, 0);
    EXPECT_EQ(lost, 3);
}

TEST_F(GigE, WhatIsAskedAgainIsAskedWithPatience)
{
    typedef PlayedCamera::Manner Manner;
    PlayedCamera played("127.0.0.1", "Patient");
    played.Play({"", "", SmallDescription()});
    m_camera = Await("Patient");
    ASSERT_EQ(m_camera->Open(1), 0);
    const FeaturePtr width = Feature("Width");
    const struct
    {
        Manner manner;
        std::uint16_t command;
        std::size_t limit;
    } rows[] = {
        {Manner::IsSlow, WriteMemory, 1},
        {Manner::LosesEverySecond, WriteMemory, 4},
        {Manner::AsksForFiveSeconds, ReadMemory, 1},
        {Manner::AsksForNothing, ReadMemory, 20},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(&row - rows);
        played.Change(row.manner);
        const std::size_t before = played.Questions(row.command).size();
        KltInt64_t value = 0;
        EXPECT_EQ(row.command == ReadMemory ? width->GetValue(value) : width->SetValue(640), 0);
        std::vector<std::uint32_t> questions = played.Questions(row.command);
        questions.erase(questions.begin(), questions.begin() + before);
        EXPECT_LE(questions.size(), row.limit);
        EXPECT_EQ(std::count(questions.begin(), questions.end(), questions.at(0)), questions.size());
    }
    played.Change(Manner::WritesHalf);
    EXPECT_EQ(Feature("Label")->SetValue("half"), KltErrorIncomplete);
}

TEST_F(GigE, ConnectionsAreKeptAliveAndLeaveNothingBehind)
{
    PlayedCamera played("127.0.0.1", "Lasting");
    played.Play({"", "", SmallDescription()});
    m_camera = Await("Lasting");
    const auto descriptors = [] {
        return std::distance(
            std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
    };
    System().Shutdown();
    const auto before = descriptors();
    for (int i = 0; i < 1000; ++i)
    {
        ASSERT_EQ(m_camera->Open(1), 0);
        KltInt64_t value = 0;
        ASSERT_EQ(Feature("Width")->GetValue(value), 0);
        ASSERT_EQ(m_camera->Close(), 0);
    }
    EXPECT_EQ(descriptors(), before);

    // A camera drops a controller that it has not heard from for three seconds. One that answers is not gone, whether
    // it is found or not.
    std::atomic<int> came(0), went(0), lost(0);
    m_camera = Await("Lasting");
    ASSERT_EQ(System().RegisterCameraListObserver(ICameraListObserverPtr(new Counter(came, went, lost))), 0);
    ASSERT_EQ(m_camera->Open(1), 0);
    const FeaturePtr width = Feature("Width");
    played.Change(PlayedCamera::Manner::IsOverlooked);
    const std::size_t questions = played.Questions(ReadRegister).size();
    std::this_thread::sleep_for(seconds(10));
    EXPECT_GT(played.Questions(ReadRegister).size(), questions + 9);
    EXPECT_EQ(width->SetValue(640), 0) << "calls have deadlines of their own";
    EXPECT_EQ(came + went + lost, 0);
    EXPECT_EQ(m_camera->Close() + m_camera->Open(1) + m_camera->Close(), 0);
    EXPECT_TRUE(WaitFor([&] { return went == 1; }, seconds(10)));
}
