#ifndef CHANGEDRANGE_H
#define CHANGEDRANGE_H

#include "Cameras/ChangeKinds.h"
#include "Cameras/FeatureTable.h"
#include "Cameras/NodeStructure.h"

#include <optional>
#include <string>

/// Null if the feature does not have this limit.
const LimitRow* LimitOf(const FeatureRow& feature, const std::string& name);

/// Whether the camera may refuse a value now that it took before, when a limit changes, comes or goes.
Effect EffectOfLimit(const std::string& limit, const FeatureRow& before, const FeatureRow& after);

/// The register that a value lies in.
struct Storage
{
    std::optional<long double> bits; ///< Nothing if that varies.
    bool isSigned = false;

    /// "16 bits, signed", or in bytes if it holds no number.
    std::string Text(bool isNumber) const;

    long double Least() const;
    long double Largest() const;
};

/// Nothing if the value of this node does not lie in a register.
std::optional<Storage> StorageOf(const OPX::KltAPI::Element& node, const NodeStructure& structure);

/// Whether the camera may refuse a value now that it took before, when the register is another.
/// \param isPlain whether nothing is worked out between the feature and the register, so that their limits compare
Effect EffectOfStorage(const Storage& was, const Storage& is, const FeatureRow& before, bool isPlain);

#endif
