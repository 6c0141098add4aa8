#include "Document/NearestWord.h"

#include <dtl/dtl.hpp>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>

namespace OPX::KltAPI
{
namespace
{

/// A lower bound of the number of letters to add or take away to turn one word into the other.
long long LeastDistance(std::string_view one, std::string_view other)
{
    std::array<long long, 256> surplus = {};
    for (char letter : one)
        ++surplus[static_cast<unsigned char>(letter)];
    for (char letter : other)
        --surplus[static_cast<unsigned char>(letter)];
    return std::accumulate(surplus.begin(), surplus.end(), 0LL,
        [](long long sum, long long difference) { return sum + std::abs(difference); });
}

} // namespace

std::string_view NearestWord(std::string_view word, const std::vector<std::string_view>& words, std::size_t most)
{
    std::string_view nearest;
    // Where more than half of it differs, another word was meant.
    long long least = static_cast<long long>(std::min((word.size() + 1) / 2, most)) + 1;
    for (const std::string_view candidate : words)
    {
        if (std::abs(static_cast<long long>(candidate.size()) - static_cast<long long>(word.size())) >= least ||
            LeastDistance(word, candidate) >= least)
            continue;
        dtl::Diff<char, std::string> difference{std::string(word), std::string(candidate)};
        difference.compose();
        if (difference.getEditDistance() >= least)
            continue;
        least = difference.getEditDistance();
        nearest = candidate;
    }
    return nearest;
}

} // namespace OPX::KltAPI
