#ifndef VALUECOPIES_H
#define VALUECOPIES_H

#include <string>
#include <unordered_map>
#include <vector>

namespace OPX::KltAPI
{

/// The names of the nodes that get a copy of another node's value when that is written, by the name of the other node.
typedef std::unordered_map<std::string, std::vector<std::string>> ValueCopies;

/// Those of a sound description. Aravis ignores them.
ValueCopies ValueCopiesOf(const std::string& xml);

} // namespace OPX::KltAPI

#endif
