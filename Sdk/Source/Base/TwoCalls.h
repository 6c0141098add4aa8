#ifndef TWOCALLS_H
#define TWOCALLS_H

/// \file
/// Texts and lists are asked for twice: once for their length, once for their content.

#include "KoltaCPP/KoltaTypes.h"

#include <algorithm>
#include <string>

namespace OPX::KltAPI
{

/// Returns the length of \a list, or fills \a array, which has room for \a count items.
template <class List>
KltErrorType DeliverList(const List& list, typename List::value_type* array, unsigned int& count)
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

/// Returns the length of \a text, or fills \a buffer, which has room for \a length bytes.
inline KltErrorType DeliverText(const std::string& text, char* buffer, unsigned int& length)
{
    const unsigned int room = length;
    const KltErrorType result = DeliverList(text, buffer, length);
    if (buffer != nullptr && room > length)
        buffer[length] = '\0';
    return result;
}

} // namespace OPX::KltAPI

#endif
