#ifndef FEATUREREADER_H
#define FEATUREREADER_H

#include "Session/FeatureData.h"

#include <arv.h>

#include <chrono>
#include <string>
#include <unordered_set>
#include <vector>

namespace OPX
{
namespace KltAPI
{

/// Gathers what a camera's description says of its features, and asks the camera which of them it implements.
///
/// A class made from the result must not depend on the state in which the camera happens to be: features that are
/// locked or not available at the moment are listed like all others.
class FeatureReader
{
public:
    /// \param patience how long the reading may take
    FeatureReader(ArvGc* description, std::chrono::steady_clock::duration patience);

    /// All implemented features in the order of the categories. -12 when the camera stops answering or takes too
    /// long; what was read until then is of no use.
    KltErrorType Read(std::vector<FeatureData>& features);

private:
    void ReadCategory(ArvGcNode* category, const std::string& path, int depth);
    void ReadFeature(ArvGcFeatureNode* node, const std::string& path);
    std::vector<EnumEntry> ReadEntries(ArvGcEnumeration* enumeration);
    bool IsImplemented(ArvGcFeatureNode* node);
    void Notice(const GError* error);

    ArvGc* const m_description;
    const std::chrono::steady_clock::time_point m_deadline;
    KltErrorType m_result = KltErrorSuccess;
    std::unordered_set<ArvGcFeatureNode*> m_seen;
    std::vector<FeatureData> m_features;
};

} // namespace KltAPI
} // namespace OPX

#endif
