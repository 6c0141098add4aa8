#ifndef CPPNAMES_H
#define CPPNAMES_H

#include "CppFeature.h"
#include "CppOptions.h"

#include <KoltaCPP/Feature.h>

#include <functional>

/// The names in a generated class. Nothing else in the generator makes one.
class CppNames
{
public:
    /// Makes an identifier of a text: Clean, or what also tells that it had to.
    typedef std::function<QString(const QString&)> Cleaner;

    /// \a text with everything that cannot be part of a C++ identifier replaced. Letters and digits of every script are
    /// kept.
    static QString Clean(const QString& text);

    CppNames(CppOptions options, Cleaner clean);

    /// All that is looked at in a feature, with its names.
    CppFeature Describe(const OPX::KltAPI::Feature& feature) const;

    /// The handle of the feature with this identifier.
    QString Member(const QString& identifier) const;

    /// The type of the enumeration feature with this identifier or SDK name.
    QString EnumType(const QString& name) const;

    /// The enumerator for one entry of an enumeration feature, both by their SDK names.
    QString EnumEntry(const QString& feature, const QString& entry) const;

private:
    CppFeatureNames FeatureNames(const QString& name) const;

    const CppOptions m_options;
    const Cleaner m_clean;
};

#endif
