#include "FilePair.h"

#include "ExitCodes.h"

#include <QByteArray>
#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace
{

void Move(const QString& from, const QString& to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        throw CommandError(
            ExitFile, "'" + to.toStdString() + "' cannot be written: " + std::strerror(errno) + ". Check the folder.");
}

QString At(const QString& folder, const QString& name)
{
    return folder + QLatin1Char('/') + name;
}

} // namespace

bool HaveSameContent(const QString& one, const QString& other)
{
    QFile first(one);
    QFile second(other);
    return first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly) && first.size() == second.size() &&
           first.readAll() == second.readAll();
}

void ReplacePair(const QString& fresh, const QString& folder, const QString& header, const QString& source)
{
    const bool headerIsNew = !HaveSameContent(At(fresh, header), At(folder, header));
    const bool sourceIsNew = !HaveSameContent(At(fresh, source), At(folder, source));
    const QString old = At(fresh, QLatin1String("old"));
    const bool headerExists = QFile::exists(At(folder, header));
    if (headerIsNew)
    {
        // A second name for the old header, in case the source cannot be replaced.
        if (headerExists && sourceIsNew)
            static_cast<void>(
                link(QFile::encodeName(At(folder, header)).constData(), QFile::encodeName(old).constData()) == 0);
        Move(At(fresh, header), At(folder, header));
    }
    if (!sourceIsNew)
        return;
    try
    {
        Move(At(fresh, source), At(folder, source));
    }
    catch (const CommandError&)
    {
        if (headerIsNew && QFile::exists(old))
            Move(old, At(folder, header));
        else if (headerIsNew && !headerExists)
            QFile::remove(At(folder, header));
        throw;
    }
}
