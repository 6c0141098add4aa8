#ifndef FORMULAPARSER_H
#define FORMULAPARSER_H

#include "Formula/Formula.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace OPX::KltAPI
{

/// What a step of a formula does: with the one or two numbers on top of the stack, unless it says otherwise.
enum FormulaOperation : int
{
    Push,
    Load,       ///< Pushes a variable.
    Jump,       ///< To another step.
    JumpIfZero, ///< Pops the number.
    Minus,
    Invert,
    Power,
    Multiply,
    Divide,
    Remainder,
    Add,
    Subtract,
    ShiftLeft,
    ShiftRight,
    Less,
    Greater,
    LessOrEqual,
    GreaterOrEqual,
    Equal,
    Different,
    And,
    ExclusiveOr,
    Or,
    Round, ///< To a number of digits.
    FirstFunction
};

/// The functions of one argument; their operations follow `FirstFunction` in this order.
const std::vector<std::string_view>& FormulaFunctions();

/// Puts the steps of a formula together.
class FormulaParser
{
public:
    FormulaParser(Formula& formula, const Formula::Expressions& expressions, const std::set<std::string>& variables)
        : m_formula(formula),
          m_expressions(expressions),
          m_variables(variables)
    {
    }

    void Parse(const std::string& text);

private:
    void Choice();
    void Binary(int precedence);
    void Unary();
    void Operand();
    void Function(int operation, const std::string& name);
    void Literal();
    void Name();
    void Expression(const std::string& text, const std::string& name = std::string());

    [[noreturn]] void Fail(FormulaError::Kind kind, const char* problem, const std::string& name = std::string()) const;
    void Enter();
    Number Whole(const Number& number) const;
    void SkipSpace();
    bool Take(std::string_view token);
    std::size_t Put(int operation, const Number& number = Number(), std::size_t index = 0);
    void JumpHere(std::size_t step);

    Formula& m_formula;
    const Formula::Expressions& m_expressions;
    const std::set<std::string>& m_variables;
    std::string_view m_text; ///< Of the innermost expression,
    std::string m_name;      ///< which is called like this,
    std::string_view m_rest; ///< and what is left of it.
    int m_depth = 0;
    bool m_isNegated = false; ///< The operand that follows.
};

} // namespace OPX::KltAPI

#endif
