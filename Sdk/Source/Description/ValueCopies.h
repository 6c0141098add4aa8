#ifndef VALUECOPIES_H
#define VALUECOPIES_H

#include <string>
#include <unordered_map>
#include <vector>

namespace OPX
{
namespace KltAPI
{

/// The names of the nodes to which the value of another one is written, too, by the name of that one.
typedef std::unordered_map<std::string, std::vector<std::string>> ValueCopies;

/// Those of a sound description. Aravis passes over them.
ValueCopies ValueCopiesOf(const std::string& xml);

} // namespace KltAPI
} // namespace OPX

#endif
