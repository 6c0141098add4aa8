#include "System/CameraList.h"
#include "SdkFixture.h"
#include "Transport/GigeTransport.h"
#include "Transport/RegisterDevice.h"
#include "Transport/SparseMemory.h"

using namespace OPX::KltAPI;

namespace
{

class Files : public Transport
{
public:
    std::vector<CameraRecord> Scan() override { return {}; }
    int ToleratedMisses() const override { return 0; }
    bool IsQuick() const override { return true; }
};

/// As the device of a camera on USB: it tells when there is no camera any more.
class Pulled : public SparseMemory
{
public:
    explicit Pulled(const bool& isPulled) : m_isPulled(isPulled) {}

    Failure ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer) override
    {
        return m_isPulled ? KltErrorDeviceNotOpen : SparseMemory::ReadMemory(address, size, buffer);
    }

private:
    const bool& m_isPulled;
};

} // namespace

class CameraLists : public SdkTest
{
protected:
    /// Connects to a camera that is there until it is pulled.
    Failure Connect(Connection& connection)
    {
        connection.isThere = [this] { return !m_isPulled; };
        connection.device = NewRegisterDevice(std::make_unique<Pulled>(m_isPulled), DeviceKind::Plain);
        return connection.Use(std::make_shared<const SafeDescription>(CheckDescription(
            Description({"R"}, "<IntReg Name='R'><Address>0</Address><Length>4</Length><pPort>Device</pPort></IntReg>"),
            "")));
    }

    /// Reports a scan that found cameras with these letters: "+" for one that came, "-" for one that went, "!" for one
    /// that was lost.
    std::string Tell(const Transport& transport, const std::string& found)
    {
        std::vector<CameraRecord> records;
        for (const char letter : found)
            records.push_back({std::string(1, letter), "Name", std::string(1, letter), "gige", "address",
                [this](Connection& connection) { return Connect(connection); }});
        std::string told;
        for (const CameraList::Changes::value_type& change : m_list.Update(transport, records))
            told += "+-!"[change.second] + Text(*change.first, &Camera::GetSerialNumber);
        return told;
    }

    CameraList m_list;
    bool m_isPulled = false;
};

TEST_F(CameraLists, TellThatAnOpenCameraIsLostBeforeItGoes)
{
    const GigeTransport network;
    for (const bool isCalled : {false, true, false})
    {
        EXPECT_EQ(Tell(network, "a"), "+a");
        m_camera = m_list.Cameras()[0];
        ASSERT_EQ(m_camera->Open(1), 0);
        const FeaturePtr feature = Feature("R");
        KltInt64_t value = 0;
        EXPECT_EQ(feature->GetValue(value), 0);
        for (int misses = 3; misses > 0; --misses)
            EXPECT_EQ(Tell(network, ""), "");
        m_isPulled = true;
        EXPECT_EQ(isCalled ? feature->GetValue(value) : KltErrorDeviceNotOpen, KltErrorDeviceNotOpen);
        EXPECT_EQ(isCalled ? Tell(network, "a") : "!a", "!a");
        EXPECT_EQ(isCalled ? Tell(network, "") : "", "");
        EXPECT_EQ(Tell(network, ""), isCalled ? "-a" : "!a-a");
        m_isPulled = false;
        EXPECT_EQ(feature->SetValue(1), KltErrorDeviceNotOpen);
        EXPECT_EQ(m_camera->Close() + m_camera->Open(1) + feature->GetValue(value) + m_camera->Close(), 0);
    }
}

TEST_F(CameraLists, ForgiveALostReplyButNotTwo)
{
    const GigeTransport network;
    const Files files;
    EXPECT_EQ(Tell(network, "aba"), "+a+b");
    const CameraPtr first = m_list.Cameras()[0];
    EXPECT_EQ(Tell(files, "a"), "+a");
    EXPECT_EQ(Tell(network, "b"), "");
    EXPECT_EQ(Tell(network, "ab"), "");
    EXPECT_EQ(Tell(network, "b"), "");
    EXPECT_EQ(Tell(network, "bc"), "-a+c");
    EXPECT_EQ(Tell(files, ""), "-a");
    EXPECT_EQ(Tell(network, "abc"), "+a");
    EXPECT_EQ(m_list.Cameras().size(), 3u);
    EXPECT_NE(m_list.Cameras()[2].get(), first.get());
}

TEST_F(CameraLists, AreWholeWhileTheyChange)
{
    const Files files;
    std::atomic<bool> done(false);
    Tell(files, "a");
    std::thread scanner(
        [&]
        {
            for (int i = 0; i < 20000; ++i)
                Tell(files, i % 2 == 0 ? "b" : "a");
            done = true;
        });
    std::size_t odd = 0;
    while (!done)
        odd += m_list.Cameras().size() == 1 ? 0 : 1;
    scanner.join();
    EXPECT_EQ(odd, 0u);
}
