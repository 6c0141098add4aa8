#ifndef STORED_H
#define STORED_H

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>

/// Compares a text with the one that is stored under this name. What the test wrote is in the build folder, from where
/// Tests/refresh takes it.
/// \return the difference, empty if there is none
inline QByteArray DifferenceFromStored(const QString& name, const QString& text)
{
    QDir().mkpath(QLatin1String(WRITTEN));
    QFile file(QLatin1String(WRITTEN "/") + name);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        return "cannot be written";
    file.close();
    QProcess diff;
    diff.setProcessChannelMode(QProcess::MergedChannels);
    diff.start(QStringLiteral("diff"), {QStringLiteral("-u"), QLatin1String(EXPECTED "/") + name, file.fileName()});
    diff.waitForFinished();
    return diff.exitStatus() == QProcess::NormalExit && diff.exitCode() == 0 ? QByteArray() : diff.readAll();
}

#endif
