#include "Camera/Impls.h"
#include "SdkFixture.h"
#include "WordMemory.h"

#include <unistd.h>

#include <algorithm>

using namespace OPX::KltAPI;

class Registers : public SdkTest
{
protected:
    /// Opens a camera over WordMemory.
    void OpenWords(const std::filesystem::path& file, DeviceKind kind = DeviceKind::GigEVision)
    {
        const auto connect = [this, file, kind](Connection& connection)
        {
            connection.device = NewRegisterDevice(std::make_unique<WordMemory>(m_log), kind);
            EXPECT_FALSE(connection.Use(std::make_shared<const SafeDescription>(ReadDescription(file.string()))));
            m_nodes = connection.nodeMap.get();
            return KltErrorSuccess;
        };
        m_camera = NewCamera({"id", "name", "serial", "gige", "", connect});
        ASSERT_EQ(m_camera->Open(1), 0);
    }

    WordMemory::Log m_log;
    ArvGc* m_nodes = nullptr;
};

TEST_F(Registers, LimitsFollowFromAllNodesOnTheWay)
{
    OpenWords(CAMERAS "/Ranges.xml");
    Expect({"Exposure = 5000.5: 0", "Raw: 5001", "Exposure = 9.4: -11", "Exposure = 50000.5: 0", "Raw: 50000",
        "Exposure = 50001: -11", "Stepped = 14: 0", "Stepped = 14.5: -11", "Stepped = 16: -11", "Ticks = 2.3: 0",
        "Raw: 18", "Ticks = 126: -11", "Doubled = 11: 0", "Raw: 22", "Doubled = 12: -11", "Percent = 57: 0",
        "Fraction: 0.57", "Percent = 7: 0", "Percent = 57.1: -11", "OffsetX = 0: 0", "OffsetX = 100: -11",
        "OffsetX = -1: -11", "OffsetX = 70000: -11", "OffsetX: 0", "Room = 65536: 0", "OffsetX = 65535: 0",
        "OffsetX = 65536: -11", "Wide = -1: 0", "Wide: -1", "Eight: -1", "Eight = -2: 0", "Wide = 4294967296: 0",
        "Eight: 4294967296", "Falling = 1000: 0", "Raw: 1", "Falling = 10: 0", "Raw: 100", "Falling = 9.9: -11",
        "Falling = 1001: -11", "Binning = 4: 0", "Binning = 3: -11", "Indexed = 20.4: 0", "Raw: 20", "Index = 1: 0",
        "Indexed = 20.4: -11", "Indexed = 8: -11"});
    unsigned int count = 0;
    EXPECT_EQ(Feature("Room")->GetEntries(nullptr, count), KltErrorWrongType);
    EnumEntryVector entries;
    ASSERT_EQ(ReadList(*Feature("Binning"), &Feature::GetEntries, entries), 0);
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(Text(entries[2], &EnumEntry::GetName), "4");
}

TEST_F(Registers, WhatWasReadCanBeWritten)
{
    OpenWords(CAMERAS "/Ranges.xml");
    typedef std::pair<KltInt64_t, KltInt64_t> Limits;
    const FeaturePtr raw = Feature("Raw");
    for (const auto& [name, limits] :
        {std::pair("Hundredths", Limits(0, 2400)), std::pair("Decibels", Limits(40, 2000)),
            std::pair("Falling", Limits(1, 100)), std::pair("Exposure", Limits(10, 2000))})
    {
        const FeaturePtr feature = Feature(name);
        KltInt64_t lost = 0;
        for (KltInt64_t r = limits.first; r <= limits.second; ++r)
        {
            double value = 0;
            KltInt64_t after = 0;
            const KltErrorType code =
                raw->SetValue(r) + feature->GetValue(value) + feature->SetValue(value) + raw->GetValue(after);
            lost += code == 0 && after == r ? 0 : 1;
        }
        EXPECT_EQ(lost, 0) << name;
    }
}

TEST_F(Registers, OfOtherSizesAreInTheWordsAroundThem)
{
    OpenWords(CAMERAS "/Words.xml");
    Expect({"Byte = 1: 0", "Short = 515: 0", "All: 255 1 3 2 255 255 255 255 255 255 255 255 ", "Text = abc: 0",
        "Text: abc", "All: 255 1 3 2 255 255 97 98 99 0 0 255 ", "Byte: 1", "Short: 515", "Crossing: 65282",
        "Crossing = 1: 0", "All: 255 1 3 1 0 255 97 98 99 0 0 255 "});
}

TEST_F(Registers, AreReadOnceInACall)
{
    for (const auto kind : {DeviceKind::Usb3Vision, DeviceKind::GigEVision})
    {
        OpenWords(CAMERAS "/Words.xml", kind);
        Expect({"Limits = 6553610: 0", "State = 1: 0"});
        m_log.reads.clear();
        Expect({"Width = 60: 0"});
        EXPECT_EQ(m_log.reads.size(), 3u);
        for (const auto& read : m_log.reads)
            EXPECT_EQ(read.second, 1) << read.first;
        Expect({"Width: 60", "Width = 101: -11", "Limits = 655370: 0", "Width = 60: -11"});
    }
}

TEST_F(Registers, StayAsTheyAreWhenWhatTheySayIsWritten)
{
    int written = 0;
    for (const int step : {0, 1, 37})
        for (const std::string folder : {"/", "/../../Generated/Cameras/", "/../../../Sdk/Cameras/"})
            for (const auto& file : std::filesystem::directory_iterator(CAMERAS + folder))
            {
                m_log.step = static_cast<std::uint8_t>(step);
                OpenWords(file);
                for (const FeaturePtr& feature : Features())
                {
                    const std::string name = Text(*feature, &Feature::GetName);
                    const NodeChain chain = ValueChain(ARV_GC_FEATURE_NODE(arv_gc_get_node(m_nodes, name.c_str())));
                    const bool isConverted = std::any_of(
                        chain.begin(), chain.end(), [](ArvGcFeatureNode* node) { return ARV_IS_GC_CONVERTER(node); });
                    const auto rewrite = [&](auto value)
                    { return feature->GetValue(value) == 0 && feature->SetValue(value) == 0; };
                    if (!ARV_IS_GC_REGISTER(chain.back()) || isConverted)
                        continue;
                    feature->SetValue(KltInt64_t(64));
                    feature->SetValue(1.7);
                    m_log.changes = 0;
                    written += rewrite(KltInt64_t(0)) || rewrite(0.0) ? 1 : 0;
                    EXPECT_EQ(m_log.changes, 0) << file.path() << ' ' << name;
                }
            }
    EXPECT_GT(written, 40);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // They do not give back what is freed.
/// Aravis keeps a copy of whatever its nodes read.
TEST_F(Registers, TakeNoMemoryOnceTheyAreRead)
{
    const auto large = [](const std::string& name, const char* length)
    {
        return "<StringReg Name='" + name + "'><Address>0</Address><Length>" + length +
               "</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></StringReg>";
    };
    const std::vector<std::string> names = {"S0", "S1", "S2", "S3", "S4", "S5", "Huge"};
    std::string nodes = large("Huge", "16777217");
    for (int i = 0; i < 6; ++i)
        nodes += large(names[i], "16777216");
    Write("Large.xml", Description(names, nodes));
    Open("Large");
    const auto resident = []
    {
        long total = 0, pages = 0;
        std::ifstream("/proc/self/statm") >> total >> pages;
        return pages * sysconf(_SC_PAGESIZE);
    };
    const long before = resident();
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(Get(names[i]).size(), 16777216u);
    EXPECT_LT(resident() - before, 64 << 20);
    EXPECT_EQ(Get("Huge"), "code -14");
}
#endif
