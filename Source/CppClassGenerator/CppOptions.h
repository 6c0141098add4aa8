#ifndef CPPOPTIONS_H
#define CPPOPTIONS_H

#include <QCoreApplication>
#include <QSet>
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

    /// Features, by the names that the SDK has for them, of which the class hands out the handle and nothing else. None
    /// in the window.
    QSet<QString> handlesOnly = QSet<QString>();

    /// Names the class, and both files after it.
    void SetClassName(const QString& name);

    /// Whether class and files have names, and something exists at the paths of both templates.
    bool IsValid() const { return Missing().isEmpty(); }

    /// The first of that which is missing, as a sentence for the user; empty if nothing is.
    QString Missing() const;

    Q_DECLARE_TR_FUNCTIONS(CppClassGenerator)
};

#endif
