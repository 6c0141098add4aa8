#include "Schema/Number.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace OPX::KltAPI
{
namespace
{

/// Where the digits begin.
struct Digits
{
    explicit Digits(std::string_view text) : begin(text.data()), end(text.data() + text.size())
    {
        negative = begin != end && *begin == '-';
        if (negative || (begin != end && *begin == '+'))
            ++begin;
        hexadecimal = end - begin > 2 && begin[0] == '0' && (begin[1] == 'x' || begin[1] == 'X');
        if (hexadecimal)
            begin += 2;
    }

    const char* begin;
    const char* end;
    bool negative;
    bool hexadecimal;
};

} // namespace

DescriptionNumber::DescriptionNumber(std::string_view text, bool whole) : m_whole(whole)
{
    if (whole)
        ReadWhole(text);
    else
        ReadReal(text);
}

bool DescriptionNumber::IsAbove(const DescriptionNumber& other) const
{
    if (!comparable || !other.comparable)
        return false;
    return m_whole ? m_integer > other.m_integer : m_real > other.m_real;
}

void DescriptionNumber::ReadWhole(std::string_view text)
{
    const Digits digits(text);
    std::uint64_t magnitude = 0;
    const auto read = std::from_chars(digits.begin, digits.end, magnitude, digits.hexadecimal ? 16 : 10);
    const std::uint64_t largest = static_cast<std::uint64_t>(INT64_MAX) + (digits.negative ? 1 : 0);
    // All bits of a register are a common maximum. Whether that is -1 is up to the reader.
    const bool fits = magnitude <= largest || digits.hexadecimal;
    Judge(text, read.ec == std::errc::invalid_argument ? nullptr : read.ptr, fits && read.ec == std::errc());
    comparable = comparable && magnitude <= largest;
    m_integer = static_cast<long long>(digits.negative ? 0 - magnitude : magnitude);
    // One digit means the same either way.
    if (digits.begin == digits.end || digits.hexadecimal || *digits.begin != '0' || magnitude <= 7 || !problem.empty())
        return;
    const char* const end = std::from_chars(digits.begin, digits.end, magnitude, 8).ptr;
    problem = "which begins with 0 and is read as " + std::string(digits.negative ? "-" : "") +
              std::to_string(magnitude) + ", an octal number";
    if (end != digits.end)
        problem = "of which only '" + std::string(text.data(), end) + "' is read, since it begins with 0";
    comparable = false;
}

void DescriptionNumber::ReadReal(std::string_view text)
{
    const Digits digits(text);
    const auto read = std::from_chars(
        digits.begin, digits.end, m_real, digits.hexadecimal ? std::chars_format::hex : std::chars_format::general);
    m_real = digits.negative ? -m_real : m_real;
    const bool isNumber = read.ec != std::errc::invalid_argument && *digits.begin != '-'; // One sign is enough.
    // Too large or too small is infinite or zero.
    Judge(text, isNumber ? read.ptr : nullptr, true);
    comparable = comparable && read.ec == std::errc();
}

void DescriptionNumber::Judge(std::string_view text, const char* end, bool fits)
{
    if (end == nullptr)
        problem = "which is not a number";
    else if (!fits)
        problem = "which does not fit into 64 bits";
    else if (end != text.data() + text.size())
        problem = "of which only '" + std::string(text.data(), end) + "' is read";
    comparable = end != nullptr && fits;
}

std::string DecimalText(double number)
{
    // Very large and very small numbers would have hundreds of digits.
    const bool isUsual = number == 0 || (std::fabs(number) >= 1e-6 && std::fabs(number) < 1e16);
    char text[64];
    const auto written = isUsual ? std::to_chars(text, text + sizeof text, number, std::chars_format::fixed)
                                 : std::to_chars(text, text + sizeof text, number);
    return std::string(text, written.ptr);
}

bool IsOnIncrement(std::int64_t value, std::int64_t minimum, std::int64_t increment)
{
    // As unsigned numbers: the distance can be larger than a signed number can be.
    const std::uint64_t distance = static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(minimum);
    return increment <= 1 || distance % static_cast<std::uint64_t>(increment) == 0;
}

bool IsOnIncrement(double value, double minimum, double increment)
{
    const double epsilon = std::numeric_limits<double>::epsilon();
    const double tolerance = increment * 1e-6 + 4 * epsilon * (std::fabs(value) + std::fabs(minimum));
    return std::fabs(std::remainder(value - minimum, increment)) <= tolerance;
}

} // namespace OPX::KltAPI
