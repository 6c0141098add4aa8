#ifndef QTCOMPAT_H
#define QTCOMPAT_H

/// \file
/// The differences between the versions of Qt, so that no other file has to know them.

#include <QTextStream>
#include <QtGlobal>

#if QT_VERSION < QT_VERSION_CHECK(5, 14, 0)
namespace Qt
{
using ::endl;
}
#endif

/// Makes \a stream write UTF-8, whatever the locale. Since Qt 6 every stream does.
inline void WriteUtf8(QTextStream& stream)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    stream.setCodec("UTF-8");
#else
    Q_UNUSED(stream);
#endif
}

#endif
