// From the templates to the two files.

#include "CppClassGenerator.h"

#include "FileChooserWidget.h"
#include "QtCompat.h"

#include <QDir>
#include <QFile>
#include <QTextStream>

void CppClassGenerator::Run(const char* destinationFolder, bool overwrite, const FeatureInfos& features)
{
    m_allWritten = true;
    const QString folder = tr(destinationFolder) + QDir::separator();
    ProcessFile("header", QDir::cleanPath(folder + m_ui.m_editHeaderFileName->text()), overwrite,
        m_headerTemplateFileChooser->m_lineEdit->text(), features);
    ProcessFile("source", QDir::cleanPath(folder + m_ui.m_editSourceFileName->text()), overwrite,
        m_sourceTemplateFileChooser->m_lineEdit->text(), features);
}

void CppClassGenerator::ProcessFile(const char* kind, const QString& outputPath, bool overwrite,
    const QString& templatePath, const FeatureInfos& features)
{
    const bool allWrittenBefore = m_allWritten;
    m_allWritten = false;
    const QString kindText = QLatin1String(kind);
    emit LogMessage(
        tr("Processing ") + kindText + QLatin1String(" template file '") + templatePath + QLatin1String("' ..."));
    QFile templateFile(templatePath);
    if (!templateFile.open(QIODevice::ReadOnly | QIODevice::Text))
    {
        emit LogMessage(tr("Error '") + templateFile.errorString() + QLatin1String("' while reading ") + kindText +
                        QLatin1String(" template file!"));
        return;
    }

    emit LogMessage(tr("Creating ") + kindText + QLatin1String(" file '") + outputPath + QLatin1String("' ..."));
    QFile outputFile(outputPath);
    if (outputFile.exists() && !overwrite)
    {
        emit LogMessage(tr("Error: ") + kindText + QLatin1String(" file '") + outputPath +
                        QLatin1String("' already exists and should not be overwritten!"));
        return;
    }
    if (!outputFile.open(QIODevice::WriteOnly | QIODevice::Text))
    {
        emit LogMessage(tr("Error '") + outputFile.errorString() + QLatin1String("' while creating ") + kindText +
                        QLatin1String(" file!"));
        return;
    }
    QTextStream output(&outputFile);
    emit LogMessage(tr("... done."));

    QTextStream input(&templateFile);
    for (QString line = input.readLine(); !line.isNull(); line = input.readLine())
        Process(output, line, features);
    output.flush();
    m_allWritten = allWrittenBefore && output.status() == QTextStream::Ok;
    emit LogMessage(tr("... done."));
}

bool CppClassGenerator::AllWritten() const
{
    return m_allWritten;
}

void CppClassGenerator::Process(QTextStream& output, QString line, const FeatureInfos& features)
{
    const QString original = line;
    line = SubstituteNames(line);
    // A line with a name in it never holds a block as well: what looks like one is text.
    if (line != original || !ProcessBlock(output, line, features))
        output << line << Qt::endl;
}

QString CppClassGenerator::SubstituteNames(QString line) const
{
    const QString className = m_ui.m_editClassName->text();
    line.replace(QLatin1String("### HEADER_FILE_MACRO_NAME ###"), (className + QLatin1String("_H")).toUpper());
    line.replace(QLatin1String("### HEADER_FILE_NAME ###"), m_ui.m_editHeaderFileName->text());
    line.replace(QLatin1String("### CLASS_NAME ###"), className);
    return line;
}

bool CppClassGenerator::ProcessBlock(QTextStream& output, const QString& line, const FeatureInfos& features)
{
    struct Block
    {
        const char* placeholder;
        int (CppClassGenerator::*write)(QTextStream&, int, const FeatureInfos&);
        const char* written;
    };
    // The first of them that a line holds counts, wherever it stands on the line.
    static const Block Blocks[] = {
        {"### METHOD_DECLARATIONS ###", &CppClassGenerator::WriteMethodDeclarations, " method declarations written."},
        {"### METHOD_IMPLEMENTATIONS ###", &CppClassGenerator::WriteMethodImplementations,
            " method implementations written."},
        {"### VARIABLE_DECLARATIONS ###", &CppClassGenerator::WriteVariableDeclarations,
            " variable declarations written."},
        {"### ENUM_DECLARATIONS ###", &CppClassGenerator::WriteEnumDeclarations, " enum declarations written."},
    };
    for (const Block& block : Blocks)
    {
        const int column = static_cast<int>(line.indexOf(QLatin1String(block.placeholder)));
        if (column < 0)
            continue;
        const int count = (this->*block.write)(output, column, features);
        emit LogMessage(tr("    ... ") + QString::number(count) + QLatin1String(block.written));
        return true;
    }
    return false;
}
