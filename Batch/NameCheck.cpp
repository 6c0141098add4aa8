#include "NameCheck.h"

#include "CppClassWriter.h"
#include "SdkReads.h"

#include <QHash>
#include <QSet>

using namespace OPX::KltAPI;

namespace
{

bool IsKeyword(const QString& name)
{
    const int longest = 16;
    if (name.size() > longest)
        return false;
    static const QSet<QString> keywords = []
    {
        const QString all = QLatin1String(
            "alignas alignof and and_eq asm auto bitand bitor bool break case catch char char16_t char32_t char8_t "
            "class "
            "co_await co_return co_yield compl concept const const_cast consteval constexpr constinit continue "
            "decltype "
            "default delete do double dynamic_cast else enum explicit export extern false float for friend goto if "
            "inline int long mutable namespace new noexcept not not_eq nullptr operator or or_eq private protected "
            "public register reinterpret_cast requires return short signed sizeof static static_assert static_cast "
            "struct switch template this thread_local throw true try typedef typeid typename union unsigned using "
            "virtual void volatile wchar_t while xor xor_eq");
        const QStringList list = all.split(QLatin1Char(' '));
        return QSet<QString>(list.begin(), list.end());
    }();
    return keywords.contains(name);
}

/// Goes through the catalogue and gathers who makes which name.
class NameCollector
{
public:
    explicit NameCollector(CppClassWriter& writer) : m_writer(writer), m_className(writer.Options().className)
    {
        Take(m_types, m_className, m_className, "the class");
    }

    void AddFeature(const Feature& feature)
    {
        const QString name = CppClassWriter::tr(TextOf(feature, &Feature::GetName).c_str());
        const CppFeature described = m_writer.Describe(feature);
        if (name.isEmpty())
            m_problems.errors.append(QLatin1String("A feature has no name."));
        else if (described.names.identifier != name)
            m_problems.warnings.append(Quoted(name) + QLatin1String(" becomes ") + Quoted(described.names.identifier) +
                                       QLatin1String(": the camera does not know it by that name at run time."));
        Take(m_members, described.names.member, name, "the member");
        AddMethods(described, name);
    }

    void AddEnum(const QString& name, const std::vector<EnumEntry>& entries)
    {
        if (entries.empty())
            m_problems.errors.append(QLatin1String("Enumeration ") + Quoted(name) +
                                     QLatin1String(" has no entries, so its type does not exist."));
        else
            Take(m_types, m_writer.EnumTypeName(name), name, "the type");
        for (const EnumEntry& entry : entries)
        {
            const QString entryText = CppClassWriter::tr(TextOf(entry, &EnumEntry::GetName).c_str());
            Take(m_types, m_writer.EnumEntryName(name, entryText), name + QLatin1Char('_') + entryText,
                "the enumerator");
        }
    }

    const NameProblems& Problems() const { return m_problems; }

private:
    typedef QHash<QString, QString> Owners; ///< Who made a name.

    static QString Quoted(const QString& name) { return QLatin1Char('\'') + name + QLatin1Char('\''); }

    void AddMethods(const CppFeature& feature, const QString& name)
    {
        const QList<CppMethod> methods = feature.Methods();
        for (const CppMethod& method : methods)
        {
            // Methods of one name with different arguments are no problem.
            Take(m_methods, method.name, name, "the method", method.arguments);
            if (method.name == m_className)
                m_problems.errors.append(
                    QLatin1String("The method for ") + Quoted(name) + QLatin1String(" has the name of the class."));
        }
    }

    /// Notes that \a owner makes \a name. Methods are told apart by their arguments, too.
    void Take(Owners& owners, const QString& name, const QString& owner, const char* what,
        const QString& arguments = QString())
    {
        if (IsKeyword(name))
            m_problems.errors.append(Quoted(owner) + QLatin1String(" ends in ") + QLatin1String(what) +
                                     QLatin1Char(' ') + Quoted(name) + QLatin1String(", a keyword of C++."));
        const QString key = name + arguments;
        const auto taken = owners.constFind(key);
        if (taken == owners.constEnd())
            owners.insert(key, owner);
        else
            m_problems.errors.append(Quoted(taken.value()) + QLatin1String(" and ") + Quoted(owner) +
                                     QLatin1String(" both end in ") + QLatin1String(what) + QLatin1Char(' ') +
                                     Quoted(name) + QLatin1Char('.'));
    }

    CppClassWriter& m_writer;
    const QString m_className;
    Owners m_methods;
    Owners m_members;
    Owners m_types; ///< Types and enumerators share one scope.
    NameProblems m_problems;
};

} // namespace

NameProblems CheckNames(CppClassWriter& writer, const FeatureInfos& features)
{
    NameCollector names(writer);
    for (const auto& category : features.Categories())
        for (const FeaturePtr& feature : category.second)
            names.AddFeature(*feature);
    for (const auto& enumeration : features.Enums())
        names.AddEnum(CppClassWriter::tr(enumeration.first.c_str()), enumeration.second);
    return names.Problems();
}
