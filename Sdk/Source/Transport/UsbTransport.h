#ifndef USBTRANSPORT_H
#define USBTRANSPORT_H

#include "Transport/Transport.h"
#include "Transport/UsbBus.h"

#include <map>

namespace OPX::KltAPI
{

/// USB3 Vision cameras.
class UsbTransport : public Transport
{
public:
    UsbTransport();
    ~UsbTransport() override;

    std::vector<CameraRecord> Scan() override;
    int ToleratedMisses() const override { return 0; }
    bool IsQuick() const override { return true; }
    void Watch(const std::function<void()>& notify) override { m_bus->Watch(notify); }

private:
    bool Read(const UsbDevice& device, CameraRecord& record, int& error);

    const std::shared_ptr<UsbBus> m_bus;
    const std::shared_ptr<Places<UsbDevice>> m_devices;
    std::map<UsbDevice, CameraRecord> m_known; ///< Of the last scan: a camera says only once who it is.
    bool m_hasWarned = false;
};

} // namespace OPX::KltAPI

#endif
