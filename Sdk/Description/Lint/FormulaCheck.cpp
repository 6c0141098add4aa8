#include "Lint/FormulaCheck.h"

// The SDK's own: what it can work out is a formula.
#include "Formula/Formula.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <string_view>
#include <vector>

namespace OPX::KltAPI
{

namespace
{

typedef DescriptionElement Element;
typedef std::set<std::string> Names;

/// What the SDK says about a name that means nothing.
const char* const Unknown = "unknown variable";

bool IsOfName(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return std::isalnum(byte) != 0 || byte >= 0x80 || character == '_' || character == '.';
}

class FormulaCheck
{
public:
    FormulaCheck(const NodeInPlace& node, Mistakes& mistakes) : m_node(node), m_mistakes(mistakes) {}

    void Check()
    {
        for (const Element& child : m_node.element.children)
            if (child.tag == "pVariable" || child.tag == "Constant" || child.tag == "Expression")
                Add(child);
        CheckExpressions();
        CheckFormula("Formula", Names());
        CheckFormula("FormulaTo", {"FROM"});
        CheckFormula("FormulaFrom", {"TO"});
    }

private:
    void Report(const Element& where, const std::string& problem)
    {
        const std::string what = where.name.empty() ? where.tag : where.tag + " " + Quoted(where.name);
        m_mistakes.Report(where, m_node.Text(what) + " " + problem + ".");
    }

    void Add(const Element& element)
    {
        if (element.name.empty())
            return Report(element, "has no Name");
        const auto [known, added] = m_parts.emplace(element.name, &element);
        if (!added)
            Report(element, "has a name that is taken already, in line " + std::to_string(known->second->line));
        if (element.tag == "pVariable")
            m_variables.insert(element.name);
        else
            m_expressions[element.name] = element.text;
    }

    void CheckExpressions()
    {
        CheckParts("Constant", [](const std::string& /*text*/) { return true; });
        CheckParts("Expression", [this](const std::string& text) { return !UsesBroken(text); });
        // What is left only uses others of its kind, or has a fault besides.
        CheckParts("Expression", [](const std::string& /*text*/) { return true; });
    }

    /// What cannot be read is told once, and no more where it is used.
    template <class Condition>
    void CheckParts(std::string_view tag, Condition condition)
    {
        for (const auto& [name, element] : m_parts)
            if (element->tag == tag && m_variables.count(name) == 0 && condition(element->text) &&
                !CanBeRead(*element, {"FROM", "TO"}))
                m_variables.insert(name);
    }

    bool UsesBroken(const std::string& text) const
    {
        Names known = m_variables;
        known.insert({"FROM", "TO"});
        const std::vector<std::string> names = NamesIn(text);
        return std::any_of(names.begin(), names.end(),
            [&](const std::string& name)
            { return m_expressions.count(name) > 0 && !ProblemOf(name, false, known).empty(); });
    }

    void CheckFormula(const char* tag, const Names& given)
    {
        if (const Element* const formula = m_node.element.Child(tag))
            CanBeRead(*formula, given);
    }

    /// \param given names that are known besides those of the node
    bool CanBeRead(const Element& element, Names given)
    {
        const bool isConstant = element.tag == "Constant";
        if (isConstant)
            given.clear();
        else
            given.insert(m_variables.begin(), m_variables.end());
        const std::string problem = ProblemOf(element.text, isConstant, given);
        if (problem.empty())
            return true;
        if (isConstant)
            Report(element, "is " + Quoted(element.text) + ", which is not a number");
        else if (element.text.empty())
            Report(element, "is empty");
        else if (problem == Unknown)
            Report(element, "uses " + Quoted(UnknownName(element.text, given)) + ", which it does not know");
        else
            Report(element, "cannot be read: " + problem);
        return false;
    }

    /// What the SDK says about a formula; empty if it can work with it.
    std::string ProblemOf(const std::string& text, bool isAlone, const Names& variables) const
    {
        static const Formula::Expressions none;
        try
        {
            const Formula formula(text, false, isAlone ? none : m_expressions, variables);
            return std::string();
        }
        catch (const FormulaError& error)
        {
            const std::string told = error.what(); // "Parsing error (the problem)"
            const std::size_t begin = told.find('(');
            return begin == std::string::npos ? told : told.substr(begin + 1, told.size() - begin - 2);
        }
    }

    std::string UnknownName(const std::string& text, const Names& variables) const
    {
        for (const std::string& name : NamesIn(text))
            if (ProblemOf(name, false, variables) == Unknown)
                return name;
        return text;
    }

    static std::vector<std::string> NamesIn(const std::string& text)
    {
        std::vector<std::string> names;
        for (auto begin = std::find_if(text.begin(), text.end(), IsOfName); begin != text.end();)
        {
            const auto end = std::find_if_not(begin, text.end(), IsOfName);
            if (std::isdigit(static_cast<unsigned char>(*begin)) == 0 && *begin != '.')
                names.emplace_back(begin, end);
            begin = std::find_if(end, text.end(), IsOfName);
        }
        return names;
    }

    const NodeInPlace m_node;
    Mistakes& m_mistakes;
    std::map<std::string, const Element*> m_parts; ///< All that has a name.
    Names m_variables;
    Formula::Expressions m_expressions;
};

} // namespace

void CheckFormulas(const NodeInPlace& node, Mistakes& mistakes)
{
    const std::string& kind = node.element.tag;
    if (kind == "SwissKnife" || kind == "IntSwissKnife" || kind == "Converter" || kind == "IntConverter")
        FormulaCheck(node, mistakes).Check();
}

} // namespace OPX::KltAPI
