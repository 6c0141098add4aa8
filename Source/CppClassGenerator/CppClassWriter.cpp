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
