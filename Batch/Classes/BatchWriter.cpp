#include "Classes/BatchWriter.h"

#include "Base/ExitCodes.h"
#include "Base/Messages.h"
#include "Document/Mistake.h"
#include "Document/NearestWord.h"
#include "QtCompat.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextStream>

#include <algorithm>
#include <cstdio>

using namespace OPX::KltAPI;

namespace
{

/// The first of the placeholders that a line holds; null if it holds none.
QString FirstOf(const QStringList& placeholders, const QString& line)
{
    const auto first = std::find_if(placeholders.begin(), placeholders.end(),
        [&line](const QString& placeholder) { return line.contains(placeholder); });
    return first == placeholders.end() ? QString() : *first;
}

/// What stands beside the block that replaces the whole line, as a sentence if anything does.
std::vector<std::string> LostBeside(const QString& block, const QString& line)
{
    QStringList beside;
    for (const QString& part : line.split(block))
        beside.append(part.trimmed());
    beside.removeAll(QString());
    if (beside.isEmpty())
        return {};
    return {Quoted(beside.join(QLatin1String(" ... "))) + " is lost: " + Quoted(block) + " replaces the whole line."};
}

/// Why \a text, with \a word between or beside its hashes, is taken for a placeholder, as a sentence; empty if it is
/// not. Headings and comments have hashes, too, so it has to be nearly one, or to have the shape of one.
std::string Misspelled(const QString& text, const QString& word, int mostLettersWrong)
{
    static const std::vector<std::string> placeholders = []
    {
        std::vector<std::string> all;
        for (const QString& placeholder : CppClassWriter::NamePlaceholders() + CppClassWriter::BlockPlaceholders())
            all.push_back(placeholder.mid(4, placeholder.size() - 8).toStdString());
        return all;
    }();
    static const std::vector<std::string_view> words(placeholders.begin(), placeholders.end());
    const QString name = word.toUpper().replace(QLatin1Char('-'), QLatin1Char(' ')).simplified().replace(' ', '_');
    const bool hasShape = name.contains('_') && text == "### " + name + " ###";
    const std::string_view nearest = NearestWord(name.toStdString(), words, hasShape ? 100 : mostLettersWrong);
    if (nearest.empty() && !hasShape)
        return std::string();
    return Quoted(text) + " is not a placeholder and is left as it is." +
           (nearest.empty() ? "" : " Did you mean '### " + std::string(nearest) + " ###'?");
}

/// What is wrong with all that is nearly a placeholder in \a rest, which holds no real one.
std::vector<std::string> MisspelledIn(const QString& rest)
{
    // Words between hashes; or one that is written as no other text is, with hashes on one side or on none.
    static const QRegularExpression nearly(
        QStringLiteral("##+[ \\t_.:;,-]*([A-Za-z][A-Za-z0-9_ \\t-]*?)[ \\t_.:;,-]*##+|"
                       "#*[ \\t]*\\b([A-Z0-9]+(?:_[A-Z0-9]+)+)[ \\t]*(?=(#*))"));
    std::vector<std::string> mistakes;
    for (auto found = nearly.globalMatch(rest); found.hasNext();)
    {
        const QRegularExpressionMatch match = found.next();
        const QString text = (match.captured() + match.captured(3)).trimmed();
        const bool isBetween = match.capturedLength(1) > 0;
        // Two and two paste tokens together.
        const std::string mistake =
            text.contains("###") ? Misspelled(text, match.captured(1) + match.captured(2), isBetween ? 4 : 2) : "";
        if (!mistake.empty())
            mistakes.push_back(mistake);
    }
    return mistakes;
}

/// What the author of a template takes for a placeholder and the writer does not, and text that is lost; a sentence for
/// each.
std::vector<std::string> MistakesIn(QString line)
{
    const QString name = FirstOf(CppClassWriter::NamePlaceholders(), line);
    const QString block = FirstOf(CppClassWriter::BlockPlaceholders(), line);
    if (!block.isNull() && name.isNull())
        return LostBeside(block, line);
    for (const QString& placeholder : CppClassWriter::NamePlaceholders() + CppClassWriter::BlockPlaceholders())
        line.replace(placeholder, QLatin1String("\n"));
    // Most lines end here, and the program before it needs a regular expression.
    std::vector<std::string> mistakes;
    if (line.contains(QLatin1String("###")))
        mistakes = MisspelledIn(line);
    if (!block.isNull())
        mistakes.insert(mistakes.begin(), Quoted(block) + " stays as it is, since " + Quoted(name) +
                                              " stands in the same line. Give it a line of its own.");
    return mistakes;
}

} // namespace

void BatchWriter::Report(const QString& message)
{
    if (m_aloud)
        std::fprintf(stderr, "%s\n", message.toUtf8().constData());
}

void BatchWriter::Process(QTextStream& output, QString line, const FeatureInfos& features)
{
    ++m_line;
    for (const std::string& mistake : MistakesIn(line))
        std::fprintf(stderr, "%s\n", InFile(m_templatePath.toStdString(), {m_line, 0}, "warning", mistake).c_str());
    CppClassWriter::Process(output, line, features);
}

QStringList BatchWriter::LinesBefore(const QString& declared, int column) const
{
    return CommentLines(m_comments.value(declared), column);
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
