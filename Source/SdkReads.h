#ifndef SDKREADS_H
#define SDKREADS_H

/// \file
/// What the SDK says, as values. Texts and lists it hands out in two calls: the first tells the size, the second
/// delivers.

#include <KoltaCPP/Feature.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <string>
#include <vector>

/// Reads a text with \a read, which gets a buffer and its length and returns the SDK's code.
/// \return whether both calls succeeded and there was memory for the text; if not, \a text is unchanged
template <class Read>
bool ReadText(Read read, std::string& text)
{
    unsigned int length = 0;
    if (read(nullptr, length) != KltErrorSuccess)
        return false;
    if (length == 0)
    {
        text.clear();
        return true;
    }
    try
    {
        // One byte more than asked for: the SDK does not say whether it counts a terminating zero.
        std::string buffer(static_cast<std::size_t>(length) + 1, '\0');
        if (read(&buffer[0], length) != KltErrorSuccess)
            return false;
        // Up to the first zero byte.
        text = buffer.c_str(); // NOLINT(readability-redundant-string-cstr)
        return true;
    }
    catch (const std::exception&)
    {
        return false;
    }
}

/// Reads a text of \a object through one of its getters, for example `ReadString(feature, &Feature::GetName, name)`.
template <class T>
bool ReadString(const T& object, KltErrorType (T::*getter)(char*, unsigned int&) const, std::string& text)
{
    return ReadText([&](char* buffer, unsigned int& length) { return (object.*getter)(buffer, length); }, text);
}

/// A text of \a object; empty if it cannot be read.
template <class T>
std::string TextOf(const T& object, KltErrorType (T::*getter)(char*, unsigned int&) const)
{
    std::string text;
    ReadString(object, getter, text);
    return text;
}

/// Reads a list of \a object through one of its getters, for example `ReadList(camera, &Camera::GetFeatures, list)`.
/// \return the SDK's code, or -14 when there is no memory for the list; unless it is 0, \a list is unchanged
template <class T, class Container, class Item>
KltErrorType ReadList(T& object, KltErrorType (Container::*getter)(Item*, unsigned int&), std::vector<Item>& list)
{
    unsigned int count = 0;
    KltErrorType result = (object.*getter)(nullptr, count);
    if (result != KltErrorSuccess)
        return result;
    try
    {
        std::vector<Item> items(count);
        if (count > 0)
            result = (object.*getter)(items.data(), count);
        if (result != KltErrorSuccess)
            return result;
        // The list may have become shorter between the two calls.
        items.resize(std::min<std::size_t>(items.size(), count));
        list.swap(items);
    }
    catch (const std::exception&)
    {
        return KltErrorResources;
    }
    return KltErrorSuccess;
}

/// Whether \a feature has the flag; no if that cannot be read.
inline bool Has(const OPX::KltAPI::Feature& feature, KltFeatureFlagsType flag)
{
    KltFeatureFlagsType flags = KltFeatureFlagsNone;
    feature.GetFlags(flags);
    return (flags & flag) == flag;
}

/// The value of an enumeration's entry; 0 if it cannot be read.
inline KltInt64_t ValueOf(const OPX::KltAPI::EnumEntry& entry)
{
    KltInt64_t value = 0;
    entry.GetValue(value);
    return value;
}

#endif
