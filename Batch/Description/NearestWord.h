#ifndef NEARESTWORD_H
#define NEARESTWORD_H

#include <string>
#include <vector>

/// The one of the words that was probably meant where \a word was written; empty if none of them is near.
std::string NearestWord(const std::string& word, const std::vector<std::string>& words);

#endif
