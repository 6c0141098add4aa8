#include "NameCheck.h"

#include "CppClassWriter.h"
#include "KoltaHelper.h"
#include "SdkReads.h"

#include <QHash>
#include <QSet>

#include <algorithm>

using namespace OPX::KltAPI;

namespace
{

QSet<QString> Words(const char* words)
{
    const QStringList list = QString::fromLatin1(words).split(QLatin1Char(' '));
    return QSet<QString>(list.begin(), list.end());
}

bool IsKeyword(const QString& name)
{
    static const QSet<QString> keywords =
        Words("alignas alignof and and_eq asm auto bitand bitor bool break case catch char char16_t char32_t "
              "char8_t class co_await co_return co_yield compl concept const const_cast consteval constexpr "
              "constinit continue decltype default delete do double dynamic_cast else enum explicit export extern "
              "false float for friend goto if inline int long mutable namespace new noexcept not not_eq nullptr "
              "operator or or_eq private protected public register reinterpret_cast requires return short signed "
              "sizeof static static_assert static_cast struct switch template this thread_local throw true try "
              "typedef typeid typename union unsigned using virtual void volatile wchar_t while xor xor_eq");
    return keywords.contains(name);
}

/// Names that generated code uses for something else, or that the preprocessor replaces.
bool IsTaken(const QString& name)
{
    static const QSet<QString> taken = Words(
        "OPX std NULL KltErrorType KltErrorSuccess KltErrorBadHandle KltInt64_t KltFeatureDataType KltFeatureFlagsType "
        "KltAccessModeType UpdateTriggerType linux unix i386 main pFeature");
    return taken.contains(name);
}

/// What Qt takes for a letter or a digit, and C++ does not: raised digits, fractions and the like.
bool IsOutOfPlace(QChar character)
{
    return character.category() == QChar::Number_Other;
}

QString Quoted(const QString& name)
{
    return QLatin1Char('\'') + name + QLatin1Char('\'');
}

QString Capitalised(const QString& text)
{
    return text.left(1).toUpper() + text.mid(1);
}

/// Who made a name. Put into words only where something is wrong.
struct Owner
{
    const char* what;
    QString name;

    QString Text() const
    {
        const QString text = QLatin1String(what);
        return name.isNull() ? text : text + QLatin1String(" for ") + Quoted(name);
    }
};

/// Goes through the catalogue and gathers who makes which name. All of them share the scope of the class.
class NameCollector
{
public:
    explicit NameCollector(CppClassWriter& writer) : m_writer(writer)
    {
        const QString className = writer.Options().className;
        Take(className, {"the class", QString()});
        m_types.insert(className, {"the class", QString()});
        Take(QLatin1String("m_camera"), {"the member of the template", QString()});
        TakeMethod({CppMethod::Accessor, QLatin1String("GetFeatureByName"),
                       QLatin1String(" (const char * name, OPX::KltAPI::FeaturePtr & feature)")},
            {"the method of the template", QString()});
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
        Take(described.names.member, {"the member", name});
        const QList<CppMethod> methods = described.Methods();
        for (const CppMethod& method : methods)
            TakeMethod(method, {"the method", name});
        if (methods.isEmpty())
            m_problems.warnings.append(Quoted(name) + QLatin1String(" is left out: C++ has nothing for its type, ") +
                                       KoltaHelper::DataTypeToString(described.dataType) + QLatin1Char('.'));
    }

    void AddEnum(const QString& name, const std::vector<EnumEntry>& entries)
    {
        if (entries.empty())
            m_problems.errors.append(QLatin1String("Enumeration ") + Quoted(name) +
                                     QLatin1String(" has no entries, so its type does not exist."));
        else
            TakeType(m_writer.EnumTypeName(name), {"the type", name});
        for (const EnumEntry& entry : entries)
        {
            const QString entryName = CppClassWriter::tr(TextOf(entry, &EnumEntry::GetName).c_str());
            Take(m_writer.EnumEntryName(name, entryName), {"the enumerator", name + QLatin1Char('_') + entryName});
        }
    }

    const NameProblems& Problems() const { return m_problems; }

private:
    typedef QHash<QString, Owner> Owners;

    /// Notes that \a owner makes \a name.
    void Take(const QString& name, const Owner& owner)
    {
        CheckAlone(name, owner);
        Compare(m_methodNames, name, owner);
        TakeFrom(m_others, name, name, owner);
    }

    /// The same for a method: methods of one name with different arguments are no problem.
    void TakeMethod(const CppMethod& method, const Owner& owner)
    {
        CheckAlone(method.name, owner);
        Compare(m_others, method.name, owner);
        TakeFrom(m_methods, method.name + method.arguments, method.name, owner);
        m_methodNames.insert(method.name, owner);
    }

    /// The same for an enumeration type, which has a second name with an underscore in front. That one is in nobody's
    /// way but other types'.
    void TakeType(const QString& name, const Owner& owner)
    {
        const QString tag = QLatin1Char('_') + name;
        Take(name, owner);
        Compare(m_tags, name, owner);
        Compare(m_types, tag, owner);
        m_types.insert(name, owner);
        m_tags.insert(tag, owner);
    }

    void TakeFrom(Owners& owners, const QString& key, const QString& name, const Owner& owner)
    {
        if (owners.contains(key))
            Collide(owners.value(key), owner, name);
        else
            owners.insert(key, owner);
    }

    void Compare(const Owners& owners, const QString& name, const Owner& owner)
    {
        if (owners.contains(name))
            Collide(owners.value(name), owner, name);
    }

    void Collide(const Owner& one, const Owner& other, const QString& name)
    {
        m_problems.errors.append(Capitalised(one.Text()) + QLatin1String(" and ") + other.Text() +
                                 QLatin1String(" are both called ") + Quoted(name) + QLatin1Char('.'));
    }

    /// What is wrong with a name whatever the others are.
    void CheckAlone(const QString& name, const Owner& owner)
    {
        const char* const what = IsKeyword(name) ? "a keyword of C++"
                                 : IsTaken(name) ? "a name that generated code uses otherwise"
                                 : std::any_of(name.begin(), name.end(), IsOutOfPlace)
                                     ? "no name for C++: it holds a character that only looks like a digit"
                                     : nullptr;
        if (what != nullptr)
            m_problems.errors.append(Capitalised(owner.Text()) + QLatin1String(" is called ") + Quoted(name) +
                                     QLatin1String(", which is ") + QLatin1String(what) + QLatin1Char('.'));
    }

    CppClassWriter& m_writer;
    Owners m_methods;     ///< With their arguments.
    Owners m_methodNames; ///< Without.
    Owners m_others;      ///< Members, types, enumerators, the class.
    Owners m_types;
    Owners m_tags;
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
