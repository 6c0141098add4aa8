#ifndef VALIDATECOMMAND_H
#define VALIDATECOMMAND_H

#include "Base/AcceptList.h"
#include "Base/ExitCodes.h"
#include "Cameras/CameraReader.h"
#include "Lint/Rules.h"

#include <QJsonObject>

#include <string>
#include <vector>

/// How mistakes and changes are told, and which of them count.
struct ReviewOptions
{
    bool json = false;
    bool verbose = false;
    bool printAccept = false; ///< Print the lines that accept what there is, and nothing else.
    std::string acceptFile;   ///< Empty if there is none.
    std::string failOn = "any";
};

/// Prints the mistakes in the descriptions of these cameras, with their lines, and what cannot be used.
/// \return ExitDiffers if there are any but notes, ExitCamera if a description cannot be used
ExitCode Validate(const std::vector<CameraChoice>& cameras, const ReviewOptions& options);

/// "Camera.xml:7:3: warning: ... [missing-node]"
std::string LineOf(const std::string& file, const OPX::KltAPI::Mistake& mistake);

QJsonObject JsonOf(const std::string& file, const OPX::KltAPI::Mistake& mistake);

/// Entries of the list that have been of no use.
/// \param ofChanges whether to look at those about changes instead of those about mistakes
std::vector<OPX::KltAPI::Mistake> UnusedEntries(const AcceptList& accepted, bool ofChanges);

/// Tells of each camera how many mistakes its description has, if any but notes and what \a acceptFile accepts, and how
/// to see them.
void WarnOfMistakes(const std::vector<CameraFeatures>& cameras, const std::string& acceptFile);

#endif
