#include "CppOptions.h"

#include <QDir>
#include <QFile>

namespace
{

QString DefaultTemplate(const char* name)
{
    return QCoreApplication::applicationDirPath() + QDir::separator() + QLatin1String("Templates") + QDir::separator() +
           QLatin1String(name);
}

} // namespace

CppOptions CppOptions::Defaults()
{
    CppOptions options;
    options.getterPrefix = QLatin1String("Get");
    options.setterPrefix = QLatin1String("Set");
    options.headerTemplate = DefaultTemplate("CppTemplate.h");
    options.sourceTemplate = DefaultTemplate("CppTemplate.cpp");
    return options;
}

void CppOptions::SetClassName(const QString& name)
{
    className = name;
    headerFileName = name + QLatin1String(".h");
    sourceFileName = name + QLatin1String(".cpp");
}

QString CppOptions::Missing() const
{
    if (className.isEmpty())
        return tr("Enter a class name.");
    if (headerFileName.isEmpty())
        return tr("Enter a header file name.");
    if (sourceFileName.isEmpty())
        return tr("Enter a source file name.");
    if (!QFile::exists(headerTemplate))
        return tr("The header template does not exist.");
    if (!QFile::exists(sourceTemplate))
        return tr("The source template does not exist.");
    return QString();
}
