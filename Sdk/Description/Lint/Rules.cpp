#include "Lint/Rules.h"

#include <algorithm>
#include <stdexcept>

namespace OPX::KltAPI
{

const std::vector<Rule>& Rules()
{
    static const std::vector<Rule> rules = {
        {"unusable", "error", "The description cannot be used at all."},
        {"bad-formula", "warning", "A formula or a constant cannot be read, so there is no value."},
        {"bad-number", "warning", "A number is none, or is read as another one."},
        {"bad-word", "warning", "A word is none of those that are known there."},
        {"contradictory-limits", "warning", "A limit or the value is beyond another limit."},
        {"division-by-zero", "warning", "A formula divides by zero, so there is no value."},
        {"duplicate-entry", "warning", "Two entries of an enumeration have one name."},
        {"duplicate-name", "warning", "Two nodes have one name, which leads to only one of them."},
        {"lost-bytes", "warning", "A register has more bytes than its number, or fewer."},
        {"lost-fraction", "warning", "A whole number comes from a node with a fraction, which is cut off."},
        {"misplaced-node", "warning", "A node stands where none of its kind has an effect."},
        {"missing-bits", "warning", "A number uses bits that its register does not have."},
        {"missing-element", "warning", "A node lacks an element that it cannot do without."},
        {"missing-node", "warning", "A reference leads to a node that does not exist."},
        {"nameless", "warning", "A node or a part of a formula has no name, so nothing can lead to it."},
        {"no-features", "warning", "The Category 'Root' leads to no feature, so the camera has none."},
        {"no-such-entry", "warning", "The value of an enumeration is none of its entries'."},
        {"padded-name", "warning", "White space around a name makes a reference lead nowhere."},
        {"read-only-command", "warning", "A command writes to a node that is read-only."},
        {"same-states", "warning", "A Boolean has one value for both of its states."},
        {"same-value", "warning", "Two entries that can be available at once have one value."},
        {"unknown-element", "warning", "An element is almost one that is known, but is ignored as it is."},
        {"unknown-node", "warning", "A node is of no known kind, and is ignored."},
        {"wrong-kind", "warning", "A reference leads to a node of a kind that is of no use there."},
        {"category-circle", "note", "A category contains itself. Its features are listed once."},
        {"dangling-link", "note", "A reference that nobody follows leads to a node that does not exist."},
        {"no-effect", "note", "An element has no effect in its node."},
        {"no-identifier", "note", "A name is no identifier, so generated code has another one."},
        {"no-model-name", "note", "The description has no ModelName, so the camera is called like the file."},
        {"odd-length", "note", "A number has 3, 5, 6 or 7 bytes, which some programs refuse."},
        {"repeated-element", "note", "An element is there more than once, and the last one counts."},
        {"repeated-feature", "note", "A category lists a feature more than once."},
        {"stray-text", "note", "Text stands between elements, and is ignored."},
        {"unknown-namespace", "note", "The namespace is none of those of the format. Some programs refuse that."},
        {"unused-entry", "note", "An entry in the file given with --accept matches nothing."},
    };
    return rules;
}

const Rule& RuleOf(std::string_view id)
{
    const auto found = std::find_if(Rules().begin(), Rules().end(), [id](const Rule& rule) { return rule.id == id; });
    if (found == Rules().end())
        throw std::out_of_range("There is no rule '" + std::string(id) + "'");
    return *found;
}

} // namespace OPX::KltAPI
