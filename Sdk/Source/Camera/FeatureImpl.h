#ifndef FEATUREIMPL_H
#define FEATUREIMPL_H

#include "Camera/FeatureData.h"
#include "KoltaCPP/Feature.h"

#include <memory>

namespace OPX::KltAPI
{

class Session;

struct Feature::Impl
{
    FeatureData data;
    std::shared_ptr<Session> session;
};

} // namespace OPX::KltAPI

#endif
