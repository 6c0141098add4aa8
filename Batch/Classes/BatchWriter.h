#ifndef BATCHWRITER_H
#define BATCHWRITER_H

#include "Classes/ClassComments.h"
#include "CppClassWriter.h"

#include <QByteArray>

/// Writes classes into memory. Throws CommandError.
class BatchWriter : public CppClassWriter
{
public:
    /// \param aloud whether messages go to the standard error output
    explicit BatchWriter(bool aloud) : m_aloud(aloud) {}

    CppOptions Options() const override { return m_options; }
    void SetOptions(const CppOptions& options) { m_options = options; }
    void SetComments(const ClassComments& comments) { m_comments = comments; }
    void Report(const QString& message) override;

    /// Also reports what is wrong with the line.
    void Process(QTextStream& output, QString line, const FeatureInfos& features) override;

    /// What becomes of a template.
    /// \param kind "header" or "source", for the messages
    /// \param outputPath where the text will be put, for the messages
    QByteArray Expand(
        const char* kind, const QString& templatePath, const QString& outputPath, const FeatureInfos& features);

protected:
    QStringList LinesBefore(const QString& declared, int column) const override;

private:
    CppOptions m_options;
    ClassComments m_comments;
    const bool m_aloud;
    QString m_templatePath; ///< The template that is being expanded,
    int m_line = 0;         ///< and how many of its lines have been.
};

#endif
