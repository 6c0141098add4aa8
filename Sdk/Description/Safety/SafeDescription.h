#ifndef SAFEDESCRIPTION_H
#define SAFEDESCRIPTION_H

#include "Document/Document.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace OPX::KltAPI
{

/// The names of the nodes that get a copy of another node's value when that is written, by the name of the other node.
/// Aravis ignores them.
typedef std::unordered_map<std::string, std::vector<std::string>> ValueCopies;

/// The only values of nodes, by their names. Aravis ignores them, too.
typedef std::unordered_map<std::string, std::vector<std::int64_t>> ValidValues;

/// A camera's description that is safe to give to Aravis: well-formed, and without anything that brings down its parser
/// or its evaluation.
struct SafeDescription
{
    std::string xml;       ///< Empty where there is a problem.
    std::string modelName; ///< Human-readable; never empty.
    ValueCopies copies;
    ValidValues validValues;
    Problem problem; ///< Why the description cannot be used.
};

/// Checks a description, which may be zipped and may have something before its first element.
/// \param content the bytes of the file
/// \param fallbackName the model's name if the description does not name it
SafeDescription CheckDescription(std::string content, const std::string& fallbackName);

/// Reads and checks the file at \a path. Reading errors are problems, too.
SafeDescription ReadDescription(const std::string& path);

/// Checks a description that stays a tree: the result has no text of its own.
SafeDescription CheckDocument(const Document& document, const std::string& fallbackName);

} // namespace OPX::KltAPI

#endif
