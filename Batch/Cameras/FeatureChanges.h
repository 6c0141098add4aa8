#ifndef FEATURECHANGES_H
#define FEATURECHANGES_H

#include "Cameras/CameraReader.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a change does to code that uses the class.
enum class Effect
{
    Compatible,
    Unclear,
    Breaking ///< It does not compile any more, or fails or does something else when it runs.
};

/// By the values above.
const std::array<const char*, 3> EffectNames = {"compatible", "unclear", "breaking"};

/// Something that an update can change.
struct ChangeKind
{
    std::string_view id; ///< Stays, so that lists of what is accepted stay valid.
    Effect effect;
    std::string_view sentence;  ///< For the manual.
    std::string_view many = {}; ///< What happened, behind the number of such changes: a feature can have many.
};

/// All of them, in the order of the manual.
const std::vector<ChangeKind>& ChangeKinds();

/// What an update changes in one feature.
struct FeatureChange
{
    const ChangeKind* kind;
    Effect effect; ///< That of its kind, unless there is no code that it could have an effect on.
    std::string feature;
    std::string property;              ///< "type", "entry", "Min", ...; empty if the whole feature came or went.
    std::string entry;                 ///< The name of an entry.
    std::optional<std::string> before; ///< Not there if it came, or is worked out in another way.
    std::optional<std::string> after;  ///< Not there if it went, or is worked out in another way.

    bool IsText() const { return kind->id == "text"; }

    /// For lists of what is accepted: "Width", "Width.Max", "Mode.Off".
    std::string Place() const;
};

/// What is different between two versions of a camera, by the names of the features.
std::vector<FeatureChange> ChangesBetween(const CameraFeatures& before, const CameraFeatures& after);

#endif
