#include "CppNames.h"

#include "CppClassWriter.h"
#include "SdkReads.h"

#include <algorithm>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

bool IsNoPartOfName(QChar character)
{
    return !character.isLetterOrNumber() && character != QLatin1Char('_');
}

} // namespace

QString CppNames::Clean(const QString& text)
{
    QString result = text;
    // Nearly all names are valid: those share their text with the result.
    if (std::any_of(text.begin(), text.end(), IsNoPartOfName))
        std::replace_if(result.begin(), result.end(), IsNoPartOfName, QChar(QLatin1Char('_')));
    if (!result.isEmpty() && result.at(0).isDigit())
        result.prepend(QLatin1Char('I'));
    return result;
}

CppNames::CppNames(CppOptions options, Cleaner clean) : m_options(std::move(options)), m_clean(std::move(clean))
{
}

CppFeature CppNames::Describe(const Feature& feature) const
{
    KltFeatureDataType dataType = KltFeatureDataUnknown;
    feature.GetDataType(dataType);
    const QString name = CppClassWriter::tr(TextOf(feature, &Feature::GetName).c_str());
    return {FeatureNames(name), dataType, Has(feature, KltFeatureFlagsWrite), m_options.handlesOnly.contains(name)};
}

CppFeatureNames CppNames::FeatureNames(const QString& name) const
{
    CppFeatureNames names;
    names.identifier = m_clean(name);
    names.getter = m_clean(m_options.getterPrefix + names.identifier + m_options.getterSuffix);
    names.setter = m_clean(m_options.setterPrefix + names.identifier + m_options.setterSuffix);
    names.accessor =
        m_clean(m_options.getterPrefix + names.identifier + QLatin1String("Feature") + m_options.getterSuffix);
    names.enumType = EnumType(names.identifier);
    names.member = Member(names.identifier);
    return names;
}

QString CppNames::Member(const QString& identifier) const
{
    return m_clean(CppClassWriter::tr("m_") + identifier + QLatin1String("Feature"));
}

QString CppNames::EnumType(const QString& name) const
{
    return m_clean(name + QLatin1String("Enum"));
}

QString CppNames::EnumEntry(const QString& feature, const QString& entry) const
{
    return m_clean(feature + QLatin1Char('_') + entry);
}
