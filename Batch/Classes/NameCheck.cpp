#include "Classes/NameCheck.h"

#include "Base/Messages.h"
#include "CppClassWriter.h"
#include "KoltaHelper.h"
#include "SdkReads.h"

#include <QHash>
#include <QVector>

#include <algorithm>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

const std::pair<const char*, const char*> Reservations[] = {
    {"alignas alignof and and_eq asm auto bitand bitor bool break case catch char char16_t char32_t char8_t class "
     "co_await co_return co_yield compl concept const const_cast consteval constexpr constinit continue decltype "
     "default delete do double dynamic_cast else enum explicit export extern false float for friend goto if inline "
     "int long mutable namespace new noexcept not not_eq nullptr operator or or_eq private protected public "
     "register reinterpret_cast requires return short signed sizeof static static_assert static_cast struct switch "
     "template this thread_local throw true try typedef typeid typename union unsigned using virtual void volatile "
     "wchar_t while xor xor_eq",
        "a C++ keyword"},
    // Or the preprocessor replaces it.
    {"OPX std NULL KltErrorType KltErrorSuccess KltErrorBadHandle KltInt64_t KltFeatureDataType "
     "KltFeatureFlagsType KltAccessModeType UpdateTriggerType linux unix i386 main pFeature",
        "a name that generated code uses for something else"},
    {"__linux __linux__ __gnu_linux__ __unix __unix__ __i386 __i386__ __amd64 __amd64__ __x86_64 __x86_64__ __k8 "
     "__k8__ __pic__ __pie__ __asm __asm__ __attribute __attribute__ __const __const__ __inline __inline__ "
     "__volatile __volatile__ __signed __signed__ __typeof __typeof__ __alignof __alignof__ __restrict "
     "__restrict__ __complex __complex__ __real __real__ __imag __imag__ __extension__ __label__ __thread __func__ "
     "__null __int128 __float128",
        "reserved by the compiler"},
};

/// Why a name is taken already; null if it is free.
const char* ReservedAs(const QString& name)
{
    static const QHash<QString, const char*> names = []
    {
        QHash<QString, const char*> all;
        for (const auto& [words, what] : Reservations)
            for (const QString& word : QString::fromLatin1(words).split(QLatin1Char(' ')))
                all.insert(word, what);
        return all;
    }();
    return names.value(name, nullptr);
}

/// Whether Qt considers \a character a letter or a digit, but C++ does not: raised digits, fractions and the like.
bool OnlyLooksLikeDigit(QChar character)
{
    return character.unicode() > 0x7F && character.category() == QChar::Number_Other;
}

/// Who made a name. Turned into words only if something is wrong.
struct Owner
{
    const char* what;
    QString name;

    std::string Text() const { return name.isNull() ? what : what + (" for " + Quoted(name)); }
};

/// Goes through the catalogue and gathers who makes which name. All of them share the scope of the class.
class NameCollector
{
public:
    explicit NameCollector(const CppOptions& options) : m_names(options, &CppNames::Clean)
    {
        Take(options.className, {"class", QString()});
        m_types.insert(options.className, {"class", QString()});
        Take(QLatin1String("m_camera"), {"member of the template", QString()});
        Take(QLatin1String("GetFeatureByName"), {"method of the template", QString()},
            QLatin1String(" (const char * name, OPX::KltAPI::FeaturePtr & feature)"));
    }

    void AddFeature(const Feature& feature)
    {
        const QString name = CppClassWriter::tr(TextOf(feature, &Feature::GetName).c_str());
        const CppFeature described = m_names.Describe(feature);
        if (name.isEmpty())
            m_problems.errors.emplace_back("A feature has no name.");
        else if (described.names.identifier != name)
            m_problems.warnings.push_back(Quoted(name) + " becomes " + Quoted(described.names.identifier) +
                                          ": the camera does not know it by that name at run time.");
        Take(described.names.member, {"member", name});
        const QList<CppMethod> methods = described.Methods();
        for (const CppMethod& method : methods)
            Take(method.name, {"method", name}, method.arguments);
        if (methods.isEmpty())
            m_problems.warnings.push_back(Quoted(name) + " is left out: C++ has no counterpart for its type, " +
                                          KoltaHelper::DataTypeToString(described.dataType).toStdString() + ".");
    }

    void AddEnum(const QString& name, const std::vector<EnumEntry>& entries)
    {
        if (entries.empty())
            m_problems.errors.push_back("Enumeration " + Quoted(name) + " has no entries, so its type does not exist.");
        else
            TakeType(m_names.EnumType(name), {"type", name});
        for (const EnumEntry& entry : entries)
        {
            const QString entryName = CppClassWriter::tr(TextOf(entry, &EnumEntry::GetName).c_str());
            Take(m_names.EnumEntry(name, entryName), {"enumerator", name + QLatin1Char('_') + entryName});
        }
    }

    const NameProblems& Problems() const { return m_problems; }

private:
    /// One of those that made a name.
    struct Taker
    {
        Owner owner;
        QString arguments; ///< Null if it is not a method.
    };

    /// Notes that \a owner makes \a name. Methods of one name may differ in their arguments.
    void Take(const QString& name, const Owner& owner, const QString& arguments = QString())
    {
        CheckAlone(name, owner);
        QVector<Taker>& takers = m_takers[name];
        for (const Taker& taker : takers)
            if (arguments.isNull() || taker.arguments.isNull() || taker.arguments == arguments)
                Collide(taker.owner, owner, name);
        takers.append({owner, arguments});
    }

    /// Notes that \a owner makes \a name for an enumeration type. That has a second name with an underscore in front,
    /// which is only in the way of other types.
    void TakeType(const QString& name, const Owner& owner)
    {
        const QString tag = QLatin1Char('_') + name;
        Take(name, owner);
        if (m_tags.contains(name))
            Collide(m_tags.value(name), owner, name);
        if (m_types.contains(tag))
            Collide(m_types.value(tag), owner, tag);
        m_types.insert(name, owner);
        m_tags.insert(tag, owner);
    }

    void Collide(const Owner& one, const Owner& other, const QString& name)
    {
        m_problems.errors.push_back(
            "The " + one.Text() + " and the " + other.Text() + " are both called " + Quoted(name) + ".");
    }

    /// What is wrong with a name regardless of the others.
    void CheckAlone(const QString& name, const Owner& owner)
    {
        const char* what = ReservedAs(name);
        if (std::any_of(name.begin(), name.end(), OnlyLooksLikeDigit))
            what = "not a C++ name: one of its characters only looks like a digit";
        if (what != nullptr)
            m_problems.errors.push_back(
                "The " + owner.Text() + " is called " + Quoted(name) + ", which is " + what + ".");
    }

    const CppNames m_names;
    QHash<QString, QVector<Taker>> m_takers;
    QHash<QString, Owner> m_types;
    QHash<QString, Owner> m_tags;
    NameProblems m_problems;
};

} // namespace

NameProblems CheckNames(const CppOptions& options, const FeatureInfos& features)
{
    NameCollector names(options);
    for (const auto& category : features.Categories())
        for (const FeaturePtr& feature : category.second)
            names.AddFeature(*feature);
    for (const auto& enumeration : features.Enums())
        names.AddEnum(CppClassWriter::tr(enumeration.first.c_str()), enumeration.second);
    return names.Problems();
}
