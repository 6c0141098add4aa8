#ifndef GIGETRANSPORT_H
#define GIGETRANSPORT_H

#include "Transport/Transport.h"

namespace OPX::KltAPI
{

/// GigE Vision cameras. Aravis finds them.
class GigeTransport : public Transport
{
public:
    GigeTransport();

    /// Takes about a second: cameras may take that long to answer.
    std::vector<CameraRecord> Scan() override;

    /// Answers get lost in a network.
    int ToleratedMisses() const override { return 1; }
    bool IsQuick() const override { return false; }

private:
    const std::shared_ptr<Places<std::string>> m_addresses;
};

} // namespace OPX::KltAPI

#endif
