#include "Formula/FormulaParser.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <utility>

namespace OPX::KltAPI
{
namespace
{

/// Of parentheses and the like: each takes a few hundred bytes of the stack.
const int MaximumDepth = 400;

/// Expressions that use expressions double with every line.
const std::size_t MaximumSteps = 100000;

struct Operator
{
    std::string_view token;
    int precedence;
    int operation;
};

const int ShortCircuitOr = -1;
const int ShortCircuitAnd = -2;
const int HighestPrecedence = 11; ///< Of Power, the only one that is right-associative.

/// As in C. Of two that begin alike, the longer one comes first.
const Operator Operators[] = {{"||", 1, ShortCircuitOr}, {"&&", 2, ShortCircuitAnd}, {"|", 3, Or},
    {"^", 4, ExclusiveOr}, {"&", 5, And}, {"=", 6, Equal}, {"<>", 6, Different}, {"<<", 8, ShiftLeft},
    {">>", 8, ShiftRight}, {"<=", 7, LessOrEqual}, {">=", 7, GreaterOrEqual}, {"<", 7, Less}, {">", 7, Greater},
    {"+", 9, Add}, {"-", 9, Subtract}, {"**", HighestPrecedence, Power}, {"*", 10, Multiply}, {"/", 10, Divide},
    {"%", 10, Remainder}};

bool IsLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') || character == '_';
}

bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

std::string InCapitals(std::string_view text)
{
    std::string capitals(text);
    for (char& letter : capitals)
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A'); // In any locale.
    return capitals;
}

} // namespace

const std::vector<std::string_view>& FormulaFunctions()
{
    static const std::vector<std::string_view> names = {"SGN", "NEG", "ABS", "TRUNC", "FLOOR", "CEIL", "SIN", "COS",
        "TAN", "ASIN", "ACOS", "ATAN", "EXP", "LN", "LG", "SQRT"};
    return names;
}

void FormulaParser::Parse(const std::string& text)
{
    Expression(text);
}

/// condition ? one : other
void FormulaParser::Choice()
{
    Enter();
    Binary(1);
    if (Take("?"))
    {
        const std::size_t toOther = Put(JumpIfZero);
        Choice();
        const std::size_t toEnd = Put(Jump);
        JumpHere(toOther);
        if (!Take(":"))
            Fail(FormulaError::Syntax, "':' is missing");
        Choice();
        JumpHere(toEnd);
    }
    --m_depth;
}

/// Operators of this precedence and of higher ones.
void FormulaParser::Binary(int precedence)
{
    Enter();
    Unary();
    for (;;)
    {
        SkipSpace();
        const auto* found = std::find_if(std::begin(Operators), std::end(Operators),
            [this](const Operator& each) { return m_rest.substr(0, each.token.size()) == each.token; });
        if (found == std::end(Operators) || found->precedence < precedence)
            break;
        m_rest.remove_prefix(found->token.size());
        // The right side is skipped if the left one decides: it may have no value then.
        const bool shortCircuit = found->operation < 0;
        const std::size_t toOther = shortCircuit ? Put(JumpIfZero) : 0;
        std::size_t toEnd = 0;
        if (found->operation == ShortCircuitOr)
        {
            Put(Push, Number(std::int64_t(1)));
            toEnd = Put(Jump);
            JumpHere(toOther);
        }
        Binary(found->precedence == HighestPrecedence ? HighestPrecedence : found->precedence + 1);
        if (!shortCircuit)
        {
            Put(found->operation);
            continue;
        }
        Put(Push, Number(std::int64_t(0)));
        Put(Different);
        if (found->operation == ShortCircuitAnd)
        {
            toEnd = Put(Jump);
            JumpHere(toOther);
            Put(Push, Number(std::int64_t(0)));
        }
        JumpHere(toEnd);
    }
    --m_depth;
}

void FormulaParser::Unary()
{
    std::vector<int> signs;
    for (;;)
    {
        if (Take("-"))
            signs.push_back(Minus);
        else if (Take("~"))
            signs.push_back(Invert);
        else if (!Take("+"))
            break;
    }
    m_isNegated = !signs.empty() && signs.back() == Minus;
    Operand();
    for (auto sign = signs.rbegin(); sign != signs.rend(); ++sign)
        Put(*sign);
}

void FormulaParser::Operand()
{
    SkipSpace();
    if (m_rest.empty())
        Fail(FormulaError::Syntax, "missing arguments");
    if (Take("("))
    {
        Choice();
        if (!Take(")"))
            Fail(FormulaError::Syntax, "parentheses mismatch");
    }
    else if (IsDigit(m_rest[0]) || m_rest[0] == '.')
        Literal();
    else if (IsLetter(m_rest[0]))
        Name();
    else
        Fail(FormulaError::Syntax, "syntax error");
}

void FormulaParser::Literal()
{
    const char* const begin = m_rest.data();
    const char* const end = begin + m_rest.size();
    const bool hexadecimal = m_rest.size() > 2 && begin[0] == '0' && (begin[1] == 'x' || begin[1] == 'X');
    std::uint64_t integer = 0;
    double real = 0;
    const auto whole = std::from_chars(hexadecimal ? begin + 2 : begin, end, integer, hexadecimal ? 16 : 10);
    const char* used = whole.ptr;
    bool isReal = false;
    if (!hexadecimal)
    {
        const auto fraction = std::from_chars(begin, end, real);
        // There is one negative integer more.
        const std::uint64_t largest =
            static_cast<std::uint64_t>(INT64_MAX) + (m_isNegated && m_formula.m_integers ? 1 : 0);
        isReal = fraction.ec == std::errc() && (fraction.ptr != whole.ptr || integer > largest);
        if (isReal || whole.ec != std::errc())
            used = fraction.ptr;
        if (fraction.ec != std::errc())
            Fail(FormulaError::Syntax, "syntax error");
    }
    else if (whole.ec != std::errc())
        Fail(FormulaError::Syntax, "syntax error");
    m_rest.remove_prefix(static_cast<std::size_t>(used - begin));
    Put(Push, isReal ? Number(real) : Number(static_cast<std::int64_t>(integer)));
}

void FormulaParser::Name()
{
    std::size_t length = 0;
    while (length < m_rest.size() && (IsLetter(m_rest[length]) || IsDigit(m_rest[length]) || m_rest[length] == '.'))
        ++length;
    const std::string name(m_rest.substr(0, length));
    m_rest.remove_prefix(length);
    const std::string capitals = InCapitals(name);
    const auto expression = m_expressions.find(name);
    const std::vector<std::string_view>& functions = FormulaFunctions();
    const auto function = std::find(functions.begin(), functions.end(), capitals);
    if (m_variables.count(name) != 0)
    {
        auto& variables = m_formula.m_variables;
        const auto known = std::find(variables.begin(), variables.end(), name);
        Put(Load, Number(), static_cast<std::size_t>(known - variables.begin()));
        if (known == variables.end())
            variables.push_back(name);
    }
    else if (expression != m_expressions.end())
        Expression(expression->second, name);
    else if (function != functions.end())
        Function(FirstFunction + static_cast<int>(function - functions.begin()), name);
    else if (capitals == "ROUND")
        Function(Round, name);
    else if (capitals == "PI")
        Put(Push, Number(M_PI));
    else if (capitals == "E")
        Put(Push, Number(M_E));
    else
        Fail(FormulaError::UnknownVariable, "unknown variable", name);
}

void FormulaParser::Function(int operation, const std::string& name)
{
    if (!Take("("))
        Fail(FormulaError::Syntax, "parentheses mismatch");
    Choice();
    if (operation == Round)
    {
        if (Take(","))
            Choice();
        else
            Put(Push, Number(std::int64_t(0)));
    }
    if (Take(","))
        Fail(FormulaError::TooManyArguments, "too many arguments", name);
    if (!Take(")"))
        Fail(FormulaError::Syntax, "parentheses mismatch");
    Put(operation);
}

void FormulaParser::Expression(const std::string& text, const std::string& name)
{
    // Expressions that refer to themselves end here, too.
    const std::string_view outer = std::exchange(m_text, text);
    const std::string_view rest = std::exchange(m_rest, text);
    std::string outerName = std::exchange(m_name, name);
    Choice();
    SkipSpace();
    if (!m_rest.empty())
        Fail(FormulaError::Syntax, m_rest[0] == ')' ? "parentheses mismatch" : "remaining operands");
    m_text = outer;
    m_rest = rest;
    m_name.swap(outerName);
}

void FormulaParser::Fail(FormulaError::Kind kind, const char* problem, const std::string& name) const
{
    throw FormulaError(kind, problem, name, m_text.size() - m_rest.size(), m_name);
}

void FormulaParser::Enter()
{
    if (++m_depth > MaximumDepth)
        Fail(FormulaError::TooLong, "nested too deeply");
}

void FormulaParser::SkipSpace()
{
    while (!m_rest.empty() && std::isspace(static_cast<unsigned char>(m_rest[0])) != 0)
        m_rest.remove_prefix(1);
}

bool FormulaParser::Take(std::string_view token)
{
    SkipSpace();
    if (m_rest.substr(0, token.size()) != token)
        return false;
    m_rest.remove_prefix(token.size());
    return true;
}

std::size_t FormulaParser::Put(int operation, const Number& number, std::size_t index)
{
    auto& steps = m_formula.m_steps;
    if (steps.size() >= MaximumSteps)
        Fail(FormulaError::TooLong, "too long");
    steps.push_back({operation, m_formula.m_integers && number.IsReal() ? Whole(number) : number, index});
    return steps.size() - 1;
}

/// Integer formulas know no fractions: they are cut off.
Number FormulaParser::Whole(const Number& number) const
{
    try
    {
        return Number(number.AsInteger());
    }
    catch (const FormulaError& error)
    {
        Fail(error.What(), error.what());
    }
}

void FormulaParser::JumpHere(std::size_t step)
{
    m_formula.m_steps[step].index = m_formula.m_steps.size();
}

} // namespace OPX::KltAPI
