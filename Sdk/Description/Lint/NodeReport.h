#ifndef NODEREPORT_H
#define NODEREPORT_H

#include "Document/Document.h"
#include "Document/Mistake.h"

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
};

/// The mistakes that were found so far.
struct Mistakes
{
    void Report(const Element& where, std::string sentence)
    {
        sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
        all.push_back({where.line, std::move(sentence)});
    }

    std::vector<Mistake> all;
};

} // namespace OPX::KltAPI

#endif
