#include "SdkFixture.h"

using namespace OPX::KltAPI;

class BrokenDescriptions : public SdkTest
{
};

TEST_F(BrokenDescriptions, AreReportedOnceAndTheOthersStillWork)
{
    const std::string whole = Description({"A"}, "<Integer Name='A'><Value>1</Value></Integer>");
    std::string chain;
    for (int i = 0; i < 5000; ++i)
        chain += "<Integer Name='N" + std::to_string(i) + "'><pValue>N" + std::to_string(i + 1) + "</pValue></Integer>";
    const std::vector<std::pair<std::string, std::string>> broken = {
        {"", "it holds no XML"},
        {"no XML at all", "it holds no XML"},
        {whole.substr(0, whole.size() / 2), "line 1"},
        {"<Other/>", "its root element is not RegisterDescription"},
        {"<!DOCTYPE r [<!ENTITY a 'b'>]>" + whole.substr(whole.find("<Reg")), "document type"},
        {Description({"A"}, "<Integer Name='A'><pValue>B</pValue></Integer><Integer Name='B'><pMin>A</pMin></Integer>"),
            "depends on itself"},
        {Description({"N0"}, chain), "too many others"},
        {Description({"R"}, "<Register Name='R'><Address>0</Address><Length>1099511627776</Length></Register>"),
            "length of R is absurd"},
        {"PK\3\4 not a zip", "the archive holds no description"},
    };
    for (std::size_t i = 0; i < broken.size(); ++i)
        Write("Broken" + std::to_string(i) + (broken[i].first.compare(0, 2, "PK") == 0 ? ".zip" : ".xml"),
            broken[i].first);
    Write("Whole.xml", whole);
    testing::internal::CaptureStderr();
    Open("Whole");
    EXPECT_EQ(Features().size(), 1u);
    // Time for two more scans.
    std::this_thread::sleep_for(std::chrono::milliseconds(2000));
    const std::string said = testing::internal::GetCapturedStderr();
    for (std::size_t i = 0; i < broken.size(); ++i)
    {
        const std::string name = "Broken" + std::to_string(i) + ".";
        const std::size_t line = said.find(name);
        ASSERT_NE(line, std::string::npos) << name;
        EXPECT_NE(said.substr(line, said.find('\n', line) - line).find(broken[i].second), std::string::npos)
            << said.substr(line, 200);
        EXPECT_EQ(said.find(name, line + 1), std::string::npos) << name;
        EXPECT_EQ(Find("Broken" + std::to_string(i)).get(), nullptr);
    }
}

TEST_F(BrokenDescriptions, AreReadAsFarAsTheyAreSound)
{
    std::string many;
    std::vector<std::string> names = {"Cat", "Cat2", "Nowhere", "", "Line&#10;Break"};
    for (int i = 0; i < 20000; ++i)
    {
        names.push_back("F" + std::to_string(i));
        many += "<Integer Name='F" + std::to_string(i) + "'><Value>1</Value></Integer>";
    }
    many += "<Category Name='Cat2'><pFeature>Root</pFeature><pFeature>Cat</pFeature></Category>"
            "<String Name='Line&#10;Break'><Value>" +
            std::string(1 << 20, 'x') + "</Value></String>";
    Write("Sound.xml", Description(names, many));
    const auto start = std::chrono::steady_clock::now();
    Open("Sound");
    const FeaturePtrVector features = Features();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    ASSERT_EQ(features.size(), 20001u);
    EXPECT_EQ(Text(*features[0], &Feature::GetName), "Line_Break");
    std::string value;
    EXPECT_EQ(features[0]->GetValue(value), 0);
    EXPECT_EQ(value.size(), std::size_t(1) << 20);
}
