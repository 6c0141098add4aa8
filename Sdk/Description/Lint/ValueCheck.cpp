#include "Lint/NodeReport.h"

#include "Schema/Number.h"

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
        mistakes.Report(*most, node.Text(most->tag) + " is " + Spelled(*most) + ", less than its " +
                                   std::string(least->tag) + ", which is " + Spelled(*least) + ".");
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
        mistakes.Report(*increment, node.Text("Inc") + " is " + Spelled(*increment) + ", so it has no effect.");
}

bool IsConditional(const Element& node)
{
    return node.Child("pIsImplemented") != nullptr || node.Child("pIsAvailable") != nullptr;
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
            m_mistakes.Report(
                *value, m_node.Text("Value") + " is " + Spelled(*value) + ", which none of its entries has.");
    }

private:
    /// Entries of one value, of which not all need to be there at once.
    struct Owners
    {
        const Element* first = nullptr;
        const Element* unconditional = nullptr;
    };

    void CheckEntry(const NodeInPlace& entry)
    {
        const auto [named, added] = m_names.emplace(entry.element.name, &entry.element);
        if (!added && !entry.element.name.empty())
            m_mistakes.Report(
                entry.element, entry.Text() + " exists already, in line " + std::to_string(named->second->line) + ".");
        const Element* const value = entry.element.Child("Value");
        const DescriptionNumber number = IntegerOf(value);
        m_isOpen = m_isOpen || !number.comparable;
        if (!number.comparable)
            return;
        Owners& owners = m_values[number.Integer()];
        const bool conditional = IsConditional(entry.element);
        // Two that are there under conditions need not be there together.
        const Element* const same = conditional ? owners.unconditional : owners.first;
        if (same != nullptr)
            m_mistakes.Report(*value, entry.Text() + " has the same value as " + Quoted(same->name) + ", " +
                                          std::to_string(number.Integer()) + ".");
        owners.first = owners.first == nullptr ? &entry.element : owners.first;
        owners.unconditional = owners.unconditional == nullptr && !conditional ? &entry.element : owners.unconditional;
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
            mistakes.Report(*bit,
                node.Text(tag) + " is " + Spelled(*bit) + ", but the register has " + std::to_string(bits) + " bits.");
    }
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
}

} // namespace OPX::KltAPI
