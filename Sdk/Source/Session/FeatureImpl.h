#ifndef FEATUREIMPL_H
#define FEATUREIMPL_H

#include "KoltaCPP/Feature.h"
#include "Session/FeatureData.h"

#include <memory>

namespace OPX
{
namespace KltAPI
{

class Session;

struct Feature::Impl
{
    FeatureData data;
    std::shared_ptr<Session> session;
};

} // namespace KltAPI
} // namespace OPX

#endif
