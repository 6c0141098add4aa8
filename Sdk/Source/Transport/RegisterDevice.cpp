#include "Transport/RegisterDevice.h"

namespace OPX::KltAPI
{
namespace
{

const char RegistersKey[] = "kolta-registers";

RegisterAccess& RegistersOf(ArvDevice* device)
{
    return *static_cast<RegisterAccess*>(g_object_get_data(G_OBJECT(device), RegistersKey));
}

gboolean ReadMemory(ArvDevice* device, guint64 address, guint32 size, void* buffer, GError** error)
{
    return PassOn(RegistersOf(device).ReadMemory(address, size, static_cast<std::uint8_t*>(buffer)), error);
}

/// \tparam Buffer a pointer to void, or to const void in newer versions of Aravis
template <class Buffer>
gboolean WriteMemory(ArvDevice* device, guint64 address, guint32 size, Buffer buffer, GError** error)
{
    return PassOn(RegistersOf(device).WriteMemory(address, size, static_cast<const std::uint8_t*>(buffer)), error);
}

gboolean ReadRegister(ArvDevice* device, guint64 address, guint32* value, GError** error)
{
    return PassOn(RegistersOf(device).ReadRegister(address, *value), error);
}

gboolean WriteRegister(ArvDevice* device, guint64 address, guint32 value, GError** error)
{
    return PassOn(RegistersOf(device).WriteRegister(address, value), error);
}

const char* NoXml(ArvDevice* /*device*/, size_t* size)
{
    *size = 0;
    return nullptr;
}

ArvGc* NoNodeMap(ArvDevice* /*device*/)
{
    return nullptr;
}

void SetNoProperty(GObject* /*object*/, guint /*property*/, const GValue* /*value*/, GParamSpec* /*specification*/)
{
}

void InitialiseClass(gpointer ownClass, gpointer /*data*/)
{
    const GObjectClass* plain = G_OBJECT_CLASS(g_type_class_ref(ARV_TYPE_DEVICE)); // Never released.
    G_OBJECT_CLASS(ownClass)->constructed = plain->constructed;
    G_OBJECT_CLASS(ownClass)->set_property = SetNoProperty;
    G_OBJECT_CLASS(ownClass)->dispose = plain->dispose;
    G_OBJECT_CLASS(ownClass)->finalize = plain->finalize;
    ArvDeviceClass* deviceClass = ARV_DEVICE_CLASS(ownClass);
    deviceClass->get_genicam_xml = NoXml;
    deviceClass->get_genicam = NoNodeMap;
    deviceClass->read_memory = ReadMemory;
    deviceClass->write_memory = WriteMemory;
    deviceClass->read_register = ReadRegister;
    deviceClass->write_register = WriteRegister;
}

GType NewType(GType parent, const char* name)
{
    GTypeQuery sizes;
    g_type_query(parent, &sizes);
    return g_type_register_static_simple(
        parent, name, sizes.class_size, InitialiseClass, sizes.instance_size, nullptr, static_cast<GTypeFlags>(0));
}

} // namespace

ObjectPtr<ArvDevice> NewRegisterDevice(std::unique_ptr<RegisterAccess> registers, DeviceKind kind)
{
    static const GType plain = NewType(ARV_TYPE_DEVICE, "KoltaDevice");
    static const GType gigEVision = NewType(ARV_TYPE_GV_DEVICE, "KoltaGigEVisionDevice");
    ObjectPtr<ArvDevice> device(ARV_DEVICE(g_object_new(kind == DeviceKind::GigEVision ? gigEVision : plain, nullptr)));
    g_object_set_data_full(G_OBJECT(device.get()), RegistersKey, registers.release(),
        [](gpointer access) { delete static_cast<RegisterAccess*>(access); });
    return device;
}

} // namespace OPX::KltAPI
