#include "Formula/Formula.h"

#include "Formula/FormulaParser.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace OPX::KltAPI
{
namespace
{

const double BeyondIntegers = 9223372036854775808.0; // 2 to the power of 63.

Number Truth(bool condition)
{
    return Number(std::int64_t(condition ? 1 : 0));
}

/// From unsigned numbers, which wrap around instead of having no value.
Number Wrapped(std::uint64_t number)
{
    return Number(static_cast<std::int64_t>(number));
}

Number DividedIntegers(std::int64_t dividend, std::int64_t divisor, bool remainder)
{
    if (divisor == 0)
        throw FormulaError(FormulaError::NoValue, "division by zero");
    if (divisor == -1)
    {
        if (!remainder && dividend == std::numeric_limits<std::int64_t>::min())
            throw FormulaError(FormulaError::Overflow, "the result of a division is too large");
        return remainder ? Number(std::int64_t(0)) : Number(-dividend);
    }
    return Number(remainder ? dividend % divisor : dividend / divisor);
}

Number Divided(const Number& dividend, const Number& divisor, bool integers)
{
    if (integers)
        return DividedIntegers(dividend.AsInteger(), divisor.AsInteger(), false);
    if (divisor.AsReal() == 0)
        throw FormulaError(FormulaError::NoValue, "division by zero");
    return Number(dividend.AsReal() / divisor.AsReal());
}

/// The result wraps around if it is too large.
std::int64_t RaisedInteger(std::int64_t factor, std::int64_t exponent, bool& tooLarge)
{
    std::int64_t result = 1;
    for (std::int64_t rest = exponent; rest > 0; rest /= 2)
    {
        if (rest % 2 != 0)
            tooLarge = __builtin_mul_overflow(result, factor, &result) || tooLarge;
        if (rest > 1)
            tooLarge = __builtin_mul_overflow(factor, factor, &factor) || tooLarge;
    }
    return result;
}

Number Raised(const Number& base, const Number& exponent, bool integers)
{
    if (!base.IsReal() && !exponent.IsReal() && exponent.AsInteger() >= 0)
    {
        bool tooLarge = false;
        const std::int64_t result = RaisedInteger(base.AsInteger(), exponent.AsInteger(), tooLarge);
        if (integers || !tooLarge)
            return Number(result);
    }
    return Number(std::pow(base.AsReal(), exponent.AsReal()));
}

Number Compared(int operation, const Number& left, const Number& right)
{
    int order = 0; // Nothing is less than, equal to or greater than NaN.
    if (left.IsReal() || right.IsReal())
    {
        const double a = left.AsReal();
        const double b = right.AsReal();
        if (std::isnan(a) || std::isnan(b))
            return Truth(operation == Different);
        order = a < b ? -1 : (a > b ? 1 : 0);
    }
    else
        order = left.AsInteger() < right.AsInteger() ? -1 : (left.AsInteger() > right.AsInteger() ? 1 : 0);
    switch (operation)
    {
    case Less:
        return Truth(order < 0);
    case Greater:
        return Truth(order > 0);
    case LessOrEqual:
        return Truth(order <= 0);
    case GreaterOrEqual:
        return Truth(order >= 0);
    case Equal:
        return Truth(order == 0);
    default:
        return Truth(order != 0);
    }
}

Number Summed(int operation, const Number& left, const Number& right, bool integers)
{
    if (!left.IsReal() && !right.IsReal())
    {
        const std::int64_t a = left.AsInteger();
        const std::int64_t b = right.AsInteger();
        std::int64_t result = 0;
        const bool tooLarge = operation == Add        ? __builtin_add_overflow(a, b, &result)
                              : operation == Subtract ? __builtin_sub_overflow(a, b, &result)
                                                      : __builtin_mul_overflow(a, b, &result);
        if (integers || !tooLarge)
            return Number(result);
    }
    const double a = left.AsReal();
    const double b = right.AsReal();
    return Number(operation == Add ? a + b : (operation == Subtract ? a - b : a * b));
}

Number CombinedBits(int operation, std::int64_t left, std::int64_t right)
{
    const auto a = static_cast<std::uint64_t>(left);
    const auto b = static_cast<std::uint64_t>(right);
    switch (operation)
    {
    case ShiftLeft:
        return Wrapped(a << (b % 64));
    case ShiftRight:
        return Number(left >> (b % 64));
    case And:
        return Wrapped(a & b);
    case Or:
        return Wrapped(a | b);
    default:
        return Wrapped(a ^ b);
    }
}

Number Rounded(const Number& number, const Number& digits)
{
    const double scale = std::pow(10.0, std::trunc(digits.AsReal()));
    return number.IsReal() ? Number(std::round(number.AsReal() * scale) / scale) : number;
}

Number ResultOfTwo(int operation, const Number& left, const Number& right, bool integers)
{
    switch (operation)
    {
    case Power:
        return Raised(left, right, integers);
    case Add:
    case Subtract:
    case Multiply:
        return Summed(operation, left, right, integers);
    case Divide:
        return Divided(left, right, integers);
    case Remainder:
        return DividedIntegers(left.AsInteger(), right.AsInteger(), true);
    case Round:
        return Rounded(left, right);
    case ShiftLeft:
    case ShiftRight:
    case And:
    case Or:
    case ExclusiveOr:
        return CombinedBits(operation, left.AsInteger(), right.AsInteger());
    default:
        return Compared(operation, left, right);
    }
}

Number Negated(const Number& number, bool integers)
{
    return number.IsReal() ? Number(-number.AsReal()) : Summed(Subtract, Number(std::int64_t(0)), number, integers);
}

Number ResultOfFunction(std::string_view function, const Number& number, bool integers)
{
    const double real = number.AsReal();
    if (function == "SGN")
        return Number(std::int64_t(real > 0 ? 1 : (real < 0 ? -1 : 0)));
    if (function == "NEG" || (function == "ABS" && real < 0))
        return Negated(number, integers);
    if (!number.IsReal() && (function == "ABS" || function == "TRUNC" || function == "FLOOR" || function == "CEIL"))
        return number;
    typedef double (*RealFunction)(double);
    static const std::map<std::string_view, RealFunction> functions = {{"ABS", std::fabs}, {"TRUNC", std::trunc},
        {"FLOOR", std::floor}, {"CEIL", std::ceil}, {"SIN", std::sin}, {"COS", std::cos}, {"TAN", std::tan},
        {"ASIN", std::asin}, {"ACOS", std::acos}, {"ATAN", std::atan}, {"EXP", std::exp}, {"LN", std::log},
        {"LG", std::log10}, {"SQRT", std::sqrt}};
    return Number(functions.at(function)(real));
}

Number ResultOfOne(int operation, const Number& number, bool integers)
{
    if (operation == Minus)
        return Negated(number, integers);
    if (operation == Invert)
        return Number(~number.AsInteger());
    return ResultOfFunction(FormulaFunctions()[static_cast<std::size_t>(operation - FirstFunction)], number, integers);
}

} // namespace

std::int64_t Number::AsInteger() const
{
    if (!m_isReal)
        return m_integer;
    if (std::isnan(m_real))
        throw FormulaError(FormulaError::NotWhole, "a number is no integer");
    if (!(m_real >= -BeyondIntegers && m_real < BeyondIntegers))
        throw FormulaError(FormulaError::Overflow, "a number is too large for an integer");
    return static_cast<std::int64_t>(m_real);
}

Formula::Formula(
    const std::string& text, bool integers, const Expressions& expressions, const std::set<std::string>& variables)
    : m_integers(integers)
{
    FormulaParser(*this, expressions, variables).Parse(text);
}

void Formula::Visit(const std::function<void(int, const Number&, const std::string&)>& visit) const
{
    for (const Step& step : m_steps)
        if (step.operation == Load)
            visit(step.operation, Number(), m_variables[step.index]);
        else
            visit(step.operation, step.operation == Push ? step.number : Number(std::int64_t(step.index)), "");
}

bool Formula::DividesByZero() const
{
    std::size_t conditional = 0; // What stands before this step may be skipped.
    for (std::size_t i = 1; i < m_steps.size(); ++i)
    {
        const Step& step = m_steps[i];
        const Step& before = m_steps[i - 1];
        if (step.operation == Jump || step.operation == JumpIfZero)
            conditional = std::max(conditional, step.index);
        else if ((step.operation == Divide || step.operation == Remainder) && before.operation == Push &&
                 before.number.AsReal() == 0 && i >= conditional)
            return true;
    }
    return false;
}

Number Formula::Evaluate(const Variables& variables) const
{
    const auto taken = [this](const Number& number)
    { return m_integers && number.IsReal() ? Number(number.AsInteger()) : number; };
    std::vector<std::optional<Number>> values(m_variables.size());
    std::vector<Number> stack;
    const auto pop = [&stack]
    {
        const Number top = stack.back();
        stack.pop_back();
        return top;
    };
    for (std::size_t i = 0; i < m_steps.size(); ++i)
    {
        const Step& step = m_steps[i];
        if (step.operation == Push)
            stack.push_back(step.number);
        else if (step.operation == Load)
        {
            std::optional<Number>& value = values[step.index];
            if (!value)
                value = taken(variables(m_variables[step.index]));
            stack.push_back(*value);
        }
        else if (step.operation == Jump)
            i = step.index - 1;
        else if (step.operation == JumpIfZero)
            i = pop().AsReal() == 0 ? step.index - 1 : i;
        else if (step.operation == Minus || step.operation == Invert || step.operation >= FirstFunction)
            stack.push_back(taken(ResultOfOne(step.operation, pop(), m_integers)));
        else
        {
            const Number right = pop();
            const Number left = pop();
            stack.push_back(taken(ResultOfTwo(step.operation, left, right, m_integers)));
        }
    }
    return stack.back();
}

} // namespace OPX::KltAPI
