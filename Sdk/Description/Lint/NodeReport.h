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

inline std::string Quoted(const std::string& text)
{
    return "'" + text + "'";
}

/// A node, and the one that it is a part of, if any.
struct NodeInPlace
{
    const DescriptionElement& element;
    const DescriptionElement* outer;

    /// The node in the middle of a sentence.
    std::string Text() const
    {
        const std::string own = element.name.empty() ? "this " + element.tag : Quoted(element.name);
        return outer == nullptr || outer->name.empty() ? own : own + " of " + Quoted(outer->name);
    }

    /// One of its elements in the middle of a sentence.
    std::string Text(std::string_view what) const { return "the " + std::string(what) + " of " + Text(); }
};

/// The mistakes that were found so far.
struct Mistakes
{
    void Report(const DescriptionElement& where, std::string sentence)
    {
        sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
        all.push_back({where.line, std::move(sentence)});
    }

    std::vector<Mistake> all;
};

} // namespace OPX::KltAPI

#endif
