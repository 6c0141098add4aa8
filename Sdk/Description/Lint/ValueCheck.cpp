#include "Lint/NodeReport.h"

#include "Schema/Number.h"

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

namespace OPX::KltAPI
{
namespace
{

/// The value or a limit as the node itself tells it; null if there is none, or \a other decides it.
const Element* Constant(const Element& node, const char* own, const char* other)
{
    const Element* const constant = node.Child(own);
    return constant != nullptr && node.Child(other) == nullptr ? constant : nullptr;
}

std::string Spelled(const Element& element)
{
    return std::string(element.Text());
}

/// The number that an element holds; not comparable if there is no element.
DescriptionNumber IntegerOf(const Element* element)
{
    return {element == nullptr ? std::string_view() : element->Text(), true};
}

void CheckOrder(const NodeInPlace& node, const Element* least, const Element* most, Mistakes& mistakes)
{
    if (least == nullptr || most == nullptr)
        return;
    const bool whole = !node.Is(Trait::Real);
    if (DescriptionNumber(least->Text(), whole).IsAbove(DescriptionNumber(most->Text(), whole)))
        mistakes.Report("contradictory-limits", node, *most,
            node.Text(most->tag) + " is " + Spelled(*most) + ", less than its " + std::string(least->tag) +
                ", which is " + Spelled(*least) + ".");
}

void CheckLimits(const NodeInPlace& node, Mistakes& mistakes)
{
    const Element* const minimum = Constant(node.element, "Min", "pMin");
    const Element* const maximum = Constant(node.element, "Max", "pMax");
    const Element* const value = Constant(node.element, "Value", "pValue");
    CheckOrder(node, minimum, maximum, mistakes);
    CheckOrder(node, minimum, value, mistakes);
    CheckOrder(node, value, maximum, mistakes);
    const Element* const increment = node.element.tag == "Integer" ? Constant(node.element, "Inc", "pInc") : nullptr;
    const DescriptionNumber step = IntegerOf(increment);
    if (step.comparable && step.Integer() < 1)
        mistakes.Report(
            "no-effect", node, *increment, node.Text("Inc") + " is " + Spelled(*increment) + ", so it has no effect.");
}

/// The nodes that decide whether \a node is there; empty if it always is.
std::string ConditionsOf(const Element& node)
{
    std::string conditions;
    for (const char* tag : {"pIsImplemented", "pIsAvailable"})
        if (const Element* const condition = node.Child(tag))
            conditions.append(tag).append(condition->Text());
    return conditions;
}

/// The entries of an enumeration.
class EntryCheck
{
public:
    EntryCheck(const NodeInPlace& node, Mistakes& mistakes) : m_node(node), m_mistakes(mistakes) {}

    void Check()
    {
        for (const Element& child : m_node.element)
            if (child.tag == "EnumEntry")
                CheckEntry({child, &m_node.element});
            else if (child.tag == "pEnumEntry" || child.tag == "pIndex")
                m_isOpen = true;
        const Element* const value = Constant(m_node.element, "Value", "pValue");
        if (value == nullptr || m_isOpen || m_values.empty())
            return;
        const DescriptionNumber number = IntegerOf(value);
        if (number.comparable && m_values.count(number.Integer()) == 0)
            m_mistakes.Report("no-such-entry", m_node, *value,
                m_node.Text("Value") + " is " + Spelled(*value) + ", which none of its entries has.");
    }

private:
    /// Entries of one value, of which not all need to be there at once.
    struct Owners
    {
        const Element* first = nullptr;
        const Element* unconditional = nullptr;
        std::map<std::string, const Element*> conditional; ///< By what they depend on.
    };

    void CheckEntry(const NodeInPlace& entry)
    {
        const auto [named, added] = m_names.emplace(entry.element.name, &entry.element);
        if (!added && !entry.element.name.empty())
            m_mistakes.Report("duplicate-entry", entry, entry.element,
                entry.Text() + " exists already, in line " + std::to_string(named->second->line) + ".");
        const Element* const value = entry.element.Child("Value");
        const DescriptionNumber number = IntegerOf(value);
        m_isOpen = m_isOpen || !number.comparable;
        if (!number.comparable)
            return;
        Owners& owners = m_values[number.Integer()];
        const std::string conditions = ConditionsOf(entry.element);
        const Element* same = owners.first;
        if (!conditions.empty()) // Two of those need not be there together, unless their conditions are the same.
        {
            const auto [alike, isNew] = owners.conditional.emplace(conditions, &entry.element);
            same = owners.unconditional != nullptr || isNew ? owners.unconditional : alike->second;
        }
        if (same != nullptr)
            m_mistakes.Report("same-value", entry, *value,
                entry.Text() + " has the same value as " + Quoted(same->name) + ", " +
                    std::to_string(number.Integer()) + ".");
        owners.first = owners.first == nullptr ? &entry.element : owners.first;
        owners.unconditional =
            owners.unconditional == nullptr && conditions.empty() ? &entry.element : owners.unconditional;
    }

    const NodeInPlace m_node;
    Mistakes& m_mistakes;
    std::unordered_map<std::string_view, const Element*> m_names;
    std::unordered_map<long long, Owners> m_values;
    bool m_isOpen = false; ///< There are values that nobody knows here.
};

/// How many bits the register has, or the one that the node is a part of; 0 if that is not constant.
long long BitsOf(const NodeInPlace& node)
{
    const Element& owner = node.element.tag == "StructEntry" && node.outer != nullptr ? *node.outer : node.element;
    const Element* const length = Constant(owner, "Length", "pLength");
    const DescriptionNumber bytes = IntegerOf(length);
    return bytes.comparable && bytes.Integer() > 0 && bytes.Integer() < 1024 ? 8 * bytes.Integer() : 0;
}

void CheckBits(const NodeInPlace& node, Mistakes& mistakes)
{
    const long long bits = BitsOf(node);
    for (const char* tag : {"Bit", "LSB", "MSB"})
    {
        const Element* const bit = bits > 0 ? node.element.Child(tag) : nullptr;
        const DescriptionNumber number = IntegerOf(bit);
        if (number.comparable && number.Integer() >= bits)
            mistakes.Report("missing-bits", node, *bit,
                node.Text(tag) + " is " + Spelled(*bit) + ", but the register has " + std::to_string(bits) + " bits.");
    }
}

/// Whether a number fits into the register, and fills it.
void CheckLength(const NodeInPlace& node, Mistakes& mistakes)
{
    const Element* const length = Constant(node.element, "Length", "pLength");
    const DescriptionNumber number = IntegerOf(length);
    if (!number.comparable)
        return;
    const long long bytes = number.Integer();
    const auto report = [&](const char* rule, const std::string& why)
    { mistakes.Report(rule, node, *length, node.Text("Length") + " is " + Spelled(*length) + why); };
    if (node.Is(Trait::Real) && bytes != 4 && bytes != 8)
        report("lost-bytes", ", but a real number has 4 or 8 bytes: it cannot be read.");
    else if (!node.Is(Trait::Real) && bytes > 8)
        report("lost-bytes", ", but an integer has 8 bytes at the most: the others are lost.");
    else if (bytes != 1 && bytes != 2 && bytes != 4 && bytes != 8)
        report("odd-length", ", not 1, 2, 4 or 8: some programs refuse that.");
}

void CheckStates(const NodeInPlace& node, Mistakes& mistakes)
{
    const Element* const on = node.element.Child("OnValue");
    const Element* const off = node.element.Child("OffValue");
    const DescriptionNumber onValue = on == nullptr ? DescriptionNumber("1", true) : IntegerOf(on);
    const DescriptionNumber offValue = off == nullptr ? DescriptionNumber("0", true) : IntegerOf(off);
    if (onValue.comparable && offValue.comparable && onValue.Integer() == offValue.Integer())
        mistakes.Report("same-states", node, on == nullptr ? *off : *on,
            node.Text() + " has the value " + std::to_string(onValue.Integer()) +
                " whether it is true or false: it cannot be turned off.");
}

} // namespace

void CheckValues(const NodeInPlace& node, Mistakes& mistakes)
{
    if (node.Is(Trait::Enumeration))
        EntryCheck(node, mistakes).Check();
    if (node.Is(Trait::Limited))
        CheckLimits(node, mistakes);
    if (node.Is(Trait::Masked))
        CheckBits(node, mistakes);
    if (node.Is(Trait::Numeric))
        CheckLength(node, mistakes);
    if (node.Is(Trait::Boolean))
        CheckStates(node, mistakes);
    const Element* const value = node.Is(Trait::Holder) ? node.element.Child("Value") : nullptr;
    if (value != nullptr && node.element.Child("pValue") != nullptr)
        mistakes.Report("no-effect", node, *value, node.Text("Value") + " has no effect, since its pValue counts.");
}

} // namespace OPX::KltAPI
