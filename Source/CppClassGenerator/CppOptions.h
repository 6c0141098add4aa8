#ifndef CPPOPTIONS_H
#define CPPOPTIONS_H

#include <QString>

/// The options of the C++ generator, as values.
struct CppOptions
{
    /// What is offered at first. The names wait for a camera; the templates lie beside the executable, so the
    /// application object has to exist.
    static CppOptions Defaults();

    QString className;
    QString headerFileName;
    QString sourceFileName;
    QString getterPrefix;
    QString getterSuffix;
    QString setterPrefix;
    QString setterSuffix;
    QString headerTemplate; ///< Path of a file.
    QString sourceTemplate; ///< Path of a file.

    /// Names the class, and both files after it.
    void SetClassName(const QString& name);

    /// Whether class and files have names, and something exists at the paths of both templates.
    bool IsValid() const;
};

#endif
