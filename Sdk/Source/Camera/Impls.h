#ifndef IMPLS_H
#define IMPLS_H

/// \file
/// What is behind the handles that users hold.

#include "Camera/FeatureReader.h"
#include "Camera/Session.h"
#include "KoltaCPP/Camera.h"
#include "KoltaCPP/EnumEntry.h"
#include "KoltaCPP/Feature.h"
#include "Transport/Transport.h"

#include <memory>
#include <string>

namespace OPX::KltAPI
{

struct EnumEntry::Impl
{
    std::string name;
    KltInt64_t value;

    static const Impl& Of(const EnumEntry& entry) { return *entry.m_impl; }
};

struct Feature::Impl
{
    FeatureData data;
    std::shared_ptr<Session> session;

    static const Impl& Of(const Feature& feature) { return *feature.m_impl; }
};

struct FeatureContainer::Impl
{
    std::string name;
    std::string serialNumber;
    std::string transport;
    std::string address;
    std::shared_ptr<Session> session;

    /// For functions that are not members, as those of Extensions.h.
    static const Impl& Of(const FeatureContainer& container) { return *container.m_impl; }
};

/// The camera that a scan has found.
CameraPtr NewCamera(const CameraRecord& record);

} // namespace OPX::KltAPI

#endif
