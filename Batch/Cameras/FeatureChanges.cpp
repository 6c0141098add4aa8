#include "Cameras/FeatureChanges.h"

#include "Cameras/ChangedRange.h"
#include "Cameras/FeatureTable.h"
#include "Cameras/NodeStructure.h"
#include "Document/Texts.h"
#include "SdkReads.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

/// A version of a camera.
struct Version
{
    explicit Version(const CameraFeatures& camera)
        : features(camera.features),
          root(camera.description->Root()),
          structure(root, camera.Names())
    {
    }

    const std::vector<FeatureInfo>& features;
    const Element& root;
    NodeStructure structure;
};

/// A feature in one version.
struct Side
{
    Side(Version& version, const FeatureInfo& feature)
        : row(RowOf(feature, version.structure.AllLimits())),
          node(version.structure.Find(row.name)),
          structure(version.structure)
    {
        if (node != nullptr)
            chain = structure.ChainOf(*node);
    }

    FeatureRow row;
    const Element* node; ///< Null if the description does not have it.
    std::vector<const Element*> chain;
    NodeStructure& structure;
};

/// The elements of both versions by name; null where a version has none of this name.
template <class Row, class Name>
std::map<std::string_view, std::pair<const Row*, const Row*>> Pairs(
    const std::vector<Row>& before, const std::vector<Row>& after, Name name)
{
    std::map<std::string_view, std::pair<const Row*, const Row*>> pairs;
    for (const Row& row : before)
        pairs[row.*name].first = &row;
    for (const Row& row : after)
        pairs[row.*name].second = &row;
    return pairs;
}

/// What stands in a row; nothing if there is no row.
template <class Row>
std::optional<std::string> ValueIn(const Row* row)
{
    return row == nullptr ? std::nullopt : std::optional<std::string>(row->value);
}

class Comparison
{
public:
    Comparison(Version& before, Version& after) : m_before(before), m_after(after) {}

    std::vector<FeatureChange> Compare()
    {
        CompareCameras();
        for (const auto& [name, pair] : Pairs(m_before.features, m_after.features, &FeatureInfo::name))
        {
            m_feature = name;
            const std::size_t first = m_changes.size();
            if (pair.first == nullptr)
                Add("feature-added", "", "", std::nullopt, Summary(m_after, *pair.second));
            else if (pair.second == nullptr)
                Add("feature-removed", "", "", Summary(m_before, *pair.first), std::nullopt);
            else if (!IsSame(*pair.first, *pair.second))
                CompareFeatures(Side(m_before, *pair.first), Side(m_after, *pair.second));
            // For these the class has no methods that code could use.
            if (pair.first != nullptr &&
                (pair.first->dataType == KltFeatureDataUnknown || pair.first->dataType == KltFeatureDataNone))
                for (std::size_t i = first; i < m_changes.size(); ++i)
                    m_changes[i].effect = Effect::Compatible;
        }
        return std::move(m_changes);
    }

private:
    typedef std::optional<std::string> Value;

    static std::string Summary(Version& version, const FeatureInfo& feature)
    {
        const FeatureRow row = RowOf(feature, version.structure.AllLimits());
        return row.type + ", " + row.AccessText();
    }

    void Add(
        std::string_view id, const std::string& property, const std::string& entry, const Value& was, const Value& is)
    {
        const ChangeKind& kind = ChangeKindOf(id);
        m_changes.push_back({&kind, kind.effect, m_feature, property, entry, was, is});
    }

    /// If the values are not the same.
    void AddChange(std::string_view id, const std::string& property, const Value& was, const Value& is)
    {
        if (was != is)
            Add(id, property, "", was, is);
    }

    /// What is worked out, in another way.
    void AddOther(std::string_view id, const std::string& property, const std::string& entry = std::string())
    {
        Add(id, property, entry, std::nullopt, std::nullopt);
    }

    void CompareCameras()
    {
        m_feature = m_after.root.tag;
        const auto version = [](const Element& root)
        {
            std::string text;
            for (const char* part : {"MajorVersion", "MinorVersion", "SubMinorVersion"})
                text += (text.empty() ? "" : ".") + std::string(root.AttributeOf(part));
            return WithoutControls(text);
        };
        const auto model = [](const Element& root)
        { return WithoutControls(std::string(root.AttributeOf("ModelName"))); };
        AddChange("other-model", "ModelName", model(m_before.root), model(m_after.root));
        AddChange("other-version", "version", version(m_before.root), version(m_after.root));
    }

    /// Whether there is nothing to compare. Most features stay what they were.
    bool IsSame(const FeatureInfo& before, const FeatureInfo& after)
    {
        const Element* const was = m_before.structure.Find(before.name);
        const Element* const is = m_after.structure.Find(after.name);
        const auto sameEntry = [](const EnumEntry& one, const EnumEntry& other) {
            return ValueOf(one) == ValueOf(other) &&
                   TextOf(one, &EnumEntry::GetName) == TextOf(other, &EnumEntry::GetName);
        };
        return was != nullptr && is != nullptr && m_before.structure.TextOf(*was) == m_after.structure.TextOf(*is) &&
               before.category == after.category && before.dataType == after.dataType &&
               std::equal(before.entries.begin(), before.entries.end(), after.entries.begin(), after.entries.end(),
                   sameEntry) &&
               FlagsOf(before) == FlagsOf(after);
    }

    static KltFeatureFlagsType FlagsOf(const FeatureInfo& feature)
    {
        KltFeatureFlagsType flags = 0;
        feature.feature->GetFlags(flags);
        return flags;
    }

    void CompareFeatures(Side before, Side after)
    {
        const FeatureRow& was = before.row;
        const FeatureRow& is = after.row;
        AddChange("other-category", "category", was.category, is.category);
        const bool lost = (was.readable && !is.readable) || (was.writable && !is.writable);
        AddChange(lost ? "less-access" : "more-access", "access", was.AccessText(), is.AccessText());
        if (was.type != is.type)
            return AddChange("other-type", "type", was.type, is.type);
        for (const auto& [name, rows] : Pairs(was.entries, is.entries, &ValueRow::name))
            if (rows.first == nullptr || rows.second == nullptr || rows.first->value != rows.second->value)
                Add(rows.first == nullptr    ? "entry-added"
                    : rows.second == nullptr ? "entry-removed"
                                             : "entry-renumbered",
                    "entry", std::string(name), ValueIn(rows.first), ValueIn(rows.second));
        Resolve(before.row.limits, before.structure);
        Resolve(after.row.limits, after.structure);
        for (const char* const name : LimitNames)
            CompareLimit(name, before, after);
        if (before.node == nullptr || after.node == nullptr)
            return;
        CompareRegisters(before, after);
        CompareFormulas(before, after);
        CompareConditions(before, before.chain, after, after.chain, std::string());
        CompareEntries(before, after);
        CompareSelected(*before.node, *after.node);
        CompareTexts(*before.node, *after.node);
    }

    /// Whether entries can be used.
    void CompareEntries(const Side& before, const Side& after)
    {
        const auto entries = [](const Element& node)
        {
            std::map<std::string_view, const Element*> named;
            for (const Element& child : node)
                if (child.node != nullptr && child.node->Is(Trait::Entry))
                    named[child.name] = &child;
            return named;
        };
        const std::map<std::string_view, const Element*> newEntries = entries(*after.node);
        for (const auto& [name, entry] : entries(*before.node))
            if (const auto found = newEntries.find(name); found != newEntries.end())
                CompareConditions(before, {entry}, after, {found->second}, WithoutControls(std::string(name)));
    }

    void CompareLimit(const std::string& name, const Side& before, const Side& after)
    {
        const LimitRow* const was = LimitOf(before.row, name);
        const LimitRow* const is = LimitOf(after.row, name);
        const bool isThere = was != nullptr && is != nullptr;
        if (isThere && was->varies && is->varies)
        {
            const Element* const old = before.structure.Find(was->value);
            const Element* const now = after.structure.Find(is->value);
            const bool isSame = old == nullptr || now == nullptr
                                    ? old == now
                                    : before.structure.DigestOf(*old, true) == after.structure.DigestOf(*now, true);
            if (!isSame)
                AddOther(before.row.writable ? "unclear-range" : "harmless-range", name);
        }
        else if (name == "Unit")
            AddChange(isThere ? "other-unit" : "unit-named", name, ValueIn(was), ValueIn(is));
        else if (isThere ? !was->IsSame(*is) : was != is)
        {
            const Effect effect = EffectOfLimit(name, before.row, after.row);
            Add(RangeId(effect), name, "", ValueIn(was), ValueIn(is));
        }
    }

    static const char* RangeId(Effect effect)
    {
        return effect == Effect::Breaking  ? "narrower-range"
               : effect == Effect::Unclear ? "unclear-range"
                                           : "harmless-range";
    }

    void CompareRegisters(const Side& before, const Side& after)
    {
        const std::string& type = before.row.type;
        const bool isNumber = type == "Int";
        const std::optional<Storage> was = StorageOf(*before.chain.back(), before.structure);
        const std::optional<Storage> is = StorageOf(*after.chain.back(), after.structure);
        if (!was || !is || (!isNumber && type != "Float" && type != "String" && type != "Raw") ||
            (was->bits == is->bits && was->isSigned == is->isSigned))
            return;
        // Where a formula lies between, the limits are not those of the register.
        const bool isPlain = std::none_of(before.chain.begin(), before.chain.end(),
            [](const Element* node) { return node->node->Is(Trait::Formula); });
        const Effect effect = EffectOfStorage(*was, *is, before.row, isPlain);
        Add(RangeId(effect), "register", "", was->Text(isNumber), is->Text(isNumber));
    }

    void CompareFormulas(const Side& before, const Side& after)
    {
        const auto differs = [&](bool places) {
            return before.structure.FormulasOf(*before.node, places) != after.structure.FormulasOf(*after.node, places);
        };
        if (differs(false))
            AddOther("other-value", "value");
        else if (differs(true))
            AddOther("unclear-value", "value");
    }

    /// What decides whether a feature or an entry can be used; the name of the first such node, and all of them
    /// together.
    static std::pair<Value, NodeStructure::Digest> ConditionOf(
        const std::string& tag, const std::vector<const Element*>& chain, NodeStructure& structure)
    {
        std::pair<Value, NodeStructure::Digest> condition;
        for (const Element* node : chain)
        {
            const Element* const reference = node->Child(tag);
            const Element* const target = reference == nullptr ? nullptr : structure.Find(reference->Target());
            if (target == nullptr)
                continue;
            const std::optional<Number> constant = structure.ConstantOf(*target);
            if (constant && (constant->AsReal() != 0) == (tag != "pIsLocked")) // As if it was not there.
                continue;
            condition.first = condition.first.value_or(WithoutControls(std::string(target->name)));
            condition.second += structure.DigestOf(*target, true);
        }
        return condition;
    }

    /// \param entry the one that it is about; empty if it is about the whole feature
    void CompareConditions(const Side& before, const std::vector<const Element*>& oldChain, const Side& after,
        const std::vector<const Element*>& newChain, const std::string& entry)
    {
        for (const std::string tag : {"pIsImplemented", "pIsAvailable", "pIsLocked"})
        {
            const auto [was, wasDigest] = ConditionOf(tag, oldChain, before.structure);
            const auto [is, isDigest] = ConditionOf(tag, newChain, after.structure);
            const bool matters = tag != "pIsLocked" || before.row.writable;
            if (was && is && wasDigest != isDigest)
                AddOther(matters ? "unclear-condition" : "condition-removed", tag, entry);
            else if (was.has_value() != is.has_value())
                Add(is && matters ? "condition-added" : "condition-removed", tag, entry, was, is);
        }
    }

    /// The selector keeps its name, but not what it is for.
    void CompareSelected(const Element& before, const Element& after)
    {
        const auto selected = [](const Element& node)
        {
            std::set<std::string_view> names;
            for (const Element& child : node)
                if (child.tag == "pSelected")
                    names.insert(child.Text());
            return names;
        };
        const std::set<std::string_view> was = selected(before);
        const std::set<std::string_view> is = selected(after);
        for (const auto& [names, others] : {std::pair(&was, &is), std::pair(&is, &was)})
            for (const std::string_view name : *names)
                // What came or went with its features is told of those.
                if (others->count(name) == 0 && m_before.structure.Find(name) != nullptr &&
                    m_after.structure.Find(name) != nullptr)
                {
                    const std::string text = WithoutControls(std::string(name));
                    Add(names == &was ? "selection-lost" : "selection-added", "pSelected", "",
                        names == &was ? Value(text) : std::nullopt, names == &was ? std::nullopt : Value(text));
                }
    }

    void CompareTexts(const Element& before, const Element& after)
    {
        for (const char* tag : {"IsDeprecated", "DisplayName", "ToolTip", "Description", "Visibility",
                 "ImposedVisibility", "ValidValueSet"})
        {
            const auto text = [tag](const Element& node)
            { return node.Child(tag) == nullptr ? Value() : WithoutControls(std::string(node.Child(tag)->Text())); };
            AddChange(std::string_view(tag) == "IsDeprecated" ? "deprecated" : "text", tag, text(before), text(after));
        }
    }

    Version& m_before;
    Version& m_after;
    std::string m_feature; ///< That is being compared.
    std::vector<FeatureChange> m_changes;
};

} // namespace

std::string FeatureChange::Place() const
{
    return feature + (property.empty() ? "" : "." + (entry.empty() ? property : entry));
}

std::vector<FeatureChange> ChangesBetween(const CameraFeatures& before, const CameraFeatures& after)
{
    Version old(before);
    Version now(after);
    return Comparison(old, now).Compare();
}
