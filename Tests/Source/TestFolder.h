#ifndef TESTFOLDER_H
#define TESTFOLDER_H

#include <QFile>
#include <QTemporaryDir>

/// A folder for one test, and the files in it.
class TestFolder : public QTemporaryDir
{
public:
    /// \return the path of the file, or none if it cannot be written
    QString Write(const QString& name, const QByteArray& content) const
    {
        QFile file(filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName() : QString();
    }

    QByteArray Content(const QString& name) const
    {
        QFile file(filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "no " + name.toUtf8();
    }
};

#endif
