#ifndef FILEPAIR_H
#define FILEPAIR_H

#include <QString>

/// Replaces the header and the source in \a folder by those in \a fresh, which is on the same file system. Files that
/// are the same already are left alone, so that nothing is built again. If anything fails, both are as before, and
/// CommandError is thrown.
void ReplacePair(const QString& fresh, const QString& folder, const QString& header, const QString& source);

/// Whether both paths name files with the same content.
bool HaveSameContent(const QString& one, const QString& other);

#endif
