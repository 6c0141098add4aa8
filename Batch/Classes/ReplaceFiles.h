#ifndef REPLACEFILES_H
#define REPLACEFILES_H

#include <QByteArray>

#include <string>
#include <vector>

/// A file as it is to be.
struct FileContent
{
    std::string path; ///< In bytes, as the system has it.
    QByteArray bytes;

    /// Whether the file is like this already.
    bool IsThere() const;

    /// What the file holds now; nothing if it is not there. Throws CommandError if it is, but cannot be read.
    QByteArray Present() const;
};

/// Makes all files what they are to be, one after the other. One that is like this already is left alone, so that
/// nothing is built again. If anything fails, all are as before, and CommandError is thrown. Existing files keep their
/// permissions, links stay links; signals that end the program wait meanwhile.
void ReplaceFiles(const std::vector<FileContent>& files);

#endif
