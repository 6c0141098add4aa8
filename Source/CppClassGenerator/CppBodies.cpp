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
        scratch << indent << "    result = pFeature->GetValue (value);" << Qt::endl;
        break;
    case CppMethod::SimpleSetter:
    case CppMethod::EnumSetter:
        scratch << indent << "    result = pFeature->SetValue (value);" << Qt::endl;
        break;
    case CppMethod::EnumGetter:
        scratch << indent << "    KltInt64_t nValue;" << Qt::endl;
        scratch << indent << "    result = pFeature->GetValue (nValue);" << Qt::endl;
        scratch << indent << "    value = (" << enumType << ") nValue;" << Qt::endl;
        break;
    case CppMethod::Command:
        scratch << indent << "    result = pFeature->RunCommand ();" << Qt::endl;
        break;
    case CppMethod::Accessor:
        break;
    }
}

void WriteValueMethod(
    QTextStream& scratch, const QString& indent, const CppMethod& method, const CppFeatureNames& names)
{
    scratch << indent << "    KltErrorType result;" << Qt::endl;
    scratch << indent << "    OPX::KltAPI::FeaturePtr pFeature;" << Qt::endl;
    scratch << indent << "    result = " << names.accessor << " (pFeature);" << Qt::endl;
    scratch << indent << "    if (result != KltErrorSuccess)" << Qt::endl;
    scratch << indent << "        return result;" << Qt::endl;
    WriteWork(scratch, indent, method, names.enumType);
    scratch << indent << "    return result;" << Qt::endl;
}

void WriteAccessor(QTextStream& scratch, const QString& indent, const CppFeatureNames& names)
{
    scratch << indent << "    if (" << names.member << ".get() == NULL)" << Qt::endl;
    scratch << indent << "    {" << Qt::endl;
    scratch << indent << "        KltErrorType result;" << Qt::endl;
    // The identifier, not the SDK's name: for nearly all features they are the same.
    scratch << indent << "        result = GetFeatureByName (\"" << names.identifier << "\", " << names.member << ");"
            << Qt::endl;
    scratch << indent << "        if (result != KltErrorSuccess)" << Qt::endl;
    scratch << indent << "        {" << Qt::endl;
    scratch << indent << "            " << names.member << ".reset();" << Qt::endl;
    scratch << indent << "            return result;" << Qt::endl;
    scratch << indent << "        }" << Qt::endl;
    scratch << indent << "    }" << Qt::endl;
    scratch << indent << "    feature = " << names.member << ';' << Qt::endl;
    scratch << indent << "    return KltErrorSuccess;" << Qt::endl;
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
    scratch << indent << "KltErrorType " << Options().className << "::" << method.name << method.arguments << Qt::endl;
    scratch << indent << '{' << Qt::endl;
    if (method.kind == CppMethod::Accessor)
        WriteAccessor(scratch, indent, names);
    else
        WriteValueMethod(scratch, indent, method, names);
    scratch << indent << '}' << Qt::endl;
}
