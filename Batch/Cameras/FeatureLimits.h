#ifndef FEATURELIMITS_H
#define FEATURELIMITS_H

#include "Cameras/FeatureRow.h"
#include "Document/Document.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// In the order in which they are listed.
const std::array<const char*, 4> LimitNames = {"Min", "Max", "Inc", "Unit"};

/// What a description holds of the limits of features; the SDK does not tell it.
class FeatureLimits
{
public:
    /// The description is referred to.
    explicit FeatureLimits(const OPX::KltAPI::DescriptionElement& description);

    /// The limits of a feature. Where it leaves one to another node, the constant in that node counts.
    std::vector<ValueRow> Of(const std::string& feature) const;

private:
    std::optional<ValueRow> Find(const OPX::KltAPI::DescriptionElement& node, const std::string& limit) const;
    const OPX::KltAPI::DescriptionElement* Node(const OPX::KltAPI::DescriptionElement* reference) const;
    const OPX::KltAPI::DescriptionElement* NodeOfConstant(const OPX::KltAPI::DescriptionElement& reference) const;

    std::unordered_map<std::string_view, const OPX::KltAPI::DescriptionElement*> m_nodes;
    std::unordered_set<std::string_view> m_features; ///< Names that users see, and can set unless that is forbidden.
};

/// A limit as a number, in a type that holds integers of 64 bits, too; nothing if it is none, or changes.
std::optional<long double> NumberOf(const ValueRow& limit);

/// Whether both say the same, in whatever spelling.
bool IsSameLimit(const ValueRow& one, const ValueRow& other);

/// Adds the limits that \a camera has for a feature.
void AddLimits(FeatureRow& row, const std::vector<ValueRow>& limits, const std::string& camera);

#endif
