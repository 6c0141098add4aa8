// Random catalogues, options and templates, and what must always hold. KOLTA_SEED chooses others, and
// KOLTA_ROUNDS how many.

#include "Classes/NameCheck.h"
#include "TestData.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <map>
#include <random>
#include <set>

using namespace TestData;

namespace
{

const char* const Placeholders[] = {"### METHOD_DECLARATIONS ###", "### METHOD_IMPLEMENTATIONS ###",
    "### VARIABLE_DECLARATIONS ###", "### ENUM_DECLARATIONS ###"};

enum Block
{
    Declarations,
    Implementations,
    Members,
    Enums
};

/// A block as it was written, without its indentation.
struct Written
{
    QStringList lines;
    int count; ///< What the messages say.
    bool isIndented;

    QStringList StartingWith(const QString& start) const
    {
        QStringList found;
        foreach (const QString& line, lines)
            if (line.startsWith(start))
                found.append(line.mid(start.size()));
        return found;
    }
};

} // namespace

class GeneratorFuzzTest : public QObject
{
    Q_OBJECT

private:
    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned int>(limit)); }

    template <std::size_t Size>
    std::string OneOf(const char* const (&texts)[Size])
    {
        return texts[Below(static_cast<int>(Size))];
    }

    /// Names of every kind.
    std::string Name()
    {
        static const char* const Odd[] = {"", "Same", "Same", "2nd", "a b-c", "%1<b>\n", "\xf0\x9f\x93\xb7", "\xff\xfe",
            "\xd9\xa3", "quote\"\\", "### CLASS_NAME ###", "// Category", "_", "\xc2\xb2"};
        static const char* const Parts[] = {"Gain", "x", "7", "_", "\xc3\x84", "\xe5\x86\x99", " ", "Feature"};
        if (Below(4) == 0)
            return OneOf(Odd);
        std::string name = Below(200) == 0 ? std::string(10240, 'n') : std::string();
        for (int i = Below(5); i >= 0; --i)
            name += OneOf(Parts);
        return name;
    }

    /// Names that collide easily.
    QString NarrowName()
    {
        static const char* const Names[] = {"A", "AEnum", "_A", "_AEnum", "A_B", "B", "GetA", "GetAFeature", "AFeature",
            "SetA", "m_A", "m_AFeature", "E", "EEnum", "E_A", "K", "delete", "std", "OPX", "NULL", "KltErrorType", "p",
            "result", "value", "feature", "nValue", "pFeature", "m_camera", "GetFeatureByName", "linux", "Feature",
            "Enum", "Get", "\xc2\xb2", "a\xc2\xb2", "\xc3\x84", "\xe5\x86\x99", "x y", "x_y", "1", "I1", "string",
            "FeaturePtr", "bool", "KltInt64_t", "__x", "_"};
        return QString::fromUtf8(Names[Below(static_cast<int>(sizeof Names / sizeof *Names))]);
    }

    ScriptedSdk::FeatureData RandomFeature(bool valid)
    {
        // A line break in a category would begin a new line; no SDK delivers one.
        static const char* const Categories[] = {"", "/A", "/B", "/B/C", "/\xc3\x96 %1", "C"};
        ScriptedSdk::FeatureData feature =
            MakeFeature(Name(), static_cast<KltFeatureDataType>(valid ? 1 + Below(7) : Below(11)),
                static_cast<KltFeatureFlagsType>(Below(8)), {}, OneOf(Categories));
        if (feature.dataType == KltFeatureDataEnum)
            for (int i = Below(5) + (valid ? 1 : 0); i > 0; --i)
                feature.entries.push_back(
                    {valid ? "e" + std::to_string(i) : Name(), static_cast<KltInt64_t>(m_random())});
        return feature;
    }

    std::vector<ScriptedSdk::FeatureData> RandomFeatures(int count, bool valid)
    {
        std::vector<ScriptedSdk::FeatureData> features;
        for (int i = 0; i < count; ++i)
            features.push_back(RandomFeature(valid));
        return features;
    }

    /// Every block between two marker lines, so that it can be found again, after something of random length.
    QString RandomTemplate(int (&columns)[4])
    {
        static const char* const Lead[] = {"", "    ", "\t", " \xf0\x9f\x93\xb7 ", "x", "//\xc3\x84"};
        static const char* const Other[] = {"", "### CLASS_NAME ###", "# ## %1", "\t{", "### NO_BLOCK ###"};
        QString text;
        for (int block : {Enums, Declarations, Members, Implementations})
        {
            const QString lead = QString::fromUtf8((OneOf(Lead) + OneOf(Lead)).c_str());
            columns[block] = static_cast<int>(lead.size());
            text += QString::fromStdString(OneOf(Other)) + "\n<" + QString::number(block) + "\n" + lead +
                    Placeholders[block] + (Below(2) == 0 ? QString() : QString(" ") + Placeholders[Enums]) + "\n>\n";
        }
        return text;
    }

    Written Find(int block, const QString& text, int column, const QStringList& messages) const
    {
        static const char* const Kinds[] = {
            "method declarations", "method implementations", "variable declarations", "enum declarations"};
        const QString begin = "\n<" + QString::number(block) + "\n";
        const qsizetype from = text.indexOf(begin) + begin.size();
        Written written = {text.mid(from, text.indexOf("\n>\n", from - 1) + 1 - from).split('\n'), -1, true};
        written.lines.removeLast();
        for (QString& line : written.lines)
        {
            written.isIndented = written.isIndented && (line.isEmpty() || line.left(column) == QString(column, ' '));
            line = line.mid(column);
        }
        foreach (const QString& message, messages)
            if (message.startsWith("    ... ") && message.endsWith(QString(" %1 written.").arg(Kinds[block])))
                written.count = message.section(' ', 5, 5).toInt();
        return written;
    }

    void Check(const Written (&blocks)[4], const std::vector<ScriptedSdk::FeatureData>& features)
    {
        for (const Written& block : blocks)
            QVERIFY(block.isIndented);
        QStringList declared = blocks[Declarations].StartingWith("KltErrorType ").replaceInStrings(";", "");
        QCOMPARE(blocks[Implementations].StartingWith("KltErrorType " + m_writer.options.className + "::"), declared);
        QCOMPARE(blocks[Implementations].lines.count("{"), declared.size());
        QCOMPARE(blocks[Implementations].lines.count("}"), declared.size());
        int usable = 0;
        int entries = 0;
        std::map<std::string, int> enums;
        std::set<std::string> categories;
        for (const ScriptedSdk::FeatureData& feature : features)
        {
            const bool isUsable = feature.dataType >= KltFeatureDataInt && feature.dataType <= KltFeatureDataRaw;
            usable += isUsable ? 1 : 0;
            if (isUsable)
                categories.insert(feature.category);
            if (feature.dataType == KltFeatureDataEnum)
                enums[feature.name] = static_cast<int>(feature.entries.size());
        }
        QCOMPARE(declared.filter(" (OPX::KltAPI::FeaturePtr & feature)").size(), usable);
        QStringList headings;
        for (const std::string& category : categories)
            headings.append(QString::fromStdString(category));
        int filled = 0;
        for (const auto& enumeration : enums)
        {
            entries += enumeration.second;
            filled += enumeration.second > 0 ? 1 : 0;
        }
        for (int block : {Declarations, Implementations})
        {
            QCOMPARE(blocks[block].count, usable);
            QCOMPARE(blocks[block].StartingWith("// Category "), headings);
        }
        QCOMPARE(blocks[Members].count, static_cast<int>(features.size()));
        QCOMPARE(blocks[Members].lines.size(), blocks[Members].count);
        QCOMPARE(blocks[Enums].count, entries);
        QCOMPARE(blocks[Enums].StartingWith("    ").size(), entries);
        QCOMPARE(blocks[Enums].StartingWith("    ").filter(QRegularExpression(",$")).size(), entries - filled);
        QCOMPARE(blocks[Enums].lines.size(), entries + 4 * filled);
    }

    std::mt19937_64 m_random;
    Writer m_writer;

private slots:
    void initTestCase()
    {
        const unsigned long long seed = qEnvironmentVariableIntValue("KOLTA_SEED");
        qInfo("The seed is %llu.", seed);
        m_random.seed(seed);
    }

    void WhateverComesInTheTextIsConsistent()
    {
        const int rounds = std::max(60, qEnvironmentVariableIntValue("KOLTA_ROUNDS"));
        for (int round = 0; round < rounds; ++round)
        {
            const std::vector<ScriptedSdk::FeatureData> features =
                RandomFeatures(Below(round % 10 == 0 ? 501 : 30), false);
            const FeatureInfos catalogue = Catalogue(features);
            // Nobody can type a line break.
            for (QString CppOptions::*option : {&CppOptions::className, &CppOptions::getterPrefix,
                     &CppOptions::getterSuffix, &CppOptions::setterPrefix, &CppOptions::setterSuffix})
                m_writer.options.*option = QString::fromUtf8(Name().c_str()).remove("###").remove('\n');
            int columns[4];
            const QString lines = RandomTemplate(columns);
            const QString text = m_writer.Expand(lines, catalogue);
            const QStringList said = m_writer.said;
            QVERIFY(m_writer.Expand(lines, catalogue) == text && m_writer.said == said);
            Written blocks[4];
            for (int block : {Declarations, Implementations, Members, Enums})
                blocks[block] = Find(block, text, columns[block], said);
            Check(blocks, features);
            QVERIFY2(!QTest::currentTestFailed(), qPrintable(QString("round %1:\n%2").arg(round).arg(text.left(5000))));
        }
    }

    /// Small classes full of colliding names; all that pass the check go into one file.
    void WhatTheCheckOfNamesLetsPassCompiles()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath("all.cpp"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        int passed = 0;
        for (int i = 0; i < 600; ++i)
        {
            m_writer.options = CppOptions::Defaults();
            m_writer.options.SetClassName(Below(20) == 0 ? CppNames::Clean(NarrowName()) : "K" + QString::number(i));
            m_writer.options.headerFileName = "K.h";
            for (QString CppOptions::*option : {&CppOptions::getterPrefix, &CppOptions::getterSuffix,
                     &CppOptions::setterPrefix, &CppOptions::setterSuffix})
                if (Below(4) == 0)
                    m_writer.options.*option = Below(2) == 0 ? QString() : NarrowName();
            std::vector<ScriptedSdk::FeatureData> features = RandomFeatures(1 + Below(6), true);
            for (ScriptedSdk::FeatureData& feature : features)
            {
                feature.name = NarrowName().toStdString();
                for (ScriptedSdk::EntryData& entry : feature.entries)
                    entry.name = NarrowName().toStdString();
            }
            const FeatureInfos catalogue = Catalogue(features);
            if (!CheckNames(m_writer.options, catalogue).errors.empty())
                continue;
            ++passed;
            file.write("namespace N" + QByteArray::number(i) + "\n{\n");
            for (const char* ending : {".h", ".cpp"})
            {
                QFile lines(QString(TEMPLATES "/CppTemplate") + ending);
                QVERIFY(lines.open(QIODevice::ReadOnly));
                QString text = m_writer.Expand(lines.readAll(), catalogue);
                file.write(text.remove(QRegularExpression("#(include|ifndef|define|endif).*")).toUtf8() + "\n");
            }
            file.write("}\n");
        }
        file.close();
        QVERIFY(passed > 100);
        QProcess compiler;
        compiler.setProcessChannelMode(QProcess::MergedChannels);
        compiler.start(COMPILER, {"-fsyntax-only", "-I", HEADERS, "-include", "cstddef", "-include", "string",
                                     "-include", "KoltaCPP/KoltaCPP.h", file.fileName()});
        QVERIFY(compiler.waitForFinished(120000));
        QVERIFY2(compiler.exitCode() == 0, compiler.readAll().left(5000).constData());
    }
};

QTEST_MAIN(GeneratorFuzzTest)
#include "GeneratorFuzzTest.moc"
