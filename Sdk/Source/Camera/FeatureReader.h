#ifndef FEATUREREADER_H
#define FEATUREREADER_H

#include "KoltaCPP/EnumEntry.h"
#include "KoltaCPP/KoltaTypes.h"
#include "Transport/Connection.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace OPX::KltAPI
{

/// What is known of a feature without asking the camera. Copied when the features are listed, so that it outlives the
/// connection.
struct FeatureData
{
    std::string name;     ///< As users see it: without control characters.
    std::string nodeName; ///< In the camera's description.
    std::string category;
    KltFeatureDataType dataType = KltFeatureDataUnknown;
    KltFeatureFlagsType flags = KltFeatureFlagsNone;
    std::vector<EnumEntry> entries;
    bool isDelivered = false; ///< Its value comes with images or events, if at all.
};

/// Gathers what a camera's description says of its features, and asks the camera which of them it implements.
///
/// A class made from the result must not depend on the state that the camera happens to be in: features that are locked
/// or not available at the moment are listed like all others.
class FeatureReader
{
public:
    explicit FeatureReader(const Connection& connection);

    /// All implemented features in the order of the categories. KltErrorTimeout when the camera stops answering or
    /// takes too long, KltErrorDeviceNotOpen when it is lost; what was read until then is of no use.
    Failure Read(std::vector<FeatureData>& features);

private:
    void ReadCategory(ArvGcNode* category, const std::string& path, int depth);
    void ReadFeature(ArvGcFeatureNode* node, const std::string& path);
    std::vector<EnumEntry> ReadEntries(ArvGcEnumeration* enumeration);
    bool IsImplemented(const NodeChain& chain);
    void Notice(const Failure& failure);

    const Connection& m_connection;
    DeliveredNodes m_delivered;
    const std::chrono::steady_clock::time_point m_deadline;
    Failure m_failure;
    std::unordered_set<ArvGcFeatureNode*> m_seen;
    std::vector<FeatureData> m_features;
};

} // namespace OPX::KltAPI

#endif
