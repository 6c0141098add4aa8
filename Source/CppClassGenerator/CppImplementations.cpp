// The bodies of the generated methods.

#include "CppClassWriter.h"

#include "QtCompat.h"

#include <QTextStream>

namespace
{

/// Writes the lines that do a value method's own work; the frame around them has put the feature into pFeature.
void WriteWork(QTextStream& scratch, const QString& indent, const CppMethod& method, const QString& enumType)
{
    switch (method.kind)
    {
    case CppMethod::SimpleGetter:
        scratch << indent << QLatin1String("    result = pFeature->GetValue (value);") << Qt::endl;
        break;
    case CppMethod::Setter:
        scratch << indent << QLatin1String("    result = pFeature->SetValue (value);") << Qt::endl;
        break;
    case CppMethod::EnumGetter:
        scratch << indent << QLatin1String("    KltInt64_t nValue;") << Qt::endl;
        scratch << indent << QLatin1String("    result = pFeature->GetValue (nValue);") << Qt::endl;
        scratch << indent << QLatin1String("    value = (") << enumType << QLatin1String(") nValue;") << Qt::endl;
        break;
    case CppMethod::Command:
        scratch << indent << QLatin1String("    result = pFeature->RunCommand ();") << Qt::endl;
        break;
    case CppMethod::Accessor:
        break;
    }
}

void WriteValueMethod(
    QTextStream& scratch, const QString& indent, const CppMethod& method, const CppFeatureNames& names)
{
    scratch << indent << QLatin1String("    KltErrorType result;") << Qt::endl;
    scratch << indent << QLatin1String("    OPX::KltAPI::FeaturePtr pFeature;") << Qt::endl;
    scratch << indent << QLatin1String("    result = ") << names.accessor << QLatin1String(" (pFeature);") << Qt::endl;
    scratch << indent << QLatin1String("    if (result != KltErrorSuccess)") << Qt::endl;
    scratch << indent << QLatin1String("        return result;") << Qt::endl;
    WriteWork(scratch, indent, method, names.enumType);
    scratch << indent << QLatin1String("    return result;") << Qt::endl;
}

void WriteAccessor(QTextStream& scratch, const QString& indent, const CppFeatureNames& names)
{
    scratch << indent << QLatin1String("    if (") << names.member << QLatin1String(".get() == NULL)") << Qt::endl;
    scratch << indent << QLatin1String("    {") << Qt::endl;
    scratch << indent << QLatin1String("        KltErrorType result;") << Qt::endl;
    // The identifier, not the SDK's name: for nearly all features they are the same.
    scratch << indent << QLatin1String("        result = GetFeatureByName (\"") << names.identifier
            << QLatin1String("\", ") << names.member << QLatin1String(");") << Qt::endl;
    scratch << indent << QLatin1String("        if (result != KltErrorSuccess)") << Qt::endl;
    scratch << indent << QLatin1String("        {") << Qt::endl;
    scratch << indent << QLatin1String("            ") << names.member << QLatin1String(".reset();") << Qt::endl;
    scratch << indent << QLatin1String("            return result;") << Qt::endl;
    scratch << indent << QLatin1String("        }") << Qt::endl;
    scratch << indent << QLatin1String("    }") << Qt::endl;
    scratch << indent << QLatin1String("    feature = ") << names.member << ';' << Qt::endl;
    scratch << indent << QLatin1String("    return KltErrorSuccess;") << Qt::endl;
}

} // namespace

int CppClassWriter::WriteMethodImplementations(QTextStream& output, int column, const FeatureInfos& features)
{
    return WriteMethods(output, column, features, &CppClassWriter::WriteImplementation);
}

void CppClassWriter::WriteImplementation(
    QTextStream& scratch, const QString& indent, const CppMethod& method, const CppFeatureNames& names)
{
    // The class name as it was typed: whoever types something else than an identifier knows what it is for.
    scratch << indent << QLatin1String("KltErrorType ") << Options().className << QLatin1String("::") << method.name
            << method.arguments << Qt::endl;
    scratch << indent << '{' << Qt::endl;
    if (method.kind == CppMethod::Accessor)
        WriteAccessor(scratch, indent, names);
    else
        WriteValueMethod(scratch, indent, method, names);
    scratch << indent << '}' << Qt::endl;
}
