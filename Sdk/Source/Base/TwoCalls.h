#ifndef TWOCALLS_H
#define TWOCALLS_H

/// \file
/// Texts and lists are asked for twice: once for their length, once for their content.

#include "KoltaCPP/KoltaTypes.h"

#include <algorithm>
#include <string>
#include <vector>

namespace OPX::KltAPI
{

/// Returns the length of \a text, or fills \a buffer, which has room for \a length bytes.
inline KltErrorType DeliverText(const std::string& text, char* buffer, unsigned int& length)
{
    const unsigned int room = length;
    length = static_cast<unsigned int>(text.size());
    if (buffer == nullptr)
        return KltErrorSuccess;
    if (room < length)
        return KltErrorMoreData;
    std::copy(text.begin(), text.end(), buffer);
    if (room > length)
        buffer[length] = '\0';
    return KltErrorSuccess;
}

/// Returns the length of \a list, or fills \a array, which has room for \a count items.
template <class Item>
KltErrorType DeliverList(const std::vector<Item>& list, Item* array, unsigned int& count)
{
    const unsigned int room = count;
    count = static_cast<unsigned int>(list.size());
    if (array == nullptr)
        return KltErrorSuccess;
    if (room < count)
        return KltErrorMoreData;
    std::copy(list.begin(), list.end(), array);
    return KltErrorSuccess;
}

} // namespace OPX::KltAPI

#endif
