#ifndef CAMERAIMPL_H
#define CAMERAIMPL_H

#include "Camera/Session.h"
#include "KoltaCPP/Camera.h"
#include "Transport/Transport.h"

#include <memory>
#include <string>

namespace OPX::KltAPI
{

struct FeatureContainer::Impl
{
    std::string name;
    std::string serialNumber;
    std::string transport;
    std::string address;
    std::shared_ptr<Session> session;
};

/// The camera that a scan has found.
CameraPtr NewCamera(const CameraRecord& record);

} // namespace OPX::KltAPI

#endif
