#ifndef FEATURETABLE_H
#define FEATURETABLE_H

#include "Cameras/CameraReader.h"
#include "Document/Limits.h"

#include <string>
#include <vector>

/// A name with a value: an entry of an enumeration.
struct ValueRow
{
    std::string name;
    std::string value;
    std::vector<std::string> cameras; ///< Which cameras have it.
};

struct LimitRow : OPX::KltAPI::Limit
{
    std::vector<std::string> cameras;
};

/// What a user sees of a feature.
struct FeatureRow
{
    std::string category;
    std::string name;
    std::string type; ///< "Int", "Float", ... Of several cameras the first one's.
    bool readable;
    bool writable;
    std::vector<ValueRow> entries = {};
    std::vector<LimitRow> limits = {};     ///< Min, Max, Inc and Unit as the description holds them.
    std::vector<std::string> cameras = {}; ///< Which cameras have it.
    std::vector<ValueRow> types = {};      ///< The types that it has in them, as names without a value.

    /// The type, or the types if cameras do not agree.
    std::string TypeText() const;

    /// "RO", "WO", "RW" or "--".
    std::string AccessText() const;

    /// Entries and limits as one text: "Off = 0, On = 1". The cameras stand behind what not all of them have.
    std::string ValuesText() const;
};

/// Texts as one, with commas between them.
std::string Joined(const std::vector<std::string>& texts);

/// A feature of one camera, whose limits these are.
FeatureRow RowOf(const FeatureInfo& info, const OPX::KltAPI::Limits& limits);

/// What at least one of the cameras has, in the order of the catalogue, and which of them have it. What one class
/// cannot serve is told in warnings.
std::vector<FeatureRow> TableOf(const std::vector<CameraFeatures>& cameras);

#endif
