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
