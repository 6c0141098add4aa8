#include "Lint/NodeReport.h"

#include "Formula/Formula.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace OPX::KltAPI
{
namespace
{

typedef std::set<std::string> Names;

class FormulaCheck
{
public:
    FormulaCheck(const NodeInPlace& node, Mistakes& mistakes) : m_node(node), m_mistakes(mistakes) {}

    void Check()
    {
        for (const Element& child : m_node.element)
            if (child.tag == "pVariable" || child.tag == "Constant" || child.tag == "Expression")
                Add(child);
        for (const auto& [name, element] : m_parts)
            if (element->tag == "Constant")
                CheckConstant(*element);
            else if (element->tag == "Expression" && m_variables.count(name) == 0)
                CheckFormula(element, {"FROM", "TO"});
        CheckFormula(m_node.element.Child("Formula"), Names());
        CheckFormula(m_node.element.Child("FormulaTo"), {"FROM"});
        CheckFormula(m_node.element.Child("FormulaFrom"), {"TO"});
    }

private:
    void Report(std::string_view rule, const Element& where, const std::string& problem)
    {
        const std::string what = std::string(where.tag) + (where.name.empty() ? "" : " " + Quoted(where.name));
        m_mistakes.Report(rule, m_node, where, m_node.Text(what) + " " + problem + ".");
    }

    void Add(const Element& element)
    {
        if (element.name.empty())
            return Report("nameless", element, "has no Name");
        const std::string name(element.name);
        const auto [known, added] = m_parts.emplace(name, &element);
        if (!added)
            Report("duplicate-name", element,
                "has a name that is taken already, in line " + std::to_string(known->second->line));
        if (element.tag == "pVariable")
            m_variables.insert(name);
        else
            m_expressions[name] = element.Text();
    }

    /// What the SDK says about a formula; nothing if it can work with it.
    std::optional<FormulaError> ErrorOf(
        const Element& element, const Formula::Expressions& expressions, const Names& variables)
    {
        try
        {
            const Formula formula(std::string(element.Text()), !m_node.Is(Trait::Real), expressions, variables);
            if (formula.DividesByZero() && element.name.empty()) // What uses an expression tells of it, too.
                Report("division-by-zero", element, "always divides by zero, so there is no value");
            return std::nullopt;
        }
        catch (const FormulaError& error)
        {
            return error;
        }
    }

    void CheckConstant(const Element& element)
    {
        const std::optional<FormulaError> error = ErrorOf(element, {}, {});
        if (!error)
            return;
        const bool isTooLarge = error->What() == FormulaError::Overflow;
        Report("bad-formula", element,
            "is " + Quoted(element.Text()) +
                (isTooLarge ? ", which does not fit into 64 bits" : ", which is not a number"));
        m_variables.insert(std::string(element.name));
    }

    /// \param given names that are known besides those of the node
    void CheckFormula(const Element* element, Names given)
    {
        if (element == nullptr)
            return;
        given.insert(m_variables.begin(), m_variables.end());
        const std::optional<FormulaError> error = ErrorOf(*element, m_expressions, given);
        if (!error)
            return;
        const bool isEndless = error->What() == FormulaError::TooLong;
        // What is wrong with an expression is told there.
        if (error->Expression().empty() || isEndless)
            ReportFormula(*element, *error, isEndless);
        if (!element->name.empty())
            m_variables.insert(std::string(element->name));
    }

    void ReportFormula(const Element& element, const FormulaError& error, bool isEndless)
    {
        if (element.Text().empty())
            Report("bad-formula", element, "is empty");
        else if (error.What() == FormulaError::UnknownVariable)
            Report("bad-formula", element, "uses " + Quoted(error.Name()) + ", which it does not know");
        else
            Report("bad-formula", element,
                "cannot be read: " + std::string(error.what()) +
                    (isEndless ? "" : ", at character " + std::to_string(error.Place() + 1)));
    }

    const NodeInPlace m_node;
    Mistakes& m_mistakes;
    std::map<std::string, const Element*> m_parts; ///< All that has a name.
    Names m_variables; ///< Also what cannot be read: that is told once, and no more where it is used.
    Formula::Expressions m_expressions;
};

} // namespace

void CheckFormulas(const NodeInPlace& node, Mistakes& mistakes)
{
    if (node.Is(Trait::Formula))
        FormulaCheck(node, mistakes).Check();
}

} // namespace OPX::KltAPI
