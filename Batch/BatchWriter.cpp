#include "BatchWriter.h"

#include "ExitCodes.h"
#include "QtCompat.h"

#include <QFile>
#include <QTextStream>

#include <cstdio>
#include <utility>

BatchWriter::BatchWriter(CppOptions options, bool aloud) : m_options(std::move(options)), m_aloud(aloud)
{
}

void BatchWriter::Report(const QString& message)
{
    if (m_aloud)
        std::fprintf(stderr, "%s\n", message.toUtf8().constData());
}

QByteArray BatchWriter::Expand(
    const char* kind, const QString& templatePath, const QString& outputPath, const FeatureInfos& features)
{
    ReportProcessing(kind, templatePath);
    QFile file(templatePath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw CommandError(ExitFile, std::string("The ") + kind + " template '" + templatePath.toStdString() +
                                         "' cannot be read: " + file.errorString().toStdString() + ".");
    ReportCreating(kind, outputPath);
    QByteArray text;
    QTextStream output(&text, QIODevice::WriteOnly);
    UseUtf8(output);
    ReportDone();
    QTextStream input(&file);
    UseUtf8(input);
    ProcessTemplate(output, input, features);
    output.flush();
    ReportDone();
    return text;
}
