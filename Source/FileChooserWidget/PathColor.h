#ifndef PATHCOLOR_H
#define PATHCOLOR_H

#include <QFile>
#include <QLineEdit>

/// Colours \a lineEdit green if something, a file or a folder, exists at \a path, and red if not.
inline void ColorByExistence(QLineEdit* lineEdit, const QString& path)
{
    // Both colours are light: the text has to be dark, also on a dark desktop.
    QPalette palette;
    palette.setColor(QPalette::Text, Qt::black);
    lineEdit->setPalette(palette);
    lineEdit->setStyleSheet(QLatin1String(QFile::exists(path) ? "QLineEdit { background-color: rgb(100,255,100);}"
                                                              : "QLineEdit { background-color: rgb(255,100,100);}"));
}

#endif
