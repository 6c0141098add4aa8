#ifndef FORMULA_H
#define FORMULA_H

#include "KoltaCPP/KoltaTypes.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace OPX::KltAPI
{

/// A number in a formula. There are two kinds, because a double cannot hold every address and every mask.
class Number
{
public:
    Number() = default;
    Number(std::int64_t integer) : m_integer(integer) {}  // NOLINT(google-explicit-constructor)
    Number(double real) : m_isReal(true), m_real(real) {} // NOLINT(google-explicit-constructor)

    bool IsReal() const { return m_isReal; }
    double AsReal() const { return m_isReal ? m_real : static_cast<double>(m_integer); }

    /// Cuts off the fraction. Throws a `FormulaError` if it does not fit.
    std::int64_t AsInteger() const;

private:
    bool m_isReal = false;
    std::int64_t m_integer = 0;
    double m_real = 0;
};

/// Why a formula has no value.
class FormulaError : public std::runtime_error
{
public:
    FormulaError(KltErrorType code, const std::string& text) : std::runtime_error(text), m_code(code) {}
    KltErrorType Code() const { return m_code; }

private:
    KltErrorType m_code;
};

/// A formula of a description.
///
/// Aravis' own evaluator ends the process with a signal when the smallest integer is divided by -1. No check of the
/// description can see that coming, since the operands are in registers, and there is no way to survive a signal in the
/// middle of foreign code. So its formulas are evaluated here, where a division handles all cases, and only a formula
/// without a value fails. Besides, this one skips the branch that a condition does not choose, as in "x=0 ? 0 : 1/x".
class Formula
{
public:
    /// Formulas that formulas use, by name.
    typedef std::map<std::string, std::string> Expressions;

    typedef std::function<Number(const std::string& variable)> Variables;

    /// Throws a `FormulaError` if the text is not a formula.
    /// \param integers whether the formula knows integers only
    /// \param variables the names that are variables, whatever else they could mean
    Formula(
        const std::string& text, bool integers, const Expressions& expressions, const std::set<std::string>& variables);

    /// Asks for each variable at most once. Throws what that throws, or a `FormulaError` if there is no value.
    Number Evaluate(const Variables& variables) const;

private:
    friend class FormulaParser;

    struct Step
    {
        int operation;
        Number number;     ///< What is pushed.
        std::size_t index; ///< The variable, or the step to jump to.
    };

    bool m_integers;
    std::vector<std::string> m_variables;
    std::vector<Step> m_steps;
};

} // namespace OPX::KltAPI

#endif
