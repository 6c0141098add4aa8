#ifndef OUTPUTFILES_H
#define OUTPUTFILES_H

#include <QByteArray>

#include <string>
#include <vector>

/// A file as it should be.
struct FileContent
{
    std::string path; ///< In the system's bytes.
    QByteArray bytes;

    /// Whether the file is already like this.
    bool IsThere() const;

    /// What the file holds now; nothing if it is not there. Throws CommandError if it is, but cannot be read.
    QByteArray Present() const;
};

/// Whether it is a name of the standard output, such as /dev/stdout.
bool IsStandardOutput(const std::string& path);

/// Makes all files what they should be, one after the other. A file that is right already is left alone, so that
/// nothing is built again. If anything fails, all are as before, and CommandError is thrown. Existing files keep their
/// permissions, links stay links; signals that end the program wait meanwhile. What is for the standard output comes
/// last.
void ReplaceFiles(const std::vector<FileContent>& files);

#endif
