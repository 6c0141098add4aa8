#ifndef NEARESTWORD_H
#define NEARESTWORD_H

#include <cstddef>
#include <string_view>
#include <vector>

namespace OPX::KltAPI
{

/// The one of the words that was probably meant where \a word was written; empty if none of them is near.
/// \param most how many letters may be added and left out, at the most
std::string_view NearestWord(std::string_view word, const std::vector<std::string_view>& words, std::size_t most = 100);

} // namespace OPX::KltAPI

#endif
