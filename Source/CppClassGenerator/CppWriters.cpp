// The declarations of the generated class, and the walk through the catalogue that declarations and bodies share.

#include "CppClassGenerator.h"

#include "FeatureInfos.h"
#include "KoltaHelper.h"
#include "QtCompat.h"
#include "SdkReads.h"

#include <QTextStream>

using namespace OPX::KltAPI;

namespace
{

std::string NameOf(const Feature& feature)
{
    std::string name;
    ReadString(feature, &Feature::GetName, name);
    return name;
}

QString Indentation(int column)
{
    return QString(column, QLatin1Char(' '));
}

} // namespace

int CppClassGenerator::WriteMethodDeclarations(QTextStream& output, int column, const FeatureInfos& features)
{
    return WriteMethods(output, column, features, &CppClassGenerator::WriteDeclarations);
}

int CppClassGenerator::WriteMethods(
    QTextStream& output, int column, const FeatureInfos& features, FeatureWriter writeFeature)
{
    const QString indent = Indentation(column);
    int count = 0;
    for (const FeatureInfos::CategoryMap::value_type& category : features.Categories())
    {
        // A category without usable features leaves nothing behind, not even its heading.
        QString text;
        QTextStream scratch(&text);
        scratch << Qt::endl << indent << "// Category " << QString::fromUtf8(category.first.c_str()) << Qt::endl;
        int written = 0;
        for (const FeaturePtr& feature : category.second)
            written += WriteMethodsOf(*feature, scratch, indent, writeFeature) ? 1 : 0;
        if (written > 0)
            output << text;
        count += written;
    }
    return count;
}

bool CppClassGenerator::WriteMethodsOf(
    const Feature& feature, QTextStream& scratch, const QString& indent, FeatureWriter writeFeature)
{
    const CppFeature described = Describe(feature);
    const QList<CppMethod> valueMethods = described.ValueMethods();
    if (valueMethods.isEmpty())
    {
        emit LogMessage(tr("Unknown feature type ") + KoltaHelper::DataTypeToString(described.dataType) +
                        QLatin1String(" detected! Feature ") + described.names.identifier +
                        QLatin1String(" will be ignored."));
        return false;
    }
    (this->*writeFeature)(scratch, indent, described, valueMethods);
    return true;
}

CppFeature CppClassGenerator::Describe(const Feature& feature)
{
    KltFeatureDataType dataType = KltFeatureDataUnknown;
    feature.GetDataType(dataType);
    KltFeatureFlagsType flags = KltFeatureFlagsNone;
    const std::string name = NameOf(feature);
    feature.GetFlags(flags);

    return {FeatureNames(tr(name.c_str())), dataType, (flags & KltFeatureFlagsWrite) == KltFeatureFlagsWrite};
}

void CppClassGenerator::WriteDeclarations(
    QTextStream& scratch, const QString& indent, const CppFeature& feature, const QList<CppMethod>& valueMethods)
{
    for (const CppMethod& method : valueMethods)
        scratch << indent << "KltErrorType " << method.name << method.arguments << ';' << Qt::endl;
    scratch << indent << "KltErrorType " << feature.names.accessor << " (OPX::KltAPI::FeaturePtr & feature);"
            << Qt::endl;
    scratch << Qt::endl;
}

int CppClassGenerator::WriteVariableDeclarations(QTextStream& output, int column, const FeatureInfos& features)
{
    const QString indent = Indentation(column);
    int count = 0;
    for (const FeatureInfos::CategoryMap::value_type& category : features.Categories())
    {
        QString text;
        QTextStream scratch(&text);
        for (const FeaturePtr& feature : category.second)
        {
            const QString identifier = GetValidIdentifierName(tr(NameOf(*feature).c_str()));
            scratch << indent << "OPX::KltAPI::FeaturePtr " << MemberName(identifier) << ';' << Qt::endl;
            ++count;
        }
        output << text;
    }
    return count;
}

int CppClassGenerator::WriteEnumDeclarations(QTextStream& output, int column, const FeatureInfos& features)
{
    const QString indent = Indentation(column);
    int count = 0;
    for (const FeatureInfos::EnumMap::value_type& enumeration : features.Enums())
    {
        // C++ has no enumeration without enumerators: without entries nothing is left of it.
        QString text;
        QTextStream scratch(&text);
        const QString feature = tr(enumeration.first.c_str());
        const QString typeName = EnumTypeName(feature);
        scratch << indent << "typedef enum _" << typeName << Qt::endl;
        scratch << indent << '{' << Qt::endl;
        const int written = WriteEntries(scratch, indent, feature, enumeration.second);
        scratch << indent << "} " << typeName << ';' << Qt::endl;
        scratch << Qt::endl;
        if (written > 0)
            output << text;
        count += written;
    }
    return count;
}

int CppClassGenerator::WriteEntries(
    QTextStream& scratch, const QString& indent, const QString& feature, const std::vector<EnumEntry>& entries)
{
    std::size_t left = entries.size();
    for (const EnumEntry& entry : entries)
    {
        std::string name;
        ReadString(entry, &EnumEntry::GetName, name);
        KltInt64_t value = 0;
        entry.GetValue(value);
        scratch << indent << "    " << EnumEntryName(feature, tr(name.c_str())) << " = " << value;
        if (--left > 0)
            scratch << ',';
        scratch << Qt::endl;
    }
    return static_cast<int>(entries.size());
}
