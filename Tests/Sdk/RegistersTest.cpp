#include "Camera/Impls.h"
#include "SdkFixture.h"
#include "Transport/RegisterDevice.h"

#include <unistd.h>

#include <algorithm>
#include <map>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

/// A camera that takes whole words only, and tells what was done with them.
class WordMemory : public RegisterAccess
{
public:
    struct Log
    {
        std::uint8_t step = 0; ///< From a byte to the next one, in memory that was never written.
        std::map<std::uint64_t, int> reads;
        int changes = 0; ///< Bytes.
    };

    explicit WordMemory(Log& log) : m_log(log) {}

    Failure ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer) override
    {
        ++m_log.reads[address];
        for (std::uint32_t i = 0; i < size; ++i)
            buffer[i] = ByteAt(address + i);
        return address % 4 + size % 4 == 0 ? KltErrorSuccess : KltErrorBadParameter;
    }

    Failure WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer) override
    {
        for (std::uint32_t i = 0; i < size; ++i)
            m_log.changes += std::exchange(ByteAt(address + i), buffer[i]) != buffer[i] ? 1 : 0;
        return address % 4 + size % 4 == 0 ? KltErrorSuccess : KltErrorBadParameter;
    }

    Failure ReadRegister(std::uint64_t, std::uint32_t&) override { return KltErrorNotSupported; }
    Failure WriteRegister(std::uint64_t, std::uint32_t) override { return KltErrorNotSupported; }

private:
    std::uint8_t& ByteAt(std::uint64_t address)
    {
        return m_bytes.emplace(address, static_cast<std::uint8_t>(0xFF + address * m_log.step)).first->second;
    }

    Log& m_log;
    std::map<std::uint64_t, std::uint8_t> m_bytes;
};

} // namespace

class Registers : public SdkTest
{
protected:
    /// Opens a camera over WordMemory.
    void OpenWords(const std::filesystem::path& file)
    {
        const auto connect = [this, file](Connection& connection)
        {
            connection.device = NewRegisterDevice(std::make_unique<WordMemory>(m_log), DeviceKind::GigEVision);
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
}

TEST_F(Registers, ListsOfValuesAreEntries)
{
    OpenWords(CAMERAS "/Ranges.xml");
    std::vector<EnumEntry> entries;
    ASSERT_EQ(ReadList(*Feature("Binning"), &Feature::GetEntries, entries), 0);
    std::string names;
    for (const EnumEntry& entry : entries)
        names += Text(entry, &EnumEntry::GetName) + " ";
    EXPECT_EQ(names, "1 2 4 ");
    unsigned int count = 0;
    EXPECT_EQ(Feature("Room")->GetEntries(nullptr, count), KltErrorWrongType);
}

TEST_F(Registers, WhatWasReadCanBeWritten)
{
    OpenWords(CAMERAS "/Ranges.xml");
    const struct
    {
        const char* name;
        KltInt64_t first, last, step;
    } rows[] = {{"Hundredths", 0, 2400, 1}, {"Decibels", 65536, 655360, 301}, {"Falling", 1, 100, 1},
        {"Exposure", 10, 2000, 1}, {"Ticks", 10, 998, 4}};
    const FeaturePtr raw = Feature("Raw");
    for (const auto& row : rows)
    {
        const FeaturePtr feature = Feature(row.name);
        int lost = 0;
        for (KltInt64_t r = row.first; r <= row.last; r = r < row.last ? std::min(r + row.step, row.last) : r + 1)
        {
            double value = 0;
            KltInt64_t after = 0;
            const bool kept = raw->SetValue(r) == 0 && feature->GetValue(value) == 0 && feature->SetValue(value) == 0 &&
                              raw->GetValue(after) == 0 && after == r;
            lost += kept ? 0 : 1;
        }
        EXPECT_EQ(lost, 0) << row.name;
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
    OpenWords(CAMERAS "/Words.xml");
    Expect({"Limits = 6553610: 0", "State = 1: 0"});
    m_log.reads.clear();
    Expect({"Width = 60: 0"});
    EXPECT_EQ(m_log.reads.size(), 3u);
    for (const auto& read : m_log.reads)
        EXPECT_EQ(read.second, 1) << read.first;
    Expect({"Width: 60", "Width = 101: -11", "Limits = 655370: 0", "Width = 60: -11"});
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

/// As those of Aravis did, which keeps a copy of every register.
TEST_F(Registers, TakeNoMemoryOnceTheyAreRead)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "what is freed stays";
#endif
    std::string nodes;
    std::vector<std::string> names;
    for (const std::string kind : {"Register", "StringReg"})
        for (int i = 0; i < 8; ++i)
        {
            names.push_back(kind + std::to_string(i));
            nodes += "<" + kind + " Name='" + names.back() + "'><Address>0</Address><Length>16777216</Length>" +
                     "<AccessMode>RW</AccessMode><pPort>Device</pPort></" + kind + ">";
        }
    nodes += "<Register Name='Huge'><Address>0</Address><Length>16777217</Length><pPort>Device</pPort></Register>";
    names.push_back("Huge");
    Write("Large.xml", Description(names, nodes));
    Open("Large");
    EXPECT_EQ(Get("Huge"), "code -14");
    names.pop_back();
    const auto pages = []
    {
        long total = 0, resident = 0;
        std::ifstream("/proc/self/statm") >> total >> resident;
        return resident;
    };
    const long before = pages();
    for (const std::string& name : names)
    {
        UcharVector bytes;
        std::string text;
        EXPECT_EQ(Feature(name)->GetValue(bytes) * Feature(name)->GetValue(text), 0) << name;
        EXPECT_EQ(bytes.size() + text.size(), 16777216u);
    }
    EXPECT_LT((pages() - before) * sysconf(_SC_PAGESIZE), 32 << 20);
}
