// With cameras on a USB bus that is played.

#include "SdkFixture.h"
#include "StandIn.h"

#include <libusb.h>

#include <fnmatch.h>
#include <numeric>

using namespace OPX::KltAPI;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

namespace
{

std::string Content(const std::filesystem::path& file)
{
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}

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

    /// A description, zipped.
    std::string Zip()
    {
        EXPECT_EQ(std::system(("zip -qj " + (m_folder / "Camera.zip").string() + " " CAMERA_DESCRIPTION).c_str()), 0);
        return (m_folder / "Camera.zip").string();
    }
};

TEST_F(Usb, EveryTypeIsReadAndWritten)
{
    UcharVector table(3000), read;
    std::iota(table.begin(), table.end(), static_cast<unsigned char>(0));
    const std::string zipped = "zipped scanned xml=" + Zip();
    for (const std::string& manners : {std::string("plain"), std::string("several transfer=64 slow=1"),
             std::string("pending=8 response=2"), std::string("late stall=7"), zipped})
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

TEST_F(Usb, NoDamagedArchiveEndsTheProgram)
{
    const std::string zip = Content(Zip());
    const std::size_t entry = zip.find("PK\1\2"), end = zip.find("PK\5\6");
    // Sizes, lengths and offset in the list of files, and number, size and offset of that list.
    const std::pair<std::size_t, std::size_t> fields[] = {{entry + 20, 4}, {entry + 24, 4}, {entry + 28, 2},
        {entry + 30, 2}, {entry + 32, 2}, {entry + 42, 4}, {end + 10, 2}, {end + 12, 4}, {end + 16, 4}};
    PlayUsb("huge");
    EXPECT_EQ(System().Startup(), 0);
    m_camera = Find("USB1");
    EXPECT_EQ(m_camera->Open(1), KltErrorOther);
    int usable = 0, count = 0;
    for (const auto& field : fields)
        for (const std::uint32_t value : {0u, 1u, 0x7FFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFF0u, 0x01000100u})
        {
            std::string damaged = zip;
            for (std::size_t i = 0; i < field.second; ++i)
                damaged[field.first + i] = static_cast<char>(value >> 8 * i);
            Write("Damaged.zip", damaged);
            PlayUsb("xml=" + (m_folder / "Damaged.zip").string());
            const KltErrorType code = m_camera->Open(1);
            EXPECT_TRUE(code == 0 || code == KltErrorOther) << ++count << ": " << code;
            usable += code == 0 && Set("Width", "16") == 0 ? 1 : 0;
            m_camera->Close();
        }
    std::cout << usable << " of them are read all the same.\n";
}

TEST_F(Usb, WhatACameraDoesWhileItIsOpenEndsInACode)
{
    const struct
    {
        const char* manners;
        KltErrorType code;
        seconds limit;
    } rows[] = {{"slow=300", 0, seconds(1)}, {"silent", KltErrorTimeout, seconds(4)},
        {"refuses=0x8006", KltErrorInvalidAccess, seconds(1)}, {"pulled=0", KltErrorDeviceNotOpen, seconds(1)}};
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.manners);
        PlayUsb("response=400");
        Open("USB1");
        const FeaturePtr width = Feature("Width");
        PlayUsb(row.manners);
        EXPECT_EQ(Read(width, row.limit), row.code);
        // What is slow does not do it twice.
        if (row.code == 0)
            Expect({"Start = : 0", "Started: 1"});
        EXPECT_EQ(m_camera->Close() + System().Shutdown(), 0);
    }
}

TEST_F(Usb, CamerasComeAndGoAtOnce)
{
    std::atomic<int> came(0), went(0), lost(0);
    PlayUsb("");
    ASSERT_EQ(System().Startup(), 0);
    ASSERT_EQ(System().RegisterCameraListObserver(ICameraListObserverPtr(new Counter(came, went, lost))), 0);
    const auto start = steady_clock::now();
    for (int i = 1; i <= 4; ++i)
    {
        PlayUsb("plain,plain");
        EXPECT_TRUE(WaitFor([&] { return came == 2 * i; }));
        m_camera = Find("USB1");
        const CameraPtr other = Find("USB2");
        ASSERT_EQ(m_camera->Open(1), 0);
        const FeaturePtr width = Feature("Width");
        std::thread reader(
            [&] { EXPECT_TRUE(WaitFor([&] { return Read(width, seconds(1)) == KltErrorDeviceNotOpen; })); });
        PlayUsb("");
        EXPECT_EQ(other->Open(1), KltErrorNotFound);
        reader.join();
        EXPECT_TRUE(WaitFor([&] { return lost == i && went == 2 * i; }));
        EXPECT_EQ(m_camera->Open(1), KltErrorInvalidAccess);
        EXPECT_EQ(m_camera->Close(), 0);
    }
    // Eight scans would take longer.
    EXPECT_LT(steady_clock::now() - start, seconds(2));
}

TEST_F(Usb, TheRuleForDevicesIsForCamerasOnly)
{
    const std::string rules = Content(RULES);
    const std::string beginning = "ENV{ID_USB_INTERFACES}==\"";
    const std::size_t pattern = rules.find(beginning) + beginning.size();
    PlayUsb("plain,webcam");
    libusb_context* context = nullptr;
    libusb_device** devices = nullptr;
    ASSERT_EQ(libusb_init(&context), 0);
    ASSERT_EQ(libusb_get_device_list(context, &devices), 2);
    for (int i = 0; i < 2; ++i)
    {
        // As the kernel tells them.
        std::ostringstream interfaces;
        libusb_config_descriptor* configuration = nullptr;
        ASSERT_EQ(libusb_get_active_config_descriptor(devices[i], &configuration), 0);
        for (int j = 0; j < configuration->bNumInterfaces; ++j)
        {
            const libusb_interface_descriptor& setting = configuration->interface[j].altsetting[0];
            char text[8];
            std::snprintf(text, sizeof text, ":%02x%02x%02x", setting.bInterfaceClass, setting.bInterfaceSubClass,
                setting.bInterfaceProtocol);
            interfaces << text;
        }
        interfaces << ':';
        libusb_free_config_descriptor(configuration);
        EXPECT_EQ(fnmatch(rules.substr(pattern, rules.find('"', pattern) - pattern).c_str(), interfaces.str().c_str(),
                      0) == 0,
            i == 0);
    }
    libusb_free_device_list(devices, 1);
    libusb_exit(context);
}
