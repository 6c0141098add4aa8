// The declarations of the generated class, and the walk through the catalogue that declarations and bodies share.

#include "CppClassWriter.h"

#include "FeatureInfos.h"
#include "KoltaHelper.h"
#include "QtCompat.h"
#include "SdkReads.h"

#include <QTextStream>

using namespace OPX::KltAPI;

int CppClassWriter::WriteMethodDeclarations(QTextStream& output, int column, const FeatureInfos& features)
{
    return WriteMethods(output, column, features, &CppClassWriter::WriteDeclaration);
}

int CppClassWriter::WriteMethods(
    QTextStream& output, int column, const FeatureInfos& features, MethodWriter writeMethod)
{
    const QString indent(column, QLatin1Char(' '));
    int count = 0;
    for (const FeatureInfos::CategoryMap::value_type& category : features.Categories())
    {
        // A category without usable features leaves nothing behind, not even its heading.
        QString text;
        QTextStream scratch(&text);
        scratch << Qt::endl
                << indent << QLatin1String("// Category ") << QString::fromUtf8(category.first.c_str()) << Qt::endl;
        int written = 0;
        for (const FeaturePtr& feature : category.second)
            written += WriteMethodsOf(*feature, scratch, indent, writeMethod) ? 1 : 0;
        if (written > 0)
            output << text;
        count += written;
    }
    return count;
}

bool CppClassWriter::WriteMethodsOf(
    const Feature& feature, QTextStream& scratch, const QString& indent, MethodWriter writeMethod)
{
    const CppFeature described = Names().Describe(feature);
    const QList<CppMethod> methods = described.Methods();
    if (methods.isEmpty())
    {
        Report(tr("Unknown feature type ") + KoltaHelper::DataTypeToString(described.dataType) +
               QLatin1String(" detected! Feature ") + described.names.identifier + QLatin1String(" will be ignored."));
        return false;
    }
    for (const CppMethod& method : methods)
        (this->*writeMethod)(scratch, indent, method, described.names);
    scratch << Qt::endl;
    return true;
}

void CppClassWriter::WriteDeclaration(
    QTextStream& scratch, const QString& indent, const CppMethod& method, const CppFeatureNames& /*names*/)
{
    WriteLinesBefore(scratch, indent, method.name + method.arguments);
    scratch << indent << QLatin1String("KltErrorType ") << method.name << method.arguments << ';' << Qt::endl;
}

QStringList CppClassWriter::LinesBefore(const QString& /*declared*/, int /*column*/) const
{
    return QStringList();
}

void CppClassWriter::WriteLinesBefore(QTextStream& scratch, const QString& indent, const QString& declared) const
{
    const QStringList lines = LinesBefore(declared, static_cast<int>(indent.size()));
    for (const QString& line : lines)
        scratch << indent << line << Qt::endl;
}

int CppClassWriter::WriteVariableDeclarations(QTextStream& output, int column, const FeatureInfos& features)
{
    const QString indent(column, QLatin1Char(' '));
    const CppNames names = Names();
    int count = 0;
    for (const FeatureInfos::CategoryMap::value_type& category : features.Categories())
    {
        for (const FeaturePtr& feature : category.second)
        {
            const QString identifier = GetValidIdentifierName(tr(TextOf(*feature, &Feature::GetName).c_str()));
            output << indent << QLatin1String("OPX::KltAPI::FeaturePtr ") << names.Member(identifier)
                   << QLatin1String(";\n");
            ++count;
        }
    }
    return count;
}

int CppClassWriter::WriteEnumDeclarations(QTextStream& output, int column, const FeatureInfos& features)
{
    const QString indent(column, QLatin1Char(' '));
    const CppNames names = Names();
    int count = 0;
    for (const FeatureInfos::EnumMap::value_type& enumeration : features.Enums())
    {
        // C++ has no enumeration without enumerators: without entries nothing is left of it.
        QString text;
        QTextStream scratch(&text);
        const QString feature = tr(enumeration.first.c_str());
        const QString typeName = names.EnumType(feature);
        scratch << indent << QLatin1String("typedef enum _") << typeName << Qt::endl;
        scratch << indent << '{' << Qt::endl;
        WriteEntries(scratch, indent + QLatin1String("    "), feature, enumeration.second);
        scratch << indent << QLatin1String("} ") << typeName << ';' << Qt::endl;
        scratch << Qt::endl;
        if (!enumeration.second.empty())
            output << text;
        count += static_cast<int>(enumeration.second.size());
    }
    return count;
}

void CppClassWriter::WriteEntries(
    QTextStream& scratch, const QString& indent, const QString& feature, const std::vector<EnumEntry>& entries)
{
    const CppNames names = Names();
    std::size_t left = entries.size();
    for (const EnumEntry& entry : entries)
    {
        const QString name = names.EnumEntry(feature, tr(TextOf(entry, &EnumEntry::GetName).c_str()));
        WriteLinesBefore(scratch, indent, name);
        scratch << indent << name << QLatin1String(" = ") << ValueOf(entry);
        if (--left > 0)
            scratch << ',';
        scratch << Qt::endl;
    }
}
