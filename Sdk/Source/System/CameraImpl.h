#ifndef CAMERAIMPL_H
#define CAMERAIMPL_H

#include "KoltaCPP/Camera.h"
#include "Session/Session.h"

#include <memory>
#include <string>

namespace OPX
{
namespace KltAPI
{

struct FeatureContainer::Impl
{
    std::string name;
    std::string serialNumber;
    std::string transport;
    std::string address;
    std::shared_ptr<Session> session;
};

} // namespace KltAPI
} // namespace OPX

#endif
