#include "CameraList.h"

#include <gtest/gtest.h>

using namespace OPX::KltAPI;

namespace
{

class Scripted : public Transport
{
public:
    explicit Scripted(int tolerated) : m_tolerated(tolerated) {}
    std::vector<CameraRecord> Scan() override { return {}; }
    int ToleratedMisses() const override { return m_tolerated; }
    bool IsQuick() const override { return true; }

private:
    int m_tolerated;
};

std::vector<CameraRecord> Found(const std::vector<std::string>& ids)
{
    std::vector<CameraRecord> records;
    for (const std::string& id : ids)
        records.push_back({id, "Name", id, "gige", "address", Connector()});
    return records;
}

/// "+" for a camera that came, "-" for one that went, each with its serial number.
std::string Told(const CameraList::Changes& changes)
{
    std::string told;
    for (const CameraList::Changes::value_type& change : changes)
    {
        char serialNumber[8] = "";
        unsigned int length = sizeof(serialNumber);
        change.first->GetSerialNumber(serialNumber, length);
        told += (change.second == UpdateTriggerCameraArrived ? "+" : "-") + std::string(serialNumber);
    }
    return told;
}

} // namespace

TEST(CameraLists, ForgiveALostReplyButNotTwo)
{
    const Scripted network(1);
    const Scripted files(0);
    CameraList list;
    EXPECT_EQ(Told(list.Update(network, Found({"a", "b", "a"}))), "+a+b");
    const CameraPtr first = list.Cameras()[0];
    EXPECT_EQ(Told(list.Update(files, Found({"a"}))), "+a");
    EXPECT_EQ(Told(list.Update(network, Found({"b"}))), "");
    EXPECT_EQ(Told(list.Update(network, Found({"a", "b"}))), "");
    EXPECT_EQ(Told(list.Update(network, Found({"b"}))), "");
    EXPECT_EQ(Told(list.Update(network, Found({"b", "c"}))), "-a+c");
    EXPECT_EQ(Told(list.Update(files, Found({}))), "-a");
    EXPECT_EQ(Told(list.Update(network, Found({"a", "b", "c"}))), "+a");
    EXPECT_EQ(list.Cameras().size(), 3u);
    EXPECT_NE(list.Cameras()[2].get(), first.get());
}
