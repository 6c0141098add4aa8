#include "RangeProperty.h"
#include "SdkFixture.h"

#include <KoltaCPP/Extensions.h>

#include <thread>

using namespace OPX::KltAPI;

class Questions : public SdkTest
{
protected:
    typedef KltErrorType (*TextQuestion)(const OPX::KltAPI::Feature&, char*, unsigned int&);

    std::string Told(TextQuestion question, const std::string& name)
    {
        char text[100] = "";
        unsigned int length = sizeof text;
        const KltErrorType code = question(*Feature(name), text, length);
        return code == 0 ? std::string(text, length) : "code " + std::to_string(code);
    }

    std::string AvailableEntries(const std::string& name)
    {
        EnumEntry entries[3];
        unsigned int count = 3;
        EXPECT_EQ(GetAvailableEntries(*Feature(name), entries, count), 0);
        std::string names;
        for (unsigned int i = 0; i < count; ++i)
            names += Text(entries[i], &EnumEntry::GetName) + ' ';
        return names;
    }

    KltFeatureFlagsType AccessNow(const std::string& name)
    {
        KltFeatureFlagsType flags = 99;
        EXPECT_EQ(GetAccessNow(*Feature(name), flags), 0);
        return flags;
    }
};

/// What a range allows can be set, whatever the registers hold, and nothing beyond it.
TEST_F(Questions, RangesAreWhatCanBeSet)
{
    int tried = 0;
    for (const char* folder : {CAMERAS, GENERATED_CAMERAS, SHIPPED_CAMERAS, BATCH_CAMERAS})
        for (const auto& file : std::filesystem::directory_iterator(folder))
        {
            DescriptionProblem problem;
            if (FromDescription(file.path().c_str(), m_camera, problem) == 0 && m_camera->Open(1) == 0)
                tried += CheckRanges(Features(), file.path().filename());
        }
    EXPECT_GT(tried, 1000);
}

TEST_F(Questions, FeaturesTellWhatTheyAreAndWhatCanBeDoneNow)
{
    Write(
        "Asked.xml", Description({"Mode", "Gain", "Text", "Raw", "Free"},
                         "<Enumeration Name='Mode'><ToolTip>Which\none</ToolTip><Visibility>Guru</Visibility>"
                         "<EnumEntry Name='Off'><Value>0</Value></EnumEntry>"
                         "<EnumEntry Name='On'><pIsAvailable>Free</pIsAvailable><Value>2</Value></EnumEntry>"
                         "<Value>0</Value><pSelected>Gain</pSelected><pSelected>Nowhere</pSelected></Enumeration>"
                         "<Float Name='Gain'><Description>At length</Description><DisplayName>The Gain</DisplayName>"
                         "<pIsLocked>Mode</pIsLocked><Value>1</Value><Min>0.5</Min><Max>8</Max><Unit>dB</Unit></Float>"
                         "<StringReg Name='Text'><Address>64</Address><Length>9</Length><AccessMode>RW</AccessMode>"
                         "<pPort>Device</pPort></StringReg>"
                         "<Register Name='Raw'><Address>96</Address><Length>5</Length><AccessMode>RO</AccessMode>"
                         "<pPort>Device</pPort></Register>"
                         "<Integer Name='Free'><Value>1</Value><Min>0</Min><Max>1</Max></Integer>"));
    Open("Asked");
    EXPECT_EQ(Told(&GetDisplayName, "Gain") + Told(&GetUnit, "Gain") + Told(&GetHelp, "Gain"), "The GaindBAt length");
    EXPECT_EQ(Told(&GetDisplayName, "Mode") + Told(&GetToolTip, "Mode") + Told(&GetUnit, "Mode"), "ModeWhich one");
    FeatureVisibility visibility = FeatureVisibility::Invisible;
    EXPECT_EQ(GetVisibility(*Feature("Mode"), visibility), 0);
    EXPECT_EQ(visibility, FeatureVisibility::Guru);

    FeaturePtr selected;
    unsigned int count = 1;
    EXPECT_EQ(GetSelected(*Feature("Mode"), &selected, count), 0);
    EXPECT_EQ(Text(*selected, &OPX::KltAPI::Feature::GetName) + std::to_string(count), "Gain1");

    KltInt64_t number = 0;
    EXPECT_EQ(GetLength(*Feature("Text"), number), 0);
    EXPECT_EQ(number, 9);
    EXPECT_EQ(GetLength(*Feature("Raw"), number), 0);
    EXPECT_EQ(number, 5);
    EXPECT_EQ(GetLength(*Feature("Gain"), number), KltErrorWrongType);
    EXPECT_EQ(GetRange(*Feature("Gain"), number, number, number), KltErrorWrongType);

    EXPECT_EQ(AvailableEntries("Mode"), "Off On ");
    EXPECT_EQ(AccessNow("Gain") + 10 * AccessNow("Raw"), 13U);
    Expect({"Mode = 2: 0", "Free = 0: 0"});
    EXPECT_EQ(AvailableEntries("Mode"), "Off ");
    EXPECT_EQ(AccessNow("Gain"), KltFeatureFlagsRead);

    const FeaturePtr mode = Feature("Mode");
    m_camera->Close();
    char name[3] = "";
    unsigned int length = 3;
    EXPECT_EQ(GetEntryName(*mode, 2, name, length), 0);
    EXPECT_STREQ(name, "On");
    EXPECT_EQ(GetEntryName(*mode, 1, name, length) + GetEntryValue(*mode, "on", number), 2 * KltErrorNotFound);
    EXPECT_EQ(GetEntryValue(*mode, "On", number), 0);
    EXPECT_EQ(number, 2);
    EXPECT_EQ(GetUnit(*mode, nullptr, length), KltErrorDeviceNotOpen);
}

TEST_F(Questions, CamerasAreWaitedFor)
{
    EXPECT_EQ(FindCamera("Late", 0, m_camera), KltErrorApiNotStarted);
    ASSERT_EQ(System().Startup(), 0);
    EXPECT_EQ(FindCamera("Late", 1, m_camera), KltErrorNotFound);
    std::thread plug([this] { Write("Late.xml", Description({}, "")); });
    EXPECT_EQ(FindCamera("Late", 20000, m_camera), 0);
    plug.join();
    EXPECT_STREQ(ErrorText(KltErrorIncomplete), "A multiple registers reads or writes was partially completed.");
    EXPECT_STREQ(ErrorText(1), "The code is unknown.");
}
