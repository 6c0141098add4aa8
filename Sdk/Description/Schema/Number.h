#ifndef NUMBER_H
#define NUMBER_H

#include <string>

namespace OPX::KltAPI
{

/// A number in a description, read as the SDK reads it: up to the first character that does not belong to it.
struct DescriptionNumber
{
    /// \param whole whether it is an integer, decimal or hexadecimal
    DescriptionNumber(const std::string& text, bool whole);

    bool IsAbove(const DescriptionNumber& other) const;
    long long Integer() const { return m_integer; }

    /// In a type that holds both kinds.
    long double Value() const { return m_whole ? static_cast<long double>(m_integer) : m_real; }

    std::string problem;     ///< What is wrong with the text, as a part of a sentence about it; empty if nothing is.
    bool comparable = false; ///< There is a number, and no doubt about its sign.

private:
    void ReadWhole(const std::string& text);
    void ReadReal(const std::string& text);
    void Judge(const std::string& text, const char* end, bool fits);

    bool m_whole;
    long long m_integer = 0;
    double m_real = 0;
};

} // namespace OPX::KltAPI

#endif
