#ifndef NODEREPORT_H
#define NODEREPORT_H

#include "Document/Document.h"
#include "Lint/Rules.h"

#include <cctype>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OPX::KltAPI
{

/// A node, and the one that it is a part of, if any.
struct NodeInPlace
{
    const Element& element;
    const Element* outer;

    bool Is(unsigned trait) const { return element.node->Is(trait); }

    /// The node in the middle of a sentence.
    std::string Text() const
    {
        const std::string own = element.name.empty() ? "this " + std::string(element.tag) : Quoted(element.name);
        return outer == nullptr || outer->name.empty() ? own : own + " of " + Quoted(outer->name);
    }

    /// One of its elements in the middle of a sentence.
    std::string Text(std::string_view what) const { return "the " + std::string(what) + " of " + Text(); }

    /// For lists of what is accepted: "Width", "Mode.Off" or, of one of its elements, "Width.Max".
    std::string Place(const Element& where) const
    {
        std::string place(element.name.empty() ? element.tag : element.name);
        if (outer != nullptr && !outer->name.empty())
            place.insert(0, std::string(outer->name) + ".");
        return WithoutControls(&where == &element ? place : place + "." + std::string(where.tag));
    }
};

/// The mistakes that were found so far.
struct Mistakes
{
    /// \param where the node or one of its elements
    void Report(std::string_view rule, const NodeInPlace& node, const Element& where, std::string sentence)
    {
        sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
        all.push_back({&RuleOf(rule), {where.line, where.column}, node.Place(where), std::move(sentence)});
    }

    std::vector<Mistake> all;
};

/// Looks for constants of a node that contradict each other: limits, values of enumerations, bits of registers, states
/// of Booleans.
void CheckValues(const NodeInPlace& node, Mistakes& mistakes);

/// Looks for mistakes in the formulas of a node, and in what they are made of. The SDK would notice them as late as
/// somebody asks for a value.
void CheckFormulas(const NodeInPlace& node, Mistakes& mistakes);

} // namespace OPX::KltAPI

#endif
