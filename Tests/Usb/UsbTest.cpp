// With cameras on a USB bus that is played.

#include "SdkFixture.h"
#include "StandIn.h"

#include <libusb.h>

#include <fnmatch.h>
#include <map>
#include <numeric>

using namespace OPX::KltAPI;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

namespace
{

/// Remembers which cameras came (+), went (-) or were lost (!).
class Teller : public ICameraListObserver
{
public:
    void CameraListChanged(CameraPtr camera, UpdateTriggerType reason) override
    {
        std::string serialNumber;
        ReadString(*camera, &Camera::GetSerialNumber, serialNumber);
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_told[serialNumber] += "+-!"[reason];
    }

    /// Whether this has been told of the two since the last time. A camera that is being called is told of later.
    bool HasTold(const std::string& first, const std::string& second)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const bool hasTold = m_told["USB1"] == first && m_told["USB2"] == second;
        if (hasTold)
            m_told.clear();
        return hasTold;
    }

private:
    std::mutex m_mutex;
    std::map<std::string, std::string> m_told; ///< By serial numbers.
};

} // namespace

class Usb : public SdkTest
{
protected:
    Usb() { setenv("KOLTA_TRANSPORTS", "usb3", 1); }

    ~Usb() override
    {
        if (m_camera)
            m_camera->Close();
    }

    /// The code, which has to come within the limit.
    static KltErrorType Read(const FeaturePtr& width, seconds limit)
    {
        const auto start = steady_clock::now();
        KltInt64_t value = 0;
        const KltErrorType code = width->GetValue(value);
        EXPECT_LT(steady_clock::now() - start, limit);
        return code;
    }
};

TEST_F(Usb, EveryTypeIsReadAndWritten)
{
    UcharVector table(3000), read;
    std::iota(table.begin(), table.end(), static_cast<unsigned char>(0));
    for (const char* manners : {"plain", "transfer=64 slow=1", "pending=8 response=2", "late stall=7 scanned"})
    {
        SCOPED_TRACE(manners);
        PlayUsb(manners);
        Open("USB1");
        Expect({"Width = 640: 0", "Width: 640", "Gain = 2.5: 0", "Gain: 2.5", "Mode = 3: 0", "Mode: 3",
            "Label = of an odd length: 0", "Label: of an odd length", "Flag = 1: 0", "Flag: 1", "Start = : 0",
            "Started: 1", "Nowhere: code -1"});
        EXPECT_EQ(Feature("Table")->SetValue(table), 0);
        EXPECT_EQ(Feature("Table")->GetValue(read), 0);
        EXPECT_TRUE(read == table);
        EXPECT_EQ(m_camera->Close() + System().Shutdown(), 0);
    }
}

TEST_F(Usb, WhatACameraDoesWhileItIsOpenEndsInACode)
{
    const struct
    {
        const char* manners;
        KltErrorType code;
        seconds limit;
    } rows[] = {{"slow=300", 0, seconds(2)}, {"pending=1200", 0, seconds(2)}, {"pending=7000", 0, seconds(5)},
        {"silent", KltErrorTimeout, seconds(5)}, {"refuses=0x8006", KltErrorInvalidAccess, seconds(2)},
        {"pulled=0", KltErrorDeviceNotOpen, seconds(2)}};
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.manners);
        PlayUsb("response=400");
        Open("USB1");
        const FeaturePtr width = Feature("Width");
        PlayUsb(row.manners);
        EXPECT_EQ(Read(width, row.limit), row.code);
        const bool isLost = row.code == KltErrorTimeout || row.code == KltErrorDeviceNotOpen;
        EXPECT_EQ(isLost ? Read(width, seconds(1)) : KltErrorDeviceNotOpen, KltErrorDeviceNotOpen);
        // What is slow does not do it twice.
        if (row.code == 0 && row.limit == seconds(2))
            Expect({"Start = : 0", "Started: 1"});
        EXPECT_EQ(m_camera->Close() + System().Shutdown(), 0);
    }
    PlayUsb("half");
    Open("USB1");
    EXPECT_EQ(Set("Label", "half"), KltErrorIncomplete);
    EXPECT_EQ(m_camera->Close(), 0);
    PlayUsb("denied");
    testing::internal::CaptureStderr();
    EXPECT_EQ(m_camera->Open(1), KltErrorInvalidAccess);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("70-kolta-cameras.rules"), std::string::npos);
}

TEST_F(Usb, CamerasComeAndGoAtOnceAndAreLostBefore)
{
    Teller* const teller = new Teller;
    PlayUsb("");
    ASSERT_EQ(System().Startup(), 0);
    ASSERT_EQ(System().RegisterCameraListObserver(ICameraListObserverPtr(teller)), 0);
    const auto start = steady_clock::now();
    for (const bool isCalled : {false, true, false, true})
    {
        PlayUsb("plain,plain");
        EXPECT_TRUE(WaitFor([&] { return teller->HasTold("+", "+"); }));
        m_camera = Find("USB1");
        const CameraPtr other = Find("USB2");
        ASSERT_EQ(m_camera->Open(1), 0);
        const FeaturePtr width = Feature("Width");
        std::thread reader([&]
            { EXPECT_TRUE(!isCalled || WaitFor([&] { return Read(width, seconds(2)) == KltErrorDeviceNotOpen; })); });
        PlayUsb("");
        EXPECT_EQ(other->Open(1), KltErrorNotFound);
        EXPECT_TRUE(WaitFor([&] { return teller->HasTold("!-", "-"); }));
        reader.join();
        EXPECT_EQ(Read(width, seconds(1)), KltErrorDeviceNotOpen);
        EXPECT_EQ(m_camera->Open(1), KltErrorInvalidAccess);
        EXPECT_EQ(m_camera->Close(), 0);
    }
    // Eight scans would take longer.
    EXPECT_LT(steady_clock::now() - start, seconds(4));
}

TEST_F(Usb, TheRuleForDevicesIsForCamerasOnly)
{
    std::ostringstream rules;
    rules << std::ifstream(RULES).rdbuf();
    const std::string pattern = rules.str().substr(rules.str().find("INTERFACES}==\"") + 14);
    PlayUsb("plain,webcam");
    libusb_device** devices = nullptr;
    ASSERT_EQ(libusb_get_device_list(nullptr, &devices), 2);
    for (int i = 0; i < 2; ++i)
    {
        libusb_config_descriptor* configuration = nullptr;
        ASSERT_EQ(libusb_get_active_config_descriptor(devices[i], &configuration), 0);
        std::string interfaces = ":"; // As the kernel tells them.
        for (int j = 0; j < configuration->bNumInterfaces; ++j)
        {
            const libusb_interface_descriptor& setting = configuration->interface[j].altsetting[0];
            char text[8];
            std::snprintf(text, sizeof text, "%02x%02x%02x:", setting.bInterfaceClass, setting.bInterfaceSubClass,
                setting.bInterfaceProtocol);
            interfaces += text;
        }
        libusb_free_config_descriptor(configuration);
        EXPECT_EQ(fnmatch(pattern.substr(0, pattern.find('"')).c_str(), interfaces.c_str(), 0) == 0, i == 0);
    }
    libusb_free_device_list(devices, 1);
}
