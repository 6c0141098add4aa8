#include "System/CameraList.h"
#include "SdkFixture.h"
#include "Transport/GigeTransport.h"

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

} // namespace

class CameraLists : public SdkTest
{
protected:
    /// Reports a scan that found cameras with these letters: "+" for one that came, "-" for one that went.
    std::string Tell(const Transport& transport, const std::string& found)
    {
        std::vector<CameraRecord> records;
        for (const char letter : found)
            records.push_back({std::string(1, letter), "Name", std::string(1, letter), "gige", "address", nullptr});
        std::string told;
        for (const CameraList::Changes::value_type& change : m_list.Update(transport, records))
            told += "+-"[change.second] + Text(*change.first, &Camera::GetSerialNumber);
        return told;
    }

    CameraList m_list;
};

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
