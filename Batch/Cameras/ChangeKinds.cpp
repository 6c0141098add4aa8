#include "Cameras/ChangeKinds.h"

#include <algorithm>

const std::vector<ChangeKind>& ChangeKinds()
{
    static const std::vector<ChangeKind> kinds = {
        {"condition-added", Effect::Breaking,
            "A feature can be unavailable, not implemented or locked that could not."},
        {"entry-removed", Effect::Breaking, "An entry of an enumeration is gone.", "entries removed"},
        {"entry-renumbered", Effect::Breaking, "An entry of an enumeration has another value.", "entries renumbered"},
        {"feature-removed", Effect::Breaking, "A feature is gone."},
        {"less-access", Effect::Breaking, "A feature cannot be read or written any more."},
        {"narrower-range", Effect::Breaking, "Values are refused that were allowed."},
        {"other-type", Effect::Breaking, "A feature has another type."},
        {"other-unit", Effect::Breaking, "A feature has another unit."},
        {"other-value", Effect::Breaking, "A value is worked out by another formula, so it means something else."},
        {"selection-added", Effect::Breaking, "A selector selects a feature that it did not.",
            "features selected in addition"},
        {"selection-lost", Effect::Breaking, "A selector does not select a feature any more.",
            "features selected no more"},
        {"unclear-condition", Effect::Unclear, "When a feature can be used is worked out in another way."},
        {"unclear-range", Effect::Unclear, "A limit is worked out in another way, while the camera runs."},
        {"unclear-value", Effect::Unclear,
            "The formula of a value is the same, but not the registers that have a part in it."},
        {"condition-removed", Effect::Compatible,
            "A feature is available, implemented or unlocked all the time, or need not be."},
        {"deprecated", Effect::Compatible, "A feature is deprecated now, or no more."},
        {"entry-added", Effect::Compatible, "An entry of an enumeration is new.", "entries added"},
        {"feature-added", Effect::Compatible, "A feature is new."},
        {"harmless-range", Effect::Compatible, "The limits have changed, but no value is refused that was allowed."},
        {"more-access", Effect::Compatible, "A feature can be read or written that could not."},
        {"other-category", Effect::Compatible, "A feature is in another category."},
        {"other-model", Effect::Compatible, "The description is of another model."},
        {"other-version", Effect::Compatible, "The description has another version."},
        {"text", Effect::Compatible,
            "A name, a text or a visibility for people has changed. Told with --verbose only."},
        {"unit-named", Effect::Compatible, "A unit is named that was not, or no more."},
    };
    return kinds;
}

const ChangeKind& ChangeKindOf(std::string_view id)
{
    return *std::find_if(
        ChangeKinds().begin(), ChangeKinds().end(), [id](const ChangeKind& kind) { return kind.id == id; });
}
