#ifndef TESTDATA_H
#define TESTDATA_H

#include "ClassGeneratorBase.h"
#include "FeatureInfos.h"
#include "ScriptedSdk.h"

#include <QSignalSpy>
#include <QStringList>
#include <QVariant>

/// Short ways to describe cameras, and to see what was said.
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

/// Collects the messages of a generator.
class Messages
{
public:
    explicit Messages(ClassGeneratorBase& generator) : m_spy(&generator, SIGNAL(LogMessage(QString))) {}

    /// What was said since the last call.
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
