#ifndef FILEPAIR_H
#define FILEPAIR_H

#include <QByteArray>

#include <string>

/// A file as it is to be.
struct FileContent
{
    std::string path;
    QByteArray bytes;

    /// Whether the file is like this already.
    bool IsThere() const;

    /// What the file holds now; nothing if it cannot be read.
    QByteArray Present() const;
};

/// Makes both files what they are to be. One that is so already is left alone, so that nothing is built again. If
/// anything fails, both are as before, and CommandError is thrown. Existing files keep their permissions, links stay
/// links; signals that end the program wait meanwhile.
void ReplacePair(const FileContent& header, const FileContent& source);

#endif
