#include "Classes/TemplateCheck.h"

#include "CppClassWriter.h"
#include "Document/NearestWord.h"

#include <QRegularExpression>

#include <algorithm>
#include <cstdlib>

using namespace OPX::KltAPI;

namespace
{

std::string Quoted(const QString& text)
{
    return "'" + text.toStdString() + "'";
}

const QStringList& Names()
{
    static const QStringList names = CppClassWriter::NamePlaceholders();
    return names;
}

const QStringList& Blocks()
{
    static const QStringList blocks = CppClassWriter::BlockPlaceholders();
    return blocks;
}

/// The first of the placeholders that a line holds; null if it holds none.
QString FirstOf(const QStringList& placeholders, const QString& line)
{
    const auto first = std::find_if(placeholders.begin(), placeholders.end(),
        [&line](const QString& placeholder) { return line.contains(placeholder); });
    return first == placeholders.end() ? QString() : *first;
}

/// What stands between the hashes of all placeholders.
const std::vector<std::string>& Words()
{
    static const std::vector<std::string> words = []
    {
        std::vector<std::string> all;
        for (const QString& placeholder : Names() + Blocks())
            all.push_back(placeholder.mid(4, placeholder.size() - 8).toStdString());
        return all;
    }();
    return words;
}

std::string NotOne(const QString& text, const std::string& nearest)
{
    return Quoted(text) + " is not a placeholder and is left as it is." +
           (nearest.empty() ? "" : " Did you mean '### " + nearest + " ###'?");
}

/// Why a text between hashes is taken for a placeholder, as a sentence; empty if it is not.
std::string Misspelled(const QString& text, QString word)
{
    static const QRegularExpression shape(QStringLiteral("^### [A-Z0-9]+(_[A-Z0-9]+)+ ###$"));
    static const QRegularExpression gaps(QStringLiteral("[ \\t-]+"));
    word = word.toUpper().replace(gaps, QStringLiteral("_"));
    const std::string nearest = NearestWord(word.toStdString(), Words());
    // Headings are often a part of such a word.
    const bool near =
        !nearest.empty() && std::abs(static_cast<int>(nearest.size()) - static_cast<int>(word.size())) <= 3;
    return near || shape.match(text).hasMatch() ? NotOne(text, nearest) : std::string();
}

/// The same for a text with hashes on one side. Headings and comments have them, too, so it has to be a word as no
/// other one is.
std::string HalfWritten(const QString& text, const QString& word)
{
    const std::string nearest = NearestWord(word.toStdString(), Words(), 2);
    return nearest.empty() ? std::string() : NotOne(text, nearest);
}

/// One line of a template.
class Line
{
public:
    Line(int number, const QString& text, std::vector<Mistake>& mistakes)
        : m_number(number),
          m_text(text),
          m_mistakes(mistakes)
    {
    }

    void Check()
    {
        const QString name = FirstOf(Names(), m_text);
        const QString block = FirstOf(Blocks(), m_text);
        if (!block.isNull() && name.isNull())
            return CheckBeside(block);
        if (!block.isNull())
            Report(Quoted(block) + " stays as it is, since " + Quoted(name) +
                   " stands in the same line. Give it a line of its own.");
        CheckSpelling();
    }

private:
    void CheckBeside(const QString& block)
    {
        QStringList beside;
        for (const QString& part : m_text.split(block))
            beside.append(part.trimmed());
        beside.removeAll(QString());
        if (!beside.isEmpty())
            Report(Quoted(beside.join(QLatin1String(" ... "))) + " is lost: " + Quoted(block) +
                   " replaces the whole line.");
    }

    void CheckSpelling()
    {
        QString rest = m_text;
        for (const QString& placeholder : Names() + Blocks())
            rest.replace(placeholder, QLatin1String("\n"));
        // Most lines end here, and the program before it needs a regular expression.
        if (!rest.contains(QLatin1String("###")))
            return;
        static const QRegularExpression hashed(
            QStringLiteral("#{2,}[ \\t_.:;,-]*([A-Za-z][A-Za-z0-9_ \\t-]*?)[ \\t_.:;,-]*#{2,}"));
        for (auto found = hashed.globalMatch(rest); found.hasNext();)
        {
            const QRegularExpressionMatch match = found.next();
            // Two and two paste tokens together.
            const bool isMeant = match.captured().contains(QLatin1String("###"));
            Report(isMeant ? Misspelled(match.captured(), match.captured(1)) : std::string());
        }
        CheckHalves(rest.remove(hashed));
    }

    void CheckHalves(const QString& rest)
    {
        static const QRegularExpression half(QStringLiteral("#{3,}[ \\t]*([A-Z0-9]+(?:_[A-Z0-9]+)+)(?:[ \\t]*#)?|"
                                                            "(?:#[ \\t]*)?\\b([A-Z0-9]+(?:_[A-Z0-9]+)+)[ \\t]*#{3,}"));
        for (auto found = half.globalMatch(rest); found.hasNext();)
        {
            const QRegularExpressionMatch match = found.next();
            Report(HalfWritten(match.captured(), match.captured(1) + match.captured(2)));
        }
    }

    void Report(const std::string& text)
    {
        if (!text.empty())
            m_mistakes.push_back({m_number, text});
    }

    const int m_number;
    const QString& m_text;
    std::vector<Mistake>& m_mistakes;
};

} // namespace

std::vector<Mistake> CheckTemplateLine(int number, const QString& line)
{
    std::vector<Mistake> mistakes;
    if (line.contains(QLatin1String("###")))
        Line(number, line, mistakes).Check();
    return mistakes;
}
