// Names in generated code. Nothing else in the generator makes one.

#include "CppClassWriter.h"

#include <algorithm>

namespace
{

bool IsOutOfPlace(QChar character)
{
    return !character.isLetterOrNumber() && character != QLatin1Char('_');
}

} // namespace

QString CppClassWriter::GetValidIdentifierName(const QString& name)
{
    QString result = name;
    // Nearly all names are valid: those share their text with the result.
    if (std::any_of(name.begin(), name.end(), IsOutOfPlace))
        std::replace_if(result.begin(), result.end(), IsOutOfPlace, QChar(QLatin1Char('_')));
    if (!result.isEmpty() && result.at(0).isDigit())
        result.prepend(QLatin1Char('I'));
    if (result != name)
        Report(tr("Info: '") + name + QLatin1String("' is not a valid C++ identifier -> changed to '") + result +
               QLatin1String("'!"));
    return result;
}

QString CppClassWriter::ClassNameFor(const char* cameraName)
{
    return GetValidIdentifierName(tr(cameraName) + QLatin1String("Camera"));
}

CppFeatureNames CppClassWriter::FeatureNames(const QString& name)
{
    const CppOptions options = Options();
    CppFeatureNames names;
    names.identifier = GetValidIdentifierName(name);
    names.getter = GetValidIdentifierName(options.getterPrefix + names.identifier + options.getterSuffix);
    names.setter = GetValidIdentifierName(options.setterPrefix + names.identifier + options.setterSuffix);
    names.accessor = GetValidIdentifierName(
        options.getterPrefix + names.identifier + QLatin1String("Feature") + options.getterSuffix);
    names.enumType = EnumTypeName(names.identifier);
    names.member = MemberName(names.identifier);
    return names;
}

QString CppClassWriter::MemberName(const QString& identifier)
{
    return GetValidIdentifierName(tr("m_") + identifier + QLatin1String("Feature"));
}

QString CppClassWriter::EnumTypeName(const QString& name)
{
    return GetValidIdentifierName(name + QLatin1String("Enum"));
}

QString CppClassWriter::EnumEntryName(const QString& feature, const QString& entry)
{
    return GetValidIdentifierName(feature + QLatin1Char('_') + entry);
}
