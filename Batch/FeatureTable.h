#ifndef FEATURETABLE_H
#define FEATURETABLE_H

#include "FeatureInfos.h"

#include <string>
#include <utility>
#include <vector>

/// What a user sees of a feature.
struct FeatureRow
{
    std::string category;
    std::string name;
    std::string type;   ///< "Int", "Float", ...
    std::string access; ///< "RO", "WO", "RW"
    std::vector<std::pair<std::string, long long>> entries;

    /// The entries as one text: "Off = 0, On = 1".
    std::string EntriesText() const;
};

/// All features of a catalogue, in its order.
std::vector<FeatureRow> TableOf(const FeatureInfos& features);

#endif
