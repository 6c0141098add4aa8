#include "Cameras/CameraFamily.h"

#include "Base/Glob.h"
#include "Base/Messages.h"
#include "KoltaHelper.h"
#include "SdkReads.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <unordered_map>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

/// Cameras that agree on something.
struct Agreement
{
    KltInt64_t value;
    std::vector<const std::string*> cameras;
};

typedef std::vector<Agreement> Agreements;

void Note(Agreements& agreements, KltInt64_t value, const std::string& camera)
{
    auto agreement = std::find_if(
        agreements.begin(), agreements.end(), [value](const Agreement& any) { return any.value == value; });
    if (agreement == agreements.end())
        agreement = agreements.insert(agreement, {value, {}});
    if (agreement->cameras.empty() || agreement->cameras.back() != &camera)
        agreement->cameras.push_back(&camera);
}

std::string TypeText(KltInt64_t value)
{
    return TypeName(static_cast<KltFeatureDataType>(value));
}

std::string NumberText(KltInt64_t value)
{
    return std::to_string(value);
}

/// "A, B", or one of them and how many more there are.
std::string Names(const std::vector<const std::string*>& cameras)
{
    const std::size_t most = 5;
    if (cameras.size() > most)
        return Named(*cameras.front(), "") + " (and " + std::to_string(cameras.size() - 1) + " more)";
    std::string names;
    for (const std::string* camera : cameras)
        names += (names.empty() ? "" : ", ") + Named(*camera, "");
    return names;
}

/// What cameras say of a feature.
struct Opinions
{
    Agreements types;
    std::unordered_map<std::string, Agreements> entries; ///< By name. Filled when a second camera has the feature, too.
};

class Union
{
public:
    /// The camera's label is referred to until the end.
    void Add(CameraFeatures& camera)
    {
        // Only what came with the cameras before: if this one has a name twice, the check of names is to see both.
        for (; m_indexed < m_family.features.size(); ++m_indexed)
            m_indices.emplace(m_family.features[m_indexed].name, m_indexed);
        for (FeatureInfo& feature : camera.features)
        {
            const auto known = m_indices.find(feature.name);
            if (known != m_indices.end())
                Merge(known->second, feature, camera.label);
            else
            {
                m_opinions.push_back({{{feature.dataType, {&camera.label}}}, {}});
                m_family.features.push_back(std::move(feature));
            }
        }
    }

    CameraFamily Result()
    {
        for (std::size_t i = 0; i < m_opinions.size(); ++i)
            Compare(m_family.features[i], m_opinions[i]);
        return std::move(m_family);
    }

private:
    void Merge(std::size_t index, const FeatureInfo& feature, const std::string& camera)
    {
        FeatureInfo& common = m_family.features[index];
        Note(m_opinions[index].types, feature.dataType, camera);
        if (common.dataType != feature.dataType)
            return;
        // Whether the class has a setter is asked of the handle.
        if (!Has(*common.feature, KltFeatureFlagsWrite) && Has(*feature.feature, KltFeatureFlagsWrite))
            common.feature = feature.feature;
        MergeEntries(common, m_opinions[index], feature.entries, camera);
    }

    static void MergeEntries(
        FeatureInfo& common, Opinions& opinions, const std::vector<EnumEntry>& entries, const std::string& camera)
    {
        if (opinions.entries.empty())
            for (const EnumEntry& entry : common.entries)
                opinions.entries.emplace(TextOf(entry, &EnumEntry::GetName),
                    Agreements{{ValueOf(entry), {opinions.types.front().cameras.front()}}});
        for (const EnumEntry& entry : entries)
        {
            Agreements& agreements = opinions.entries[TextOf(entry, &EnumEntry::GetName)];
            if (agreements.empty())
                common.entries.push_back(entry);
            Note(agreements, ValueOf(entry), camera);
        }
    }

    /// Finds out where cameras do not agree.
    void Compare(const FeatureInfo& feature, const Opinions& opinions)
    {
        Compare(feature.name, "", opinions.types, &TypeText);
        if (opinions.entries.empty())
            return;
        for (const EnumEntry& entry : feature.entries)
        {
            const std::string name = TextOf(entry, &EnumEntry::GetName);
            Compare(feature.name, name, opinions.entries.at(name), &NumberText);
        }
    }

    void Compare(const std::string& feature, const std::string& entry, const Agreements& agreements,
        std::string (*valueText)(KltInt64_t))
    {
        if (agreements.size() < 2)
            return;
        std::string text = "'" + feature + (entry.empty() ? "'" : "': entry '" + entry + "'");
        const char* link = " is ";
        for (const Agreement& agreement : agreements)
        {
            text.append(link).append(valueText(agreement.value)).append(" in ").append(Names(agreement.cameras));
            link = " and ";
        }
        m_family.contradictions.push_back({feature, text, valueText(agreements.front().value)});
    }

    CameraFamily m_family;
    std::vector<Opinions> m_opinions; ///< Of the features, one each.
    std::unordered_map<std::string, std::size_t> m_indices;
    std::size_t m_indexed = 0;
};

/// Whether any of the patterns matches. Those that do are no longer \a unused.
bool MatchesAny(const std::vector<std::string>& patterns, const std::string& name, std::set<std::string>& unused)
{
    bool matches = false;
    for (const std::string& pattern : patterns)
        if (MatchesGlob(pattern, name))
        {
            unused.erase(pattern);
            matches = true;
        }
    return matches;
}

} // namespace

std::string TypeName(KltFeatureDataType dataType)
{
    return KoltaHelper::DataTypeToString(dataType).remove(QLatin1String("KltFeatureData")).toStdString();
}

void Select(std::vector<CameraFeatures>& cameras, const FeatureChoice& choice)
{
    std::set<std::string> unused(choice.only.begin(), choice.only.end());
    unused.insert(choice.exclude.begin(), choice.exclude.end());
    const auto isOut = [&](const FeatureInfo& feature)
    {
        const bool isIn = choice.only.empty() || MatchesAny(choice.only, feature.name, unused);
        return MatchesAny(choice.exclude, feature.name, unused) || !isIn;
    };
    for (CameraFeatures& camera : cameras)
        camera.features.erase(
            std::remove_if(camera.features.begin(), camera.features.end(), isOut), camera.features.end());
    for (const std::string& pattern : unused)
        TellWarning("There is no feature '" + pattern + "'.");
}

CameraFamily Unite(std::vector<CameraFeatures> cameras)
{
    Union all;
    for (CameraFeatures& camera : cameras)
        all.Add(camera);
    return all.Result();
}

std::vector<std::string> InWords(const std::vector<Contradiction>& contradictions, std::size_t most)
{
    std::vector<std::string> texts;
    for (auto next = contradictions.begin(); next != contradictions.end();)
    {
        const auto begin = next;
        next = std::find_if(
            begin, contradictions.end(), [begin](const Contradiction& any) { return any.feature != begin->feature; });
        const auto count = static_cast<std::size_t>(next - begin);
        if (count > most)
            texts.push_back(begin->text + ", and " + std::to_string(count - 1) + " more differ.");
        else
            std::transform(
                begin, next, std::back_inserter(texts), [](const Contradiction& any) { return any.text + "."; });
    }
    return texts;
}
