#ifndef CAMERAREADER_H
#define CAMERAREADER_H

#include "Base/CameraChoice.h"
#include "Base/ExitCodes.h"
#include "Cameras/PresentState.h"
#include "Document/Document.h"
#include "Document/NodeNames.h"
#include "FeatureInfos.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// A camera that was read.
struct CameraFeatures
{
    std::string label; ///< What the user called it.
    std::string name;
    std::vector<FeatureInfo> features;
    std::shared_ptr<const OPX::KltAPI::Document> description; ///< Never null; it may have a problem.

    /// What was asked of features while the camera was open, by their names.
    std::map<std::string, PresentState> present;

    /// Those of the description.
    const OPX::KltAPI::NodeNames& Names() const;

private:
    mutable std::shared_ptr<const OPX::KltAPI::NodeNames> m_names; ///< Made when they are needed.
};

/// How much of a description the SDK reads.
enum class Extent
{
    All,
    Catalogue ///< Only what decides which features there are: nobody uses them.
};

/// Finds the cameras, opens them and reads their features; those of files at the same time, on threads of their own.
/// Cameras of files stay open until the program ends, the others are closed. Throws CommandError if that fails.
/// \param ask gets what was read of each camera that is not a file, before it is closed
std::vector<CameraFeatures> ReadFeatures(const std::vector<CameraChoice>& choices, Extent extent = Extent::All,
    const std::function<void(CameraFeatures&)>& ask = nullptr);

/// What to say of a description that cannot be used.
CommandError CannotBeUsed(const CameraChoice& choice, const OPX::KltAPI::Problem& problem);

/// Reads a description: of a file without the SDK, of a camera that has to be found and opened with it. Whether it can
/// be used is up to the caller. Throws CommandError if it cannot be read.
/// \param problem why it cannot be used, if it cannot
std::shared_ptr<const OPX::KltAPI::Document> ReadDescription(const CameraChoice& choice, OPX::KltAPI::Problem& problem);

#endif
