#ifndef FORMULA_H
#define FORMULA_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
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

    /// In a type that holds both kinds.
    long double AsWide() const { return m_isReal ? static_cast<long double>(m_real) : m_integer; }

    /// Cuts off the fraction. Throws a `FormulaError` if it does not fit.
    std::int64_t AsInteger() const;

private:
    bool m_isReal = false;
    std::int64_t m_integer = 0;
    double m_real = 0;
};

/// Why a text is no formula, or a formula has no value.
class FormulaError : public std::runtime_error
{
public:
    enum Kind
    {
        Syntax,
        TooLong, ///< Or nested too deeply, as expressions are that use themselves.
        UnknownVariable,
        TooManyArguments,
        NoValue,
        Overflow, ///< A number does not fit into 64 bits where an integer is needed,
        NotWhole  ///< or is none.
    };

    FormulaError(Kind kind, const std::string& text) : std::runtime_error(text), m_kind(kind) {}

    /// \param name what \a kind is about: a variable or a function
    /// \param place where it is in the text
    /// \param expression the name of the expression that has the text; empty for the formula itself
    FormulaError(Kind kind, const std::string& text, std::string name, std::size_t place, std::string expression)
        : std::runtime_error(text),
          m_kind(kind),
          m_name(std::move(name)),
          m_place(place),
          m_expression(std::move(expression))
    {
    }

    Kind What() const { return m_kind; }
    const std::string& Name() const { return m_name; }
    std::size_t Place() const { return m_place; }
    const std::string& Expression() const { return m_expression; }

private:
    Kind m_kind;
    std::string m_name;
    std::size_t m_place = 0;
    std::string m_expression;
};

/// A formula of a description.
///
/// Aravis' own evaluator ends the process with a signal when the smallest integer is divided by -1. No check of the
/// description can see that coming, since the operands are in registers, and there is no way to survive a signal in the
/// middle of foreign code. So its formulas are evaluated here, where a division handles all cases, and only a formula
/// without a value fails. Sums, products and powers of integers wrap around in 64 bits where there are only integers;
/// elsewhere one that is too large is a real number. Besides, this one skips the branch that a condition does not
/// choose, as in "x=0 ? 0 : 1/x".
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

    /// Calls \a visit with everything that it does: the operation, the number and the variable that this is about.
    void Visit(
        const std::function<void(int operation, const Number& number, const std::string& variable)>& visit) const;

    /// Whether it divides by a number that is written as zero, whatever the variables are.
    bool DividesByZero() const;

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
