#include "Cameras/NodeStructure.h"

#include "Schema/Number.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

typedef NodeStructure::Digest Digest;

Digest Mixed(Digest one, Digest other)
{
    Digest mixed = one * 0x9E3779B97F4A7C15U + other + 0x7F4A7C15U;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    return mixed ^ (mixed >> 27U);
}

Digest DigestOfText(std::string_view text)
{
    return std::hash<std::string_view>()(text);
}

/// Of equal numbers, whatever their type.
Digest DigestOfNumber(const Number& number)
{
    const double real = number.AsReal();
    const bool isWhole =
        !number.IsReal() || (real > -1e15 && real < 1e15 && real == static_cast<double>(static_cast<long long>(real)));
    return isWhole ? static_cast<Digest>(number.AsInteger()) : Mixed(1, std::hash<double>()(real));
}

/// Nothing if it is none.
std::optional<Number> NumberIn(const Element& element, bool whole)
{
    const DescriptionNumber number(element.Text(), whole);
    if (!number.comparable)
        return std::nullopt;
    return whole ? Number(static_cast<std::int64_t>(number.Integer())) : Number(static_cast<double>(number.Value()));
}

/// Of a number, or of whatever else stands there.
Digest DigestOfContent(const Element& element, bool whole)
{
    const std::optional<Number> number = NumberIn(element, whole);
    return number ? DigestOfNumber(*number) : DigestOfText(element.Text());
}

/// Whether the node would be the same without the element.
bool IsDefault(const Element& element)
{
    static const std::pair<std::string_view, std::string_view> defaults[] = {
        {"Endianess", "LittleEndian"}, {"OffValue", "0"}, {"OnValue", "1"}, {"Sign", "Unsigned"}};
    return std::any_of(std::begin(defaults), std::end(defaults),
        [&element](const auto& known) { return known.first == element.tag && known.second == element.Text(); });
}

/// A formula of a node, and the nodes that it asks for numbers. Throws a FormulaError.
struct NodeFormula
{
    NodeFormula(const NodeStructure& structure, const Element& node, const Element& text)
        : formula(std::string(text.Text()), !node.node->Is(Trait::Real), Names(structure, node), known)
    {
    }

    /// Null if there is no such node.
    const Element* Variable(const std::string& name) const
    {
        const auto found = variables.find(name);
        return found == variables.end() ? nullptr : found->second;
    }

    std::unordered_map<std::string, const Element*> variables;
    std::set<std::string> known = {"FROM", "TO"};
    Formula formula;

private:
    Formula::Expressions Names(const NodeStructure& structure, const Element& node)
    {
        Formula::Expressions expressions;
        for (const Element& child : node)
            if (child.tag == "pVariable")
            {
                variables[std::string(child.name)] = structure.Find(child.Target());
                known.insert(std::string(child.name));
            }
            else if (child.tag == "Constant" || child.tag == "Expression")
                expressions[std::string(child.name)] = child.Text();
        return expressions;
    }
};

} // namespace

NodeStructure::NodeStructure(const Element& root, const NodeNames& names) : m_names(names), m_limits(root, names)
{
    for (const Element& node : root)
        if (node.node != nullptr && node.node->Is(Trait::Struct))
            for (const Element& child : node)
                m_wholes.emplace(&child, &node);
}

const Element* NodeStructure::Find(std::string_view name) const
{
    const Element* const node = m_names.Find(name);
    return node == nullptr || node->node == nullptr ? nullptr : node;
}

std::vector<const Element*> NodeStructure::ChainOf(const Element& node) const
{
    std::vector<const Element*> chain;
    const Element* reference = nullptr;
    for (const Element* next = &node; next != nullptr;
         next = reference == nullptr ? nullptr : Find(reference->Target()))
    {
        chain.push_back(next);
        reference = next->Child("pValue");
    }
    return chain;
}

const Element& NodeStructure::WholeOf(const Element& node) const
{
    const auto whole = m_wholes.find(&node);
    return whole == m_wholes.end() ? node : *whole->second;
}

Digest NodeStructure::DigestOf(const Element& node, bool places)
{
    const auto known = m_digests[places ? 1 : 0].find(&node);
    if (known != m_digests[places ? 1 : 0].end())
        return known->second;
    const Digest digest = ComputeDigest(node, places);
    return m_digests[places ? 1 : 0][&node] = digest;
}

/// This ends, as everything here that follows references: nodes whose values depend on themselves have been refused.
Digest NodeStructure::ComputeDigest(const Element& node, bool places)
{
    if (const Element* const constant = m_limits.NodeOfConstant(&node))
        return DigestOfContent(*constant->Child("Value"), !constant->node->Is(Trait::Real));
    if (node.node->Is(Trait::Register | Trait::Masked | Trait::Port))
        return places ? ShapeOf(node, true) : DigestOfText("register");
    const Digest own = OwnDigest(node, places);
    const Element* const reference = node.Child("pValue");
    const Element* const target = reference == nullptr ? nullptr : Find(reference->Target());
    // A value of its own is known by the name of its node.
    const Digest behind = target != nullptr ? DigestOf(*target, places) : DigestOfText(places ? node.name : "register");
    return own == 0 ? behind : Mixed(own, behind);
}

Digest NodeStructure::FormulasOf(const Element& node, bool places)
{
    Digest digest = 0;
    for (const Element* each : ChainOf(node))
        if (const Digest own = OwnDigest(*each, places); own != 0)
            digest = Mixed(digest, own);
    return digest;
}

/// What a node makes of the value that lies behind it; 0 if it leaves it as it is.
Digest NodeStructure::OwnDigest(const Element& node, bool places)
{
    if (node.node->Is(Trait::Register | Trait::Masked))
        return 0;
    if (!node.node->Is(Trait::Formula))
        return ShapeOf(node, places);
    Digest digest = 0;
    for (const char* tag : {"Formula", "FormulaTo", "FormulaFrom"})
        if (const Element* const formula = node.Child(tag))
            digest = Mixed(digest, FormulaDigest(node, *formula, places));
    return digest;
}

/// Of all elements that have a part in it, in any order.
Digest NodeStructure::ShapeOf(const Element& node, bool places)
{
    Digest digest = 0;
    for (const Element& child : node)
    {
        const ElementKind* const kind = child.element;
        const bool isNode = child.node != nullptr && child.node->Is(Trait::Formula);
        if (!isNode && (kind == nullptr || !kind->Is(ElementKind::Shapes) || IsDefault(child)))
            continue;
        digest += Mixed(DigestOfText(isNode ? "Address" : child.tag),
            isNode ? DigestOf(child, places) : DigestOfElement(child, !node.node->Is(Trait::Real), places));
    }
    const Element& whole = WholeOf(node);
    return &whole == &node ? digest : digest + ShapeOf(whole, places);
}

/// \param whole whether the numbers of its node are integers
Digest NodeStructure::DigestOfElement(const Element& element, bool whole, bool places)
{
    const Content content = element.element->content;
    const Element* const target = content >= Content::Node ? Find(element.Target()) : nullptr;
    // What nobody follows may lead in a circle, except for ports.
    const bool isFollowed = target != nullptr && (content == Content::NodeWithValue || target->node->Is(Trait::Port));
    Digest digest = isFollowed                 ? DigestOf(*target, places)
                    : content == Content::Text ? DigestOfText(element.Text())
                                               : DigestOfContent(element, whole || content == Content::WholeNumber);
    for (const Attribute* attribute = element.attributes; attribute != nullptr; attribute = attribute->next)
    {
        const Element* const offset = attribute->name == "pOffset" ? Find(attribute->value) : nullptr;
        digest = Mixed(digest, offset == nullptr ? DigestOfText(attribute->value) : DigestOf(*offset, places));
    }
    return digest;
}

Digest NodeStructure::FormulaDigest(const Element& node, const Element& text, bool places)
try
{
    const NodeFormula formula(*this, node, text);
    Digest digest = DigestOfText(text.tag);
    formula.formula.Visit(
        [&](int operation, const Number& number, const std::string& name)
        {
            const Element* const variable = formula.Variable(name);
            digest =
                Mixed(Mixed(digest, static_cast<Digest>(operation)), variable != nullptr ? DigestOf(*variable, places)
                                                                     : name.empty()      ? DigestOfNumber(number)
                                                                                         : DigestOfText(name));
        });
    return digest;
}
catch (const FormulaError&) // It has no value.
{
    return DigestOfText(text.Text());
}

Digest NodeStructure::TextOf(const Element& node)
{
    Digest digest = 0;
    for (const Element* each : ChainOf(node))
    {
        digest = Mixed(digest, DigestOfText(each->tag));
        for (const Element& child : *each)
            digest = Mixed(digest, TextOfElement(child, true));
        if (const Element& whole = WholeOf(*each); &whole != each)
            digest = Mixed(digest, TextOfTarget(whole));
    }
    return digest;
}

Digest NodeStructure::TextOfElement(const Element& element, bool followsAll)
{
    Digest digest = Mixed(Mixed(DigestOfText(element.tag), DigestOfText(element.name)), DigestOfText(element.content));
    for (const Attribute* attribute = element.attributes; attribute != nullptr; attribute = attribute->next)
        digest = Mixed(digest, DigestOfText(attribute->value));
    const ElementKind* const kind = element.element;
    const bool isFollowed =
        kind != nullptr && kind->content == Content::NodeWithValue && (followsAll || kind->Is(ElementKind::Decides));
    if (const Element* const target = isFollowed ? Find(element.Target()) : nullptr)
        digest = Mixed(digest, TextOfTarget(*target));
    for (const Element& child : element)
        digest = Mixed(digest, TextOfElement(child, followsAll));
    return digest;
}

Digest NodeStructure::TextOfTarget(const Element& node)
{
    const auto known = m_texts.find(&node);
    if (known != m_texts.end())
        return known->second;
    Digest digest = DigestOfText(node.tag);
    for (const Element& child : node)
        digest = Mixed(digest, TextOfElement(child, false));
    if (const Element& whole = WholeOf(node); &whole != &node)
        digest = Mixed(digest, TextOfTarget(whole));
    return m_texts[&node] = digest;
}

std::optional<Number> NodeStructure::ConstantOf(const Element& node)
{
    const auto [place, isNew] = m_constants.try_emplace(&node);
    std::optional<Number>& constant = place->second; // Stays where it is when others join it.
    if (isNew)
    {
        try
        {
            constant = ComputeConstant(node);
        }
        catch (const FormulaError&) // It has no value.
        {
            constant.reset(); // g++ 12 lets the call fill in what it is assigned to, even if that throws.
        }
    }
    return constant;
}

std::optional<Number> NodeStructure::ComputeConstant(const Element& node)
{
    if (const Element* const constant = m_limits.NodeOfConstant(&node))
        return NumberIn(*constant->Child("Value"), !constant->node->Is(Trait::Real));
    const Element* const reference = node.Child("pValue");
    const Element* const target = reference == nullptr ? nullptr : Find(reference->Target());
    const std::optional<Number> behind = target == nullptr ? std::nullopt : ConstantOf(*target);
    if (node.node->Is(Trait::Plain))
        return behind;
    const Element* const text = node.Child(node.node->Is(Trait::Converter) ? "FormulaFrom" : "Formula");
    if (!node.node->Is(Trait::Formula) || text == nullptr || (node.node->Is(Trait::Converter) && !behind))
        return std::nullopt;
    const NodeFormula formula(*this, node, *text);
    return formula.formula.Evaluate(
        [&](const std::string& name)
        {
            const Element* const variable = formula.Variable(name);
            const std::optional<Number> number = variable == nullptr ? behind : ConstantOf(*variable);
            if (!number)
                throw FormulaError(FormulaError::NoValue, "not constant");
            return *number;
        });
}
