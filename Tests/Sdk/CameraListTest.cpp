#include "System/CameraList.h"
#include "SdkFixture.h"
#include "Transport/AravisTransport.h"
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
        if (m_answers)
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
    bool m_answers = false; ///< The camera to a heartbeat.
    bool m_isPulled = false;
};

TEST_F(CameraLists, ForgiveALostReplyButNotTwo)
{
    const AravisTransport network(true, true);
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

TEST_F(CameraLists, TellThatAnOpenCameraIsLostBeforeItGoes)
{
    const AravisTransport network(true, true);
    const auto miss = [&](int scans)
    {
        std::string told;
        for (; scans > 0; --scans)
            told += Tell(network, "");
        return told;
    };
    for (const int way : {0, 1, 2, 3})
    {
        SCOPED_TRACE(way);
        m_answers = way % 2 != 0;
        EXPECT_EQ(Tell(network, "a"), "+a");
        m_camera = m_list.Cameras()[0];
        ASSERT_EQ(m_camera->Open(1), 0);
        const FeaturePtr feature = Feature("R");
        KltInt64_t value = 0;
        EXPECT_EQ(feature->GetValue(value), 0);
        EXPECT_EQ(miss(m_answers ? 3 : 1), "") << "what answers is not gone";
        m_isPulled = true;
        const bool isCalled = way > 1;
        if (isCalled)
        {
            EXPECT_EQ(feature->GetValue(value), KltErrorDeviceNotOpen);
            EXPECT_EQ(Tell(network, "a"), "!a");
        }
        EXPECT_EQ(miss(isCalled ? 2 : 1), isCalled ? "-a" : "!a-a");
        m_isPulled = false;
        EXPECT_EQ(feature->SetValue(1), KltErrorDeviceNotOpen);
        EXPECT_EQ(m_camera->Close() + m_camera->Open(1) + feature->GetValue(value) + m_camera->Close(), 0);
    }
}
