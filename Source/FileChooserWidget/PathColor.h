#ifndef PATHCOLOR_H
#define PATHCOLOR_H

class QLineEdit;
class QString;

/// Colours \a lineEdit green if something, a file or a folder, exists at \a path, and red if not.
void ColorByExistence(QLineEdit* lineEdit, const QString& path);

#endif
