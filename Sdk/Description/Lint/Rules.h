#ifndef RULES_H
#define RULES_H

#include "Document/Mistake.h"

#include <string>
#include <string_view>
#include <vector>

namespace OPX::KltAPI
{

/// Something that can be wrong with a description.
struct Rule
{
    std::string_view id;       ///< Stays, so that lists of what is accepted stay valid.
    std::string_view severity; ///< Error: it cannot be used. Warning: a feature fails. Note: it is only untidy.
    std::string_view sentence; ///< For the manual.

    bool IsNote() const { return severity == "note"; }
};

/// All of them, in the order of the manual.
const std::vector<Rule>& Rules();

/// The rule of that name, which exists.
const Rule& RuleOf(std::string_view id);

/// Something in a file that is not as its author meant it. The file can be used all the same.
struct Mistake
{
    const Rule* rule;
    Position position;
    std::string place; ///< The node and the element in it, "Width.Max": for lists of what is accepted.
    std::string text;  ///< A sentence.
};

} // namespace OPX::KltAPI

#endif
