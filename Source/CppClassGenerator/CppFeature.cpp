#include "CppFeature.h"

#include "CppClassGenerator.h"

namespace
{

CppMethod Method(CppMethod::Kind kind, const QString& name, const QString& type)
{
    return {kind, name, QLatin1String(" (") + type + QLatin1String(" value)")};
}

} // namespace

QList<CppMethod> CppFeature::ValueMethods() const
{
    QList<CppMethod> methods;
    if (dataType == KltFeatureDataEnum)
    {
        methods.append(Method(CppMethod::EnumGetter, names.getter, names.enumType + QLatin1String(" &")));
        if (writable)
            methods.append(Method(CppMethod::EnumSetter, names.setter, names.enumType));
        return methods;
    }
    if (dataType == KltFeatureDataCommand)
    {
        methods.append({CppMethod::Command, names.identifier, QLatin1String(" ()")});
        return methods;
    }
    const auto type = CppClassGenerator::SimpleFeatureTypeMap.find(dataType);
    if (type == CppClassGenerator::SimpleFeatureTypeMap.end())
        return methods;
    // Every feature can be asked for its value, also where the camera says that it cannot be read: the SDK's error is
    // the better answer than a missing method.
    methods.append(Method(CppMethod::SimpleGetter, names.getter, QLatin1String(type->second.getterType)));
    if (writable)
        methods.append(Method(CppMethod::SimpleSetter, names.setter, QLatin1String(type->second.setterType)));
    return methods;
}
