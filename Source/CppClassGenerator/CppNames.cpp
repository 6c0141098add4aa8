// Names in generated code. Nothing else in the generator makes one.

#include "CppClassGenerator.h"

#include <algorithm>

namespace
{

bool IsOutOfPlace(QChar character)
{
    return !character.isLetterOrNumber() && character != QLatin1Char('_');
}

} // namespace

QString CppClassGenerator::GetValidIdentifierName(const QString& name)
{
    QString result = name;
    // Nearly all names are valid: those share their text with the result.
    if (std::any_of(name.begin(), name.end(), IsOutOfPlace))
        std::replace_if(result.begin(), result.end(), IsOutOfPlace, QChar(QLatin1Char('_')));
    if (!result.isEmpty() && result.at(0).isDigit())
        result.prepend(QLatin1Char('I'));
    if (result != name)
        emit LogMessage(tr("Info: '") + name + QLatin1String("' is not a valid C++ identifier -> changed to '") +
                        result + QLatin1String("'!"));
    return result;
}

CppFeatureNames CppClassGenerator::FeatureNames(const QString& name)
{
    const QString getterPrefix = m_ui.m_editGetterPrefix->text();
    const QString getterSuffix = m_ui.m_editGetterSuffix->text();
    const QString setterPrefix = m_ui.m_editSetterPrefix->text();
    const QString setterSuffix = m_ui.m_editSetterSuffix->text();

    CppFeatureNames names;
    names.identifier = GetValidIdentifierName(name);
    names.getter = GetValidIdentifierName(getterPrefix + names.identifier + getterSuffix);
    names.setter = GetValidIdentifierName(setterPrefix + names.identifier + setterSuffix);
    names.accessor = GetValidIdentifierName(getterPrefix + names.identifier + QLatin1String("Feature") + getterSuffix);
    names.enumType = EnumTypeName(names.identifier);
    names.member = MemberName(names.identifier);
    return names;
}

QString CppClassGenerator::MemberName(const QString& identifier)
{
    return GetValidIdentifierName(tr("m_") + identifier + QLatin1String("Feature"));
}

QString CppClassGenerator::EnumTypeName(const QString& name)
{
    return GetValidIdentifierName(name + QLatin1String("Enum"));
}

QString CppClassGenerator::EnumEntryName(const QString& feature, const QString& entry)
{
    return GetValidIdentifierName(feature + QLatin1Char('_') + entry);
}
