// From the lines of a template to text, and the messages about it.

#include "CppClassWriter.h"

#include "QtCompat.h"

#include <QTextStream>

namespace
{

const char* const HeaderFileMacroName = "### HEADER_FILE_MACRO_NAME ###";
const char* const HeaderFileName = "### HEADER_FILE_NAME ###";
const char* const ClassName = "### CLASS_NAME ###";

struct Block
{
    const char* placeholder;
    int (CppClassWriter::*write)(QTextStream&, int, const FeatureInfos&);
    const char* written;
};

// The first of them that a line holds counts, wherever it stands on the line.
const Block Blocks[] = {
    {"### METHOD_DECLARATIONS ###", &CppClassWriter::WriteMethodDeclarations, " method declarations written."},
    {"### METHOD_IMPLEMENTATIONS ###", &CppClassWriter::WriteMethodImplementations, " method implementations written."},
    {"### VARIABLE_DECLARATIONS ###", &CppClassWriter::WriteVariableDeclarations, " variable declarations written."},
    {"### ENUM_DECLARATIONS ###", &CppClassWriter::WriteEnumDeclarations, " enum declarations written."},
};

} // namespace

QStringList CppClassWriter::NamePlaceholders()
{
    return QStringList() << QLatin1String(HeaderFileMacroName) << QLatin1String(HeaderFileName)
                         << QLatin1String(ClassName);
}

QStringList CppClassWriter::BlockPlaceholders()
{
    QStringList placeholders;
    for (const Block& block : Blocks)
        placeholders << QLatin1String(block.placeholder);
    return placeholders;
}

void CppClassWriter::ProcessTemplate(QTextStream& output, QTextStream& input, const FeatureInfos& features)
{
    for (QString line = input.readLine(); !line.isNull(); line = input.readLine())
        Process(output, line, features);
}

void CppClassWriter::Process(QTextStream& output, QString line, const FeatureInfos& features)
{
    const QString original = line;
    line = SubstituteNames(line);
    // A line with a name in it never holds a block as well: what looks like one is text.
    if (line != original || !ProcessBlock(output, line, features))
        output << line << Qt::endl;
}

QString CppClassWriter::SubstituteNames(QString line) const
{
    const CppOptions options = Options();
    line.replace(QLatin1String(HeaderFileMacroName), (options.className + QLatin1String("_H")).toUpper());
    line.replace(QLatin1String(HeaderFileName), options.headerFileName);
    line.replace(QLatin1String(ClassName), options.className);
    return line;
}

bool CppClassWriter::ProcessBlock(QTextStream& output, const QString& line, const FeatureInfos& features)
{
    for (const Block& block : Blocks)
    {
        const int column = static_cast<int>(line.indexOf(QLatin1String(block.placeholder)));
        if (column < 0)
            continue;
        const int count = (this->*block.write)(output, column, features);
        Report(tr("    ... ") + QString::number(count) + QLatin1String(block.written));
        return true;
    }
    return false;
}

void CppClassWriter::ReportProcessing(const char* kind, const QString& templatePath)
{
    Report(tr("Processing ") + QLatin1String(kind) + QLatin1String(" template file '") + templatePath +
           QLatin1String("' ..."));
}

void CppClassWriter::ReportCreating(const char* kind, const QString& outputPath)
{
    Report(tr("Creating ") + QLatin1String(kind) + QLatin1String(" file '") + outputPath + QLatin1String("' ..."));
}

void CppClassWriter::ReportDone()
{
    Report(tr("... done."));
}
