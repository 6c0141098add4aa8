// Our connection to a network camera beside Aravis' own: times, and packets that are sent. See beside-aravis.

#include <KoltaCPP/KoltaCPP.h>
#include <arv.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

using namespace OPX::KltAPI;

namespace
{

const int Calls = 5000;

std::map<std::string, std::vector<double>> g_times; ///< Of one call, in microseconds.
std::map<std::string, double> g_packets;            ///< Questions of one call. Each has an answer.

/// How many datagrams were sent in this network, by whomever.
long Datagrams()
{
    std::ifstream file("/proc/self/net/snmp");
    for (std::string word; file >> word && word != "Udp:";)
        ;
    std::string names, end, received;
    long sent = 0;
    std::getline(file, names) >> end >> received >> received >> received >> sent;
    return sent;
}

template <class Call>
void Measure(const std::string& name, int calls, Call call)
{
    const long datagrams = Datagrams();
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < calls; ++i)
        if (!call(i))
            throw std::runtime_error(name + " fails");
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
    g_times[name].push_back(time.count() / calls);
    g_packets[name] = static_cast<double>(Datagrams() - datagrams) / 2 / calls;
}

CameraPtr Find()
{
    CameraPtr camera;
    unsigned int count = 1;
    KoltaSystem::GetInstance().Startup();
    while (KoltaSystem::GetInstance().GetCameras(&camera, count) != KltErrorSuccess || count == 0)
        count = 1;
    // The scanner sends packets, too.
    KoltaSystem::GetInstance().Shutdown();
    return camera;
}

void MeasureOurs(const CameraPtr& camera)
{
    FeaturePtr width;
    KltInt64_t value = 0;
    const auto read = [&](int) { return width->GetValue(value) == KltErrorSuccess; };
    Measure("open, ours", 1,
        [&](int) { return camera->Open(1) + camera->GetFeatureByName("Width", width) == 0 && read(0); });
    Measure("read, ours", Calls, read);
    Measure("write, ours", Calls, [&](int i) { return width->SetValue(16 + i % 16 * 16) == KltErrorSuccess; });
    camera->Close();
}

void MeasureAravis()
{
    arv_update_device_list();
    ArvDevice* device = nullptr;
    GError* error = nullptr;
    const auto read = [&](int) { return arv_device_get_integer_feature_value(device, "Width", &error) > 0; };
    Measure("open, Aravis", 1,
        [&](int) { return (device = arv_open_device(arv_get_device_id(0), &error)) != nullptr && read(0); });
    Measure("read, Aravis", Calls, read);
    Measure("write, Aravis", Calls,
        [&](int i)
        {
            arv_device_set_integer_feature_value(device, "Width", 16 + i % 16 * 16, &error);
            return error == nullptr;
        });
    g_object_unref(device);
}

} // namespace

int main()
{
    const CameraPtr camera = Find();
    for (int i = 0; i < 5; ++i)
    {
        MeasureOurs(camera);
        MeasureAravis();
    }
    std::cout << std::fixed << std::setprecision(1);
    for (auto& [name, times] : g_times)
    {
        std::sort(times.begin(), times.end());
        std::cout << name << ": " << times[times.size() / 2] << " us, " << g_packets[name] << " packets\n";
    }
}
