#include "PathColor.h"

#include <QFile>
#include <QLineEdit>
#include <QString>

void ColorByExistence(QLineEdit* lineEdit, const QString& path)
{
    lineEdit->setStyleSheet(QLatin1String(QFile::exists(path) ? "QLineEdit { background-color: rgb(100,255,100);}"
                                                              : "QLineEdit { background-color: rgb(255,100,100);}"));
}
