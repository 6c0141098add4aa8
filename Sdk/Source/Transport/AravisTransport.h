#ifndef ARAVISTRANSPORT_H
#define ARAVISTRANSPORT_H

#include "Transport/Transport.h"

namespace OPX::KltAPI
{

/// GigE Vision and USB3 Vision cameras.
class AravisTransport : public Transport
{
public:
    AravisTransport(bool gige, bool usb3);

    /// With GigE it takes about a second: cameras may take that long to answer.
    std::vector<CameraRecord> Scan() override;

    /// Answers get lost in a network.
    int ToleratedMisses() const override { return 1; }
    bool IsQuick() const override { return false; }

private:
    struct Addresses;

    Connector GigeConnector(const CameraRecord& record) const;

    bool m_warnsOfUsb; ///< Until it has been said once.
    const std::shared_ptr<Addresses> m_addresses;
};

} // namespace OPX::KltAPI

#endif
