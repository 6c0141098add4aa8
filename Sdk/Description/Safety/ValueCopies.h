#ifndef VALUECOPIES_H
#define VALUECOPIES_H

#include <string>
#include <unordered_map>
#include <vector>

namespace OPX::KltAPI
{

/// The names of the nodes that get a copy of another node's value when that is written, by the name of the other node.
/// Aravis ignores them.
typedef std::unordered_map<std::string, std::vector<std::string>> ValueCopies;

} // namespace OPX::KltAPI

#endif
