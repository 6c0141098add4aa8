#ifndef CPPFEATURE_H
#define CPPFEATURE_H

#include <KoltaCPP/KoltaTypes.h>
#include <QList>
#include <QString>

/// The names that one feature gets in the generated class.
struct CppFeatureNames
{
    QString identifier; ///< The feature's own name; a command's method.
    QString getter;
    QString setter;
    QString accessor;
    QString enumType;
    QString member; ///< The cached handle.
};

/// One method of the generated class.
struct CppMethod
{
    enum Kind
    {
        SimpleGetter,
        EnumGetter,
        Setter,
        Command,
        Accessor ///< Hands out the feature's handle.
    };

    Kind kind;
    QString name;
    QString arguments; ///< In parentheses, with the blank before them.
};

/// What the generator knows of one feature when it writes its methods.
struct CppFeature
{
    CppFeatureNames names;
    KltFeatureDataType dataType;
    bool writable;
    bool isHandleOnly; ///< It has no methods but the one for its handle.

    /// All methods of the feature, in the order in which they are written; empty for a data type that has no C++
    /// counterpart.
    QList<CppMethod> Methods() const;

private:
    QList<CppMethod> ValueMethods() const;
};

#endif
