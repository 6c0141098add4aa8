#include "CppFeature.h"

#include "CppClassWriter.h"

namespace
{

CppMethod Method(CppMethod::Kind kind, const QString& name, const QString& type)
{
    return {kind, name, QLatin1String(" (") + type + QLatin1String(" value)")};
}

} // namespace

QList<CppMethod> CppFeature::Methods() const
{
    QList<CppMethod> methods;
    if (!isHandleOnly)
        methods = ValueMethods();
    if (isHandleOnly || !methods.isEmpty())
        methods.append({CppMethod::Accessor, names.accessor, QLatin1String(" (OPX::KltAPI::FeaturePtr & feature)")});
    return methods;
}

QList<CppMethod> CppFeature::ValueMethods() const
{
    QList<CppMethod> methods;
    const auto type = CppClassWriter::SimpleFeatureTypeMap.find(dataType);
    if (dataType == KltFeatureDataEnum)
    {
        methods.append(Method(CppMethod::EnumGetter, names.getter, names.enumType + QLatin1String(" &")));
        if (writable)
            methods.append(Method(CppMethod::Setter, names.setter, names.enumType));
    }
    else if (dataType == KltFeatureDataCommand)
        methods.append({CppMethod::Command, names.identifier, QLatin1String(" ()")});
    else if (type != CppClassWriter::SimpleFeatureTypeMap.end())
    {
        // Every feature can be asked for its value, also where the camera says that it cannot be read: the SDK's error
        // is the better answer than a missing method.
        methods.append(Method(CppMethod::SimpleGetter, names.getter, QLatin1String(type->second.getterType)));
        if (writable)
            methods.append(Method(CppMethod::Setter, names.setter, QLatin1String(type->second.setterType)));
    }
    return methods;
}
