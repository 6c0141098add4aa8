#ifndef NUMBER_H
#define NUMBER_H

#include <cstdint>
#include <string>
#include <string_view>

namespace OPX::KltAPI
{

/// A number in a description, read as the SDK reads it: up to the first character that does not belong to it.
struct DescriptionNumber
{
    /// \param whole whether it is an integer, decimal or hexadecimal
    DescriptionNumber(std::string_view text, bool whole);

    bool IsAbove(const DescriptionNumber& other) const;
    long long Integer() const { return m_integer; }

    /// In a type that holds both kinds.
    long double Value() const { return m_whole ? static_cast<long double>(m_integer) : m_real; }

    std::string problem;     ///< What is wrong with the text, as a part of a sentence about it; empty if nothing is.
    bool comparable = false; ///< There is a number, and no doubt about its sign.

private:
    void ReadWhole(std::string_view text);
    void ReadReal(std::string_view text);
    void Judge(std::string_view text, const char* end, bool fits);

    bool m_whole;
    long long m_integer = 0;
    double m_real = 0;
};

/// \a number in decimal digits, as few as it takes to read the same number again.
std::string DecimalText(double number);

/// Whether \a value is a whole number of increments away from \a minimum.
bool IsOnIncrement(std::int64_t value, std::int64_t minimum, std::int64_t increment);

/// Whether it is, within the precision of the numbers: decimal fractions are not exact.
bool IsOnIncrement(double value, double minimum, double increment);

} // namespace OPX::KltAPI

#endif
