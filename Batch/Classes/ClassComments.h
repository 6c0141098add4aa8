#ifndef CLASSCOMMENTS_H
#define CLASSCOMMENTS_H

#include "Cameras/FeatureTable.h"
#include "CppOptions.h"
#include "FeatureInfos.h"

#include <QHash>
#include <QStringList>

#include <map>
#include <string>
#include <vector>

/// What the descriptions of one or more cameras say of a class.
struct FamilyNotes
{
    std::vector<FeatureRow> features;
    std::map<std::string, std::string> cameras; ///< Their names in comments, which are the same on every computer.
};

/// Comments by what they stand before: a method with its arguments, or an enumerator. Each is a few texts, which begin
/// on lines of their own.
typedef QHash<QString, QStringList> ClassComments;

FamilyNotes NotesOf(const std::vector<CameraFeatures>& cameras);

/// \param features what the class has
ClassComments CommentsOf(const FamilyNotes& notes, const FeatureInfos& features, const CppOptions& options);

/// The lines of a comment, at most 100 columns wide. Whatever the texts are, neither compilers nor Doxygen take
/// anything in them for something else. \param column how far the lines will be indented
QStringList CommentLines(const QStringList& texts, int column);

#endif
