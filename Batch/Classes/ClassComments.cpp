#include "Classes/ClassComments.h"

#include "CppClassWriter.h"
#include "Document/Texts.h"
#include "SdkReads.h"

#include <QRegularExpression>

#include <algorithm>
#include <filesystem>
#include <unordered_map>
#include <utility>

using namespace OPX::KltAPI;

namespace
{

/// \a text with a full stop, unless it ends like a sentence.
std::string Sentence(std::string text)
{
    const bool ends = text.empty() || std::string_view(".!?").find(text.back()) != std::string_view::npos;
    return ends ? text : text + ".";
}

/// "a", "a and b", "a, b and c"
std::string Listed(const std::vector<std::string>& texts)
{
    std::string list;
    for (std::size_t i = 0; i < texts.size(); ++i)
        list += (i == 0 ? "" : i + 1 == texts.size() ? " and " : ", ") + texts[i];
    return list;
}

/// The limits that one camera has for a feature.
class CameraLimits
{
public:
    CameraLimits(const FeatureRow& row, const std::string& camera) : m_type(row.type)
    {
        for (const LimitRow& limit : row.limits)
            if (std::count(limit.cameras.begin(), limit.cameras.end(), camera) > 0)
                m_limits[limit.name] = &limit;
    }

    /// "from 8 to 80 px, in steps of 8", "at least 8 px; the maximum varies"; empty if there are none.
    std::string Text() const
    {
        std::vector<std::string> varying;
        for (const auto& [name, noun] : {std::pair("Min", "the minimum"), {"Max", "the maximum"},
                 {"Inc", "the increment"}, {"Length", "the length"}})
            if (const auto limit = m_limits.find(name); limit != m_limits.end() && limit->second->varies)
                varying.emplace_back(noun);
        const std::string range = RangeText() + LengthText();
        return range + (range.empty() || varying.empty() ? "" : "; ") + Listed(varying) +
               (varying.empty()          ? ""
                   : varying.size() == 1 ? " varies"
                                         : " vary");
    }

private:
    /// Empty if the limit varies or there is none.
    std::string Constant(const char* name) const
    {
        const auto limit = m_limits.find(name);
        return limit == m_limits.end() || limit->second->varies ? std::string() : limit->second->value;
    }

    std::string RangeText() const
    {
        const std::string least = Constant("Min");
        const std::string most = Constant("Max");
        std::string text = !least.empty() && !most.empty() ? "from " + least + " to " + most
                           : !least.empty()                ? "at least " + least
                           : !most.empty()                 ? "at most " + most
                                                           : "";
        if (const std::string unit = Constant("Unit"); !unit.empty())
            text += (text.empty() ? "in " : " ") + unit;
        if (const std::string step = Constant("Inc"); !step.empty() && (m_type != "Int" || step != "1"))
            text += (text.empty() ? "" : ", ") + ("in steps of " + step);
        return text;
    }

    std::string LengthText() const
    {
        const std::string length = Constant("Length");
        return length.empty() ? ""
                              : (m_type == "Raw" ? "" : "at most ") + length + (length == "1" ? " byte" : " bytes");
    }

    const std::string& m_type;
    std::map<std::string, const LimitRow*> m_limits;
};

std::string Capitalized(std::string text)
{
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z')
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
    return text;
}

/// The limits of all cameras; of each, if they differ.
std::string LimitsText(const FeatureRow& row, const std::map<std::string, std::string>& names)
{
    std::vector<std::pair<std::string, std::vector<std::string>>> groups;
    for (const std::string& camera : row.cameras)
    {
        const std::string limits = CameraLimits(row, camera).Text();
        auto group = std::find_if(groups.begin(), groups.end(), [&](const auto& any) { return any.first == limits; });
        if (group == groups.end())
            group = groups.insert(group, {limits, {}});
        group->second.push_back(names.at(camera));
    }
    if (groups.size() == 1)
        return Sentence(Capitalized(groups.front().first));
    std::string text;
    for (const auto& [limits, cameras] : groups)
        text +=
            (text.empty() ? "In " : " In ") + Listed(cameras) + ": " + Sentence(limits.empty() ? "no limits" : limits);
    return text;
}

QStringList CommentOf(const FeatureRow& row, const std::map<std::string, std::string>& names)
{
    std::string facts = LimitsText(row, names);
    const auto add = [&facts](const std::string& text) { facts += (facts.empty() ? "" : " ") + Sentence(text); };
    if (const std::string visibility = row.visibility.Text(); !visibility.empty() && visibility != "Beginner")
        add("Visibility: " + visibility);
    std::vector<std::string> selectors;
    for (const ValueRow& selector : row.selectors)
        if (selector.cameras == row.cameras)
            selectors.push_back(selector.name);
    if (!selectors.empty())
        add("Depends on " + Listed(selectors));
    QStringList texts;
    for (const std::string& text : {Sentence(row.toolTip.Text()), facts})
        if (!text.empty())
            texts.append(QString::fromStdString(text));
    return texts;
}

/// Whether Doxygen would take the character at this place for something else than itself.
bool IsMarkup(const QString& text, int place)
{
    const auto at = [&text](int any) { return any >= 0 && any < text.size() ? text.at(any) : QChar(QLatin1Char(' ')); };
    const QChar before = at(place - 1);
    const QChar next = at(place + 1);
    switch (text.at(place).unicode())
    {
    case '@':
    case '<':
        return true;
    case '[':
        return text.contains(QLatin1String("](")) || text.contains(QLatin1String("]:"));
    case '#':
    case '%':
    case '&':
        return !next.isSpace() && !next.isDigit() && !QStringLiteral(".,;:)").contains(next);
    case '*':
        return !before.isLetterOrNumber() && !next.isSpace();
    case '_': // With a brace behind it, Doxygen takes the escaped one for a command.
        return !before.isLetterOrNumber() && !text.contains(QLatin1Char('{'));
    case ':':
        return next == QLatin1Char(':') && at(place + 2) != QLatin1Char(':');
    default:
        return false;
    }
}

/// A text in which nothing has a meaning for Doxygen or the preprocessor.
QString Harmless(QString text)
{
    static const QRegularExpression trigraph(QStringLiteral(R"(\?\?(?=[=/'()!<>-]))"));
    static const QRegularExpression tildes(QStringLiteral("~~+"));
    text.replace(QLatin1Char('\\'), QLatin1Char('/')).replace(QLatin1Char('`'), QLatin1Char('\''));
    text.replace(trigraph, QStringLiteral("? ?")).replace(tildes, QStringLiteral("~"));
    QString harmless;
    for (int i = 0; i < text.size(); ++i)
    {
        if (IsMarkup(text, i))
            harmless += QLatin1Char('\\');
        harmless += text.at(i);
    }
    return harmless;
}

/// A line that is no list, heading or quotation.
QString WithoutMark(const QString& line)
{
    static const QRegularExpression number(QStringLiteral("^([0-9]+)\\."));
    if (QStringLiteral("-+>=|.").contains(line.at(0)) || line.at(0) == QLatin1Char('*') ||
        line.at(0) == QLatin1Char('#'))
        return QLatin1Char('\\') + line;
    return QString(line).replace(number, QStringLiteral("\\1\\."));
}

/// How much of a word that is too long fits into a line: neither half of a character nor a backslash without what it
/// stands before.
int CutOf(const QString& word, int width)
{
    int cut = width;
    while (cut > 1 && (word.at(cut - 1) == QLatin1Char('\\') || word.at(cut).isLowSurrogate() || word.at(cut).isMark()))
        --cut;
    return cut;
}

} // namespace

FamilyNotes NotesOf(const std::vector<CameraFeatures>& cameras)
{
    FamilyNotes notes = {TableOf(cameras, Unite(cameras)), {}};
    std::map<std::string, int> models;
    for (const CameraFeatures& camera : cameras)
        ++models[camera.name];
    for (const CameraFeatures& camera : cameras)
        notes.cameras[camera.label] =
            models[camera.name] == 1 ? camera.name : std::filesystem::path(camera.label).filename().string();
    return notes;
}

ClassComments CommentsOf(const FamilyNotes& notes, const FeatureInfos& features, const CppOptions& options)
{
    ClassComments comments;
    const CppNames names(options, &CppNames::Clean);
    std::unordered_map<std::string, const FeatureRow*> rows;
    for (const FeatureRow& row : notes.features)
        rows.emplace(row.name, &row);
    for (const auto& category : features.Categories())
        for (const FeaturePtr& feature : category.second)
        {
            const auto row = rows.find(TextOf(*feature, &Feature::GetName));
            const QList<CppMethod> methods = names.Describe(*feature).Methods();
            if (row == rows.end() || methods.isEmpty())
                continue;
            comments[methods.first().name + methods.first().arguments] = CommentOf(*row->second, notes.cameras);
            for (const ValueRow& entry : row->second->entries)
                if (const std::string text = Sentence(entry.toolTip.Text()); !text.empty())
                    comments[names.EnumEntry(CppClassWriter::tr(row->first.c_str()),
                        CppClassWriter::tr(entry.name.c_str()))] = QStringList(QString::fromStdString(text));
        }
    return comments;
}

QStringList CommentLines(const QStringList& texts, int column)
{
    const QString begin = QStringLiteral("/// ");
    const int width =
        std::max(100 - column - static_cast<int>(begin.size()) - 1, 40); // One for a mark at the beginning.
    QStringList lines;
    for (const QString& text : texts)
    {
        QString line;
        const auto end = [&]
        {
            if (!line.isEmpty())
                lines.append(begin + WithoutMark(line));
            line.clear();
        };
        for (QString word : Harmless(text).split(QLatin1Char(' ')))
        {
            if (!line.isEmpty() && line.size() + 1 + word.size() > width)
                end();
            for (; word.size() > width; end())
            {
                line = word.left(CutOf(word, width));
                word.remove(0, line.size());
            }
            line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
        }
        end();
    }
    return lines;
}
