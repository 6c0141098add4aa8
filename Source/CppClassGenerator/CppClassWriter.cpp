#include "CppClassWriter.h"

std::map<KltFeatureDataType, CppClassWriter::FeatureTypeInfo> CppClassWriter::SimpleFeatureTypeMap;

CppClassWriter::CppClassWriter()
{
    if (!SimpleFeatureTypeMap.empty())
        return;
    SimpleFeatureTypeMap[KltFeatureDataInt] = {"KltInt64_t &", "KltInt64_t"};
    SimpleFeatureTypeMap[KltFeatureDataFloat] = {"double &", "double"};
    SimpleFeatureTypeMap[KltFeatureDataString] = {"std::string &", "const char *"};
    SimpleFeatureTypeMap[KltFeatureDataBool] = {"bool &", "bool"};
    SimpleFeatureTypeMap[KltFeatureDataRaw] = {"OPX::KltAPI::UcharVector &", "const OPX::KltAPI::UcharVector &"};
}

QString CppClassWriter::GetValidIdentifierName(const QString& name)
{
    QString result = CppNames::Clean(name);
    if (result != name)
        Report(tr("Info: '") + name + QLatin1String("' is not a valid C++ identifier -> changed to '") + result +
               QLatin1String("'!"));
    return result;
}

QString CppClassWriter::ClassNameFor(const char* cameraName)
{
    return GetValidIdentifierName(tr(cameraName) + QLatin1String("Camera"));
}

CppNames CppClassWriter::Names()
{
    return CppNames(Options(), [this](const QString& text) { return GetValidIdentifierName(text); });
}
