#include "Transport/GvcpDevice.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

using std::chrono::milliseconds;

/// Who controls the camera: nobody, somebody, or somebody who does not let others read either.
const std::uint32_t ControlRegister = 0xA00;
const std::uint32_t Controlled = 2;
const std::uint32_t ControlBits = 3;

/// A camera drops a controller that it has not heard from for three seconds. Some of what is sent gets lost.
const milliseconds Heartbeat(500);

/// A camera that is gone has dropped us anyway.
const milliseconds Goodbye(500);

/// Control of one camera.
class Control
{
public:
    explicit Control(std::unique_ptr<GvcpChannel> camera) : m_camera(std::move(camera)), m_heart([this] { Beat(); }) {}

    ~Control()
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_ending = true;
        }
        m_wakeUp.notify_all();
        m_heart.join();
        m_camera->SetDeadline(
            std::make_shared<const GvcpChannel::Clock::time_point>(GvcpChannel::Clock::now() + Goodbye));
        m_camera->WriteRegister(ControlRegister, 0);
    }

    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    GvcpChannel& Camera() { return *m_camera; }

private:
    void Beat()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        while (!m_wakeUp.wait_for(lock, Heartbeat, [this] { return m_ending; }))
            m_camera->Touch(ControlRegister);
    }

    const std::unique_ptr<GvcpChannel> m_camera;
    std::mutex m_mutex;
    std::condition_variable m_wakeUp;
    bool m_ending = false;
    std::thread m_heart;
};

GQuark ControlQuark()
{
    static const GQuark quark = g_quark_from_static_string("kolta-control");
    return quark;
}

GvcpChannel& CameraOf(ArvDevice* device)
{
    return static_cast<Control*>(g_object_get_qdata(G_OBJECT(device), ControlQuark()))->Camera();
}

gboolean ReadMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error)
{
    return PassOn(CameraOf(device).ReadMemory(address, size, static_cast<std::uint8_t*>(buffer)), error);
}

gboolean WriteMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error)
{
    return PassOn(CameraOf(device).WriteMemory(address, size, static_cast<const std::uint8_t*>(buffer)), error);
}

gboolean ReadRegister(ArvDevice* device, guint64 address, guint32* value, GError** error)
{
    return PassOn(CameraOf(device).ReadRegister(address, *value), error);
}

gboolean WriteRegister(ArvDevice* device, guint64 address, guint32 value, GError** error)
{
    return PassOn(CameraOf(device).WriteRegister(address, value), error);
}

const char* NoXml(ArvDevice* /*device*/, size_t* size)
{
    *size = 0;
    return nullptr;
}

ArvGc* NoDescription(ArvDevice* /*device*/)
{
    return nullptr;
}

/// What a plain device does.
GObjectClass* PlainClass()
{
    return G_OBJECT_CLASS(g_type_class_peek(ARV_TYPE_DEVICE));
}

void Construct(GObject* object)
{
    PlainClass()->constructed(object);
}

void Finalize(GObject* object)
{
    PlainClass()->finalize(object);
}

void InitialiseClass(gpointer klass, gpointer /*data*/)
{
    G_OBJECT_CLASS(klass)->constructed = Construct;
    G_OBJECT_CLASS(klass)->finalize = Finalize;
    ArvDeviceClass* deviceClass = ARV_DEVICE_CLASS(klass);
    deviceClass->get_genicam_xml = NoXml;
    deviceClass->get_genicam = NoDescription;
    deviceClass->read_memory = ReadMemory;
    deviceClass->write_memory = WriteMemory;
    deviceClass->read_register = ReadRegister;
    deviceClass->write_register = WriteRegister;
}

/// A GigE device in name only, none of whose own code runs: from the name Aravis knows that the values of old cameras
/// have to be read differently.
GType DeviceType()
{
    static const GType type = []
    {
        GTypeQuery parent;
        g_type_query(ARV_TYPE_GV_DEVICE, &parent);
        return g_type_register_static_simple(ARV_TYPE_GV_DEVICE, "KoltaGvcpDevice", parent.class_size, InitialiseClass,
            parent.instance_size, nullptr, static_cast<GTypeFlags>(0));
    }();
    return type;
}

} // namespace

Failure CheckUnused(GvcpChannel& camera)
{
    std::uint32_t control = 0;
    if (const Failure failure = camera.ReadRegister(ControlRegister, control))
        return failure;
    return (control & ControlBits) != 0 ? KltErrorInvalidAccess : KltErrorSuccess;
}

Failure TakeControl(std::unique_ptr<GvcpChannel> camera, ObjectPtr<ArvDevice>& device)
{
    if (const Failure failure = camera->WriteRegister(ControlRegister, Controlled))
        return failure;
    device.reset(ARV_DEVICE(g_object_new(DeviceType(), nullptr)));
    g_object_set_qdata_full(G_OBJECT(device.get()), ControlQuark(), new Control(std::move(camera)),
        [](gpointer control) { delete static_cast<Control*>(control); });
    return KltErrorSuccess;
}

} // namespace OPX::KltAPI
