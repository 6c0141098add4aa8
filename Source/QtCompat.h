#ifndef QTCOMPAT_H
#define QTCOMPAT_H

/// \file
/// The differences between the versions of Qt, so that no other file has to know them.

#include <QSize>
#include <QTextStream>
#include <QtGlobal>
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#endif
#ifdef QT_GUI_LIB
#if QT_VERSION < QT_VERSION_CHECK(5, 0, 0)
#include <QDesktopWidget>
#else
#include <QGuiApplication>
#include <QScreen>
#endif
#endif

#if QT_VERSION < QT_VERSION_CHECK(5, 14, 0)
namespace Qt
{
using ::endl;
}
#endif

/// Makes \a stream read and write UTF-8, whatever the locale. Since Qt 6 every stream does.
inline void UseUtf8(QTextStream& stream)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    stream.setCodec("UTF-8");
#else
    Q_UNUSED(stream);
#endif
}

/// Has the names of files in UTF-8, whatever the locale. Since Qt 6 they are.
inline void UseUtf8ForLocale()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
}

/// Whether Qt wants the characters of the locale to be UTF-8.
inline bool WantsUtf8Locale()
{
    return QT_VERSION >= QT_VERSION_CHECK(6, 0, 0);
}

/// Has `tr` take its texts, names and folders among them, as UTF-8. Since Qt 5 it does.
inline void UseUtf8ForTranslations()
{
#if QT_VERSION < QT_VERSION_CHECK(5, 0, 0)
    QTextCodec::setCodecForTr(QTextCodec::codecForName("UTF-8"));
#endif
}

#ifdef QT_GUI_LIB
/// How large a window can be on the screen where windows open.
inline QSize ScreenSize()
{
#if QT_VERSION < QT_VERSION_CHECK(5, 0, 0)
    return QDesktopWidget().availableGeometry().size();
#else
    return QGuiApplication::primaryScreen()->availableSize();
#endif
}
#endif

#endif
