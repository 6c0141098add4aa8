#ifndef CHANGEKINDS_H
#define CHANGEKINDS_H

#include <array>
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

/// The one with this id, which must be there.
const ChangeKind& ChangeKindOf(std::string_view id);

#endif
