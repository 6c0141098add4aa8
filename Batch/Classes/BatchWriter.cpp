#include "Classes/BatchWriter.h"

#include "Base/ExitCodes.h"
#include "Classes/TemplateCheck.h"
#include "QtCompat.h"

#include <QFile>
#include <QTextStream>

#include <cstdio>

void BatchWriter::Report(const QString& message)
{
    if (m_aloud)
        std::fprintf(stderr, "%s\n", message.toUtf8().constData());
}

void BatchWriter::Process(QTextStream& output, QString line, const FeatureInfos& features)
{
    for (const OPX::KltAPI::Mistake& mistake : CheckTemplateLine(++m_line, line))
        std::fprintf(stderr, "%s\n", mistake.In(m_templatePath.toStdString()).c_str());
    CppClassWriter::Process(output, line, features);
}

QByteArray BatchWriter::Expand(
    const char* kind, const QString& templatePath, const QString& outputPath, const FeatureInfos& features)
{
    m_templatePath = templatePath;
    m_line = 0;
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
