#include "SdkFixture.h"

#include <algorithm>
#include <sys/stat.h>

using namespace OPX::KltAPI;

class BrokenDescriptions : public SdkTest
{
};

TEST_F(BrokenDescriptions, AreReportedOnceAndTheOthersStillWork)
{
    const std::string whole = Description({"A"}, "<Integer Name='A'><Value>1</Value></Integer>");
    const std::string body = whole.substr(whole.find("<Reg"));
    std::string chain;
    std::string doubling;
    std::string attributes;
    std::string elements;
    for (int i = 0; i < 5000; ++i)
        chain += "<Integer Name='N" + std::to_string(i) + "'><pValue>N" + std::to_string(i + 1) + "</pValue></Integer>";
    for (int i = 0; i < 60; ++i)
    {
        const std::string next = "K" + std::to_string(i + 1) + "</pVariable>";
        doubling += "<SwissKnife Name='K" + std::to_string(i) + "'><pVariable Name='X'>" + next +
                    "<pVariable Name='Y'>" + next + "<Formula>X+Y</Formula></SwissKnife>";
    }
    for (int i = 0; i < 100000; ++i)
        attributes += " a" + std::to_string(i) + "=''";
    for (int i = 0; i < 5000000; ++i)
        elements += "<a/>";
    const std::vector<std::pair<std::string, std::string>> broken = {
        {"", "it holds no XML"},
        {"no XML at all", "it holds no XML"},
        {whole.substr(0, whole.size() / 2), "line 1"},
        {"<Other/>", "its root element is not RegisterDescription"},
        {"<!DOCTYPE r [<!ENTITY a 'b'>]>" + body, "document type"},
        {"<?xml version='1.0' encoding='UTF-7'?>+ADwAIQ-DOCTYPE r>" + body, "encoding"},
        {Description({}, "<Integer" + attributes + "/>"), "too many elements or attributes"},
        {Description({}, elements), "too many elements or attributes"},
        {Description({"K60"}, doubling + "<Integer Name='K60'><Value>1</Value></Integer>"), "too many steps"},
        {Description(
             {"A"}, "<Integer Name='A'><pValue>B</pValue></Integer><Integer Name='B'><pValue>A</pValue></Integer>"),
            "depends on itself"},
        {Description({"A"}, "<Integer Name=' A'><pValue> A</pValue></Integer>"), "depends on itself"},
        {Description(
             {"A"}, "<StructReg><pAddress>A</pAddress><StructEntry Name='A'><Bit>0</Bit></StructEntry></StructReg>"),
            "depends on itself"},
        {Description({"A"}, "<IntReg Name='A'><pIndex pOffset='A'>B</pIndex></IntReg>"), "depends on itself"},
        {Description(
             {"A"}, "<IntReg Name='A'><IntSwissKnife><pVariable Name='V'>A</pVariable></IntSwissKnife></IntReg>"),
            "depends on itself"},
        {Description({"A"}, "<IntReg Name='A'><pLength>B</pLength></IntReg>"), "length of A is not constant"},
        {Description({"A"}, "<Integer Name='A'><pValue>A<b>B</b></pValue></Integer>"), "holds more than a text"},
        {Description({"A"}, "<IntReg Name='A'><Length>0</Length></IntReg>"), "length of A is absurd"},
        {Description({"N0"}, chain), "too many others"},
        {Description({"R"}, "<Register Name='R'><Address>0</Address><Length>1099511627776</Length></Register>"),
            "length of R is absurd"},
        {"PK\3\4 not a zip", "the archive holds no description"},
    };
    for (std::size_t i = 0; i < broken.size(); ++i)
        Write("Broken" + std::to_string(i) + (broken[i].first.compare(0, 2, "PK") == 0 ? ".zip" : ".xml"),
            broken[i].first);
    ASSERT_EQ(mkfifo((m_folder / "Pipe.xml").c_str(), 0600), 0);
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
    EXPECT_NE(said.find("Pipe.xml: it is not a file"), std::string::npos);
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

TEST_F(BrokenDescriptions, AreNotThoseThatAreBeingCopied)
{
    ASSERT_EQ(System().Startup(), 0);
    const std::string whole = Description({"A"}, "<Integer Name='A'><Value>1</Value></Integer>");
    testing::internal::CaptureStderr();
    {
        std::ofstream file(m_folder / "Slow.xml");
        for (const char character : whole.substr(0, 20))
        {
            file << character << std::flush;
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        file << whole.substr(20);
    }
    EXPECT_TRUE(WaitFor([] { return Find("Slow").get() != nullptr; }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    Write("Slow.xml", "broken");
    testing::internal::CaptureStderr();
    EXPECT_TRUE(WaitFor([] { return Find("Slow").get() == nullptr; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
}

/// Cameras do all this.
TEST_F(BrokenDescriptions, AreNotThoseWhoseFeaturesLimitEachOther)
{
    std::string nodes =
        "<StringReg "
        "Name='Text'><Address>0</Address><pLength>Long</pLength><AccessMode>RW</AccessMode><pPort>Device</pPort>"
        "</StringReg><StringReg Name='None'><Address>0</Address><Length>0</Length><AccessMode>RW"
        "</AccessMode><pPort>Device</pPort></StringReg><Integer Name='Long'><Value>1099511627776</Value></Integer>"
        "<Enumeration Name='Mode'><EnumEntry Name='Mode'><Value>1</Value></EnumEntry><Value>1</Value>"
        "</Enumeration>";
    for (const char* limit : {"pMin", "pMax", "pInc", "pIsLocked", "pIsAvailable", "pIsImplemented", "pAlias"})
        for (const char* other : {"A", "B"})
        {
            const std::string element = limit;
            nodes += "<Integer Name='" + std::string(other) + element + "'><" + element + ">K" + other + element +
                     "</" + element + "><Value>1</Value></Integer><IntSwissKnife Name='K" + other + element +
                     "'><pVariable Name='V'>" + (*other == 'A' ? "B" : "A") + element +
                     "</pVariable><Formula>V</Formula></IntSwissKnife>";
        }
    Write("Circles.xml", Description({"ApMin", "ApMax", "ApInc", "ApIsLocked", "ApIsAvailable", "ApIsImplemented",
                                         "ApAlias", "Mode", "Text", "None"},
                             nodes));
    Open("Circles");
    const FeaturePtrVector features = Features();
    ASSERT_EQ(features.size(), 10u);
    for (std::size_t i = 0; i < 8; ++i)
    {
        KltInt64_t value = 0;
        EXPECT_EQ(features[i]->GetValue(value), 0) << Text(*features[i], &Feature::GetName);
        features[i]->SetValue(value);
    }
    std::string text;
    EXPECT_EQ(features[8]->GetValue(text), KltErrorResources);
    EXPECT_EQ(features[8]->SetValue("x"), KltErrorResources);
    EXPECT_EQ(features[9]->GetValue(text), KltErrorInvalidValue);
    EXPECT_EQ(features[9]->SetValue("x"), KltErrorInvalidValue);
}
