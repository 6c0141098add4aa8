#include "SdkFixture.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <set>

using namespace OPX::KltAPI;

namespace
{

class Observer : public ICameraListObserver
{
public:
    explicit Observer(std::atomic<int>& came, std::atomic<int>& went) : m_came(came), m_went(went) {}

    /// Nothing is locked while observers die.
    ~Observer() override { EXPECT_EQ(KoltaSystem::GetInstance().Shutdown(), 0); }

    void CameraListChanged(CameraPtr camera, UpdateTriggerType reason) override
    {
        EXPECT_NE(camera.get(), nullptr);
        EXPECT_EQ(KoltaSystem::GetInstance().Shutdown(), KltErrorInvalidCall);
        ++(reason == UpdateTriggerCameraArrived ? m_came : m_went);
    }

private:
    std::atomic<int>& m_came;
    std::atomic<int>& m_went;
};

const char Nodes[] = "<Integer Name='I'><Value>10</Value><Min>2</Min><Max>20</Max><Inc>4</Inc></Integer>"
                     "<Integer Name='Memory'><pValue>Reg</pValue></Integer>"
                     "<IntReg Name='Reg'><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode>"
                     "<pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>"
                     "<Float Name='F'><Value>1.5</Value><Min>-1</Min><Max>2</Max></Float>"
                     "<Boolean Name='B'><Value>0</Value><OnValue>1</OnValue><OffValue>0</OffValue></Boolean>"
                     "<Enumeration Name='E'><EnumEntry Name='Big'><Value>4294967296</Value></EnumEntry>"
                     "<EnumEntry Name='Neg'><Value>-1</Value></EnumEntry><EnumEntry Name='Gone'><pIsImplemented>No"
                     "</pIsImplemented><Value>7</Value></EnumEntry><Value>-1</Value></Enumeration>"
                     "<Integer Name='No'><Value>0</Value></Integer>"
                     "<String Name='S'><Value>text</Value></String>"
                     "<Register Name='R'><Address>0x200</Address><Length>4</Length><AccessMode>RW</AccessMode>"
                     "<pPort>Device</pPort></Register>"
                     "<Command Name='C'><pValue>Reg</pValue><CommandValue>77</CommandValue></Command>"
                     "<Integer Name='Ro'><ImposedAccessMode>RO</ImposedAccessMode><Value>3</Value></Integer>"
                     "<Integer Name='Wo'><ImposedAccessMode>WO</ImposedAccessMode><Value>3</Value></Integer>"
                     "<Integer Name='Locked'><pIsLocked>Yes</pIsLocked><Value>3</Value></Integer>"
                     "<Integer Name='Away'><pIsAvailable>No</pIsAvailable><Value>3</Value></Integer>"
                     "<Integer Name='Missing'><pIsImplemented>No</pIsImplemented><Value>3</Value></Integer>"
                     "<Integer Name='Yes'><Value>1</Value></Integer>";

const std::vector<std::string> Names = {
    "I", "Memory", "F", "B", "E", "S", "R", "C", "Ro", "Wo", "Locked", "Away", "Missing", "Nowhere", "Cat", "I"};

} // namespace

class Simulated : public SdkTest
{
protected:
    void OpenZoo()
    {
        Write("Zoo.xml", "A line of another tool\n" + Description(Names, Nodes));
        Open("Zoo");
    }
};

TEST_F(Simulated, ListsWhatIsImplementedWithTypeAndAccess)
{
    OpenZoo();
    std::string listed;
    for (const FeaturePtr& feature : Features())
    {
        KltFeatureDataType dataType = 99;
        KltFeatureFlagsType flags = 99;
        feature->GetDataType(dataType);
        feature->GetFlags(flags);
        EXPECT_EQ(Text(*feature, &Feature::GetCategory), "/Cat");
        listed +=
            Text(*feature, &Feature::GetName) + ":" + std::to_string(dataType) + ":" + std::to_string(flags) + " ";
    }
    EXPECT_EQ(listed, "I:1:3 Memory:1:3 F:2:3 B:5:3 E:3:3 S:4:3 R:7:3 C:6:2 Ro:1:1 Wo:1:2 Locked:1:3 Away:1:3 ");
    std::vector<EnumEntry> entries(5);
    unsigned int count = 5;
    ASSERT_EQ(Feature("E")->GetEntries(entries.data(), count), 0);
    ASSERT_EQ(count, 2u);
    EXPECT_EQ(Text(entries[0], &EnumEntry::GetName), "Big");
    EXPECT_EQ(Feature("I")->GetEntries(nullptr, count), KltErrorWrongType);
}

TEST_F(Simulated, ValuesAreReadBackAsTheyWereWritten)
{
    OpenZoo();
    KltInt64_t integer = 0;
    double real = 0;
    bool flag = false;
    std::string text;
    UcharVector bytes;
    EXPECT_EQ(Feature("I")->SetValue(14), 0);
    EXPECT_EQ(Feature("I")->GetValue(integer), 0);
    EXPECT_EQ(integer, 14);
    EXPECT_EQ(Feature("Memory")->GetValue(integer), 0);
    EXPECT_EQ(integer, 0xFFFFFFFFll);
    EXPECT_EQ(Feature("C")->RunCommand(), 0);
    EXPECT_EQ(Feature("Memory")->GetValue(integer), 0);
    EXPECT_EQ(integer, 77);
    EXPECT_EQ(Feature("F")->SetValue(-0.25), 0);
    EXPECT_EQ(Feature("F")->GetValue(real), 0);
    EXPECT_EQ(real, -0.25);
    EXPECT_EQ(Feature("B")->SetValue(true), 0);
    EXPECT_EQ(Feature("B")->GetValue(flag), 0);
    EXPECT_TRUE(flag);
    EXPECT_EQ(Feature("E")->SetValue(4294967296ll), 0);
    EXPECT_EQ(Feature("E")->GetValue(integer), 0);
    EXPECT_EQ(integer, 4294967296ll);
    EXPECT_EQ(Feature("S")->SetValue("other \xc3\xa4"), 0);
    EXPECT_EQ(Feature("S")->GetValue(text), 0);
    EXPECT_EQ(text, "other \xc3\xa4");
    EXPECT_EQ(Feature("R")->SetValue(UcharVector{1, 2, 3, 4}), 0);
    EXPECT_EQ(Feature("R")->GetValue(bytes), 0);
    EXPECT_EQ(bytes, (UcharVector{1, 2, 3, 4}));
}

TEST_F(Simulated, WhatCannotBeDoneHasItsCode)
{
    OpenZoo();
    for (KltInt64_t value : {1ll, 21ll, 22ll, 8ll, -9223372036854775807ll})
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
    OpenZoo();
    const FeaturePtr feature = Feature("E");
    EXPECT_EQ(m_camera->Close(), 0);
    unsigned int count = 0;
    KltInt64_t value = 0;
    EXPECT_EQ(m_camera->GetFeatures(nullptr, count), KltErrorDeviceNotOpen);
    EXPECT_EQ(feature->GetValue(value), KltErrorDeviceNotOpen);
    EXPECT_EQ(feature->SetValue(-1), KltErrorDeviceNotOpen);
    EXPECT_EQ(feature->GetEntries(nullptr, count), 0);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(m_camera->Open(1), 0);
    EXPECT_EQ(feature->GetValue(value), 0);
    EXPECT_EQ(value, -1);
    System().Shutdown();
    m_camera.reset();
    EXPECT_EQ(Text(*feature, &Feature::GetName), "E");
    EXPECT_EQ(feature->GetValue(value), KltErrorDeviceNotOpen);
}

TEST_F(Simulated, TextsAndListsFitOrSayHowMuchTheyNeed)
{
    OpenZoo();
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
    EXPECT_EQ(count, 12u);
}

TEST_F(Simulated, CamerasComeAndGoWithTheirFiles)
{
    std::atomic<int> came(0), went(0);
    ASSERT_EQ(System().Startup(), 0);
    const std::size_t shipped = Cameras().size();
    EXPECT_GE(shipped, 3u);
    ASSERT_EQ(System().RegisterCameraListObserver(ICameraListObserverPtr(new Observer(came, went))), 0);
    Write("Plug.xml", Description({}, ""));
    EXPECT_TRUE(WaitFor([&] { return came == 1; }));
    const CameraPtr camera = Find("Plug");
    ASSERT_NE(camera.get(), nullptr);
    EXPECT_EQ(Text(*camera, &Camera::GetName), "Model");
    unsigned int count = 0;
    EXPECT_EQ(System().GetCameras(nullptr, count), 0);
    std::filesystem::remove(m_folder / "Plug.xml");
    EXPECT_TRUE(WaitFor([&] { return went == 1; }));
    CameraPtrVector listed(count);
    EXPECT_EQ(System().GetCameras(listed.data(), count), 0);
    EXPECT_EQ(count, shipped + 1);
    EXPECT_EQ(Cameras().size(), shipped);
    EXPECT_EQ(came + went, 2);
    EXPECT_EQ(camera->Open(1), KltErrorNotFound);
}

TEST_F(Simulated, StartValuesStandBesideTheDescription)
{
    Write("Zoo.values", "# comment\n\n I = 14 \nS=a = b\nRo=9\nE = Big\nnonsense\nNobody = 1\n"
                        "I = 21\nI = four\nR = 01 0203\nR = 01 02\nR = 1 02 fe FF\n");
    testing::internal::CaptureStderr();
    OpenZoo();
    const std::string said = testing::internal::GetCapturedStderr();
    for (const char* line : {"7: there is no '='", "8: there is no feature 'Nobody'",
             "9: ", "10: ", "11: '0203' is no byte", "12: these are 2 of 4 bytes"})
        EXPECT_NE(said.find(std::string("Zoo.values:") + line), std::string::npos) << line << "\n" << said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 6) << said;
    UcharVector bytes;
    EXPECT_TRUE(Feature("R")->GetValue(bytes) == 0 && bytes == (UcharVector{1, 2, 0xFE, 0xFF}));
    KltInt64_t value = 0;
    std::string text;
    EXPECT_TRUE(Feature("I")->GetValue(value) == 0 && value == 14);
    EXPECT_TRUE(Feature("Ro")->GetValue(value) == 0 && value == 9);
    EXPECT_TRUE(Feature("E")->GetValue(value) == 0 && value == 4294967296ll);
    EXPECT_TRUE(Feature("S")->GetValue(text) == 0 && text == "a = b");
}

TEST_F(Simulated, ZippedDescriptionsAreUnpacked)
{
    Write("In\xc3\xa4side.xml", Description(Names, Nodes));
    const std::string zip = "cd '" + m_folder.string() +
                            "' && touch Readme.txt && zip -qm Zipped.zip Readme.txt In*side.xml"
                            " && head -c 70000000 /dev/zero >Bomb.xml && zip -qm1 Bomb.zip Bomb.xml";
    ASSERT_EQ(std::system(zip.c_str()), 0);
    testing::internal::CaptureStderr();
    Open("Zipped");
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("Bomb.zip: the description in the archive is too large"), std::string::npos) << said;
    EXPECT_EQ(Features().size(), 12u);
    EXPECT_EQ(Text(*m_camera, &Camera::GetDescription), Description(Names, Nodes));
    EXPECT_EQ(Text(*m_camera, &Camera::GetTransport), "simulated");
    EXPECT_EQ(Text(*m_camera, &Camera::GetAddress), (m_folder / "Zipped.zip").string());
}

TEST_F(Simulated, TheSystemHasToBeStarted)
{
    unsigned int count = 0;
    EXPECT_EQ(System().GetCameras(nullptr, count), KltErrorApiNotStarted);
    std::atomic<int> calls(0);
    const ICameraListObserverPtr observer(new Observer(calls, calls));
    EXPECT_EQ(System().RegisterCameraListObserver(observer), KltErrorApiNotStarted);
    EXPECT_EQ(System().Shutdown(), 0);
    setenv("KOLTA_TRANSPORTS", "none", 1);
    testing::internal::CaptureStderr();
    EXPECT_EQ(System().Startup(), KltErrorNoTransportLayer);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("'none'"), std::string::npos);
    setenv("KOLTA_TRANSPORTS", "simulated", 1);
    EXPECT_EQ(System().Startup(), 0);
    EXPECT_EQ(System().RegisterCameraListObserver(observer), 0);
    EXPECT_EQ(observer.use_count(), 2);
    EXPECT_EQ(System().Shutdown(), 0);
    EXPECT_EQ(observer.use_count(), 1);
}

TEST_F(Simulated, ShippedCamerasCoverEveryType)
{
    ASSERT_EQ(System().Startup(), 0);
    std::set<KltFeatureDataType> types;
    std::map<std::string, std::size_t> sizes;
    for (const char* serialNumber : {"Sim1-Mono", "Sim2-Color", "Sim3-Mini"})
    {
        m_camera = Find(serialNumber);
        ASSERT_EQ(m_camera->Open(1), 0);
        for (const FeaturePtr& feature : Features())
        {
            KltFeatureDataType dataType = 0;
            KltFeatureFlagsType flags = 0;
            feature->GetDataType(dataType);
            feature->GetFlags(flags);
            types.insert(dataType);
            ++sizes[serialNumber + Text(*feature, &Feature::GetCategory)];
            KltInt64_t value = 0;
            if (dataType == KltFeatureDataInt && (flags & KltFeatureFlagsRead) != 0)
            {
                EXPECT_EQ(feature->GetValue(value), 0) << Text(*feature, &Feature::GetName);
                EXPECT_EQ((flags & KltFeatureFlagsWrite) != 0 ? feature->SetValue(value) : 0, 0);
            }
        }
        m_camera->Close();
    }
    EXPECT_EQ(types, (std::set<KltFeatureDataType>{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_GT(sizes["Sim1-Mono/DeviceControl"], 16u);
    EXPECT_GT(sizes["Sim1-Mono/ImageFormatControl"], 16u);
    EXPECT_GT(sizes["Sim1-Mono/AcquisitionControl"], 16u);
}
