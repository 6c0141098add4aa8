#ifndef TESTDATA_H
#define TESTDATA_H

#include "ClassGeneratorBase.h"
#include "CppClassWriter.h"
#include "FeatureInfos.h"
#include "ScriptedSdk.h"

#include <QSignalSpy>
#include <QStringList>
#include <QTextStream>
#include <QVariant>

/// Short ways to describe cameras, and to see the messages.
namespace TestData
{

const KltFeatureFlagsType ReadOnly = KltFeatureFlagsRead;
const KltFeatureFlagsType ReadWrite = KltFeatureFlagsRead | KltFeatureFlagsWrite;

inline ScriptedSdk::FeatureData MakeFeature(const std::string& name, KltFeatureDataType dataType,
    KltFeatureFlagsType flags = ReadWrite, const std::vector<ScriptedSdk::EntryData>& entries = {},
    const std::string& category = "/C")
{
    return {name, category, dataType, flags, entries};
}

inline ScriptedSdk::CameraData CameraWith(const std::vector<ScriptedSdk::FeatureData>& features)
{
    return {"Cam", "S1", features};
}

/// The catalogue of a camera with these features.
inline FeatureInfos Catalogue(const std::vector<ScriptedSdk::FeatureData>& features)
{
    FeatureInfos infos;
    infos.Create(ScriptedSdk::MakeCamera(CameraWith(features)));
    return infos;
}

/// A writer that keeps its options and its messages.
class Writer : public CppClassWriter
{
public:
    CppOptions Options() const override { return options; }
    void Report(const QString& message) override { said.append(message); }

    /// What becomes of a template; only the messages about it are kept.
    QString Expand(QString text, const FeatureInfos& features)
    {
        said.clear();
        QString written;
        QTextStream input(&text);
        QTextStream output(&written);
        ProcessTemplate(output, input, features);
        return written;
    }

    CppOptions options;
    QStringList said;
};

/// Collects the messages of a generator.
class Messages
{
public:
    explicit Messages(ClassGeneratorBase& generator) : m_spy(&generator, SIGNAL(LogMessage(QString))) {}

    /// The messages since the last call.
    QStringList Take()
    {
        QStringList messages;
        while (!m_spy.isEmpty())
            messages.append(m_spy.takeFirst().at(0).toString());
        return messages;
    }

private:
    QSignalSpy m_spy;
};

} // namespace TestData

#endif
