#include "KoltaClassGenerator.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace
{

struct Outcome
{
    int code;
    QString out;
    QString err;
};

Outcome Call(const QStringList& arguments)
{
    QProcess program;
    program.start(CLASSGEN, arguments);
    program.waitForFinished(30000);
    return {program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1,
        QString::fromUtf8(program.readAllStandardOutput()), QString::fromUtf8(program.readAllStandardError())};
}

QByteArray Content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

} // namespace

class BatchTest : public QObject
{
    Q_OBJECT

private:
    QString Path(const QString& name) const { return m_folder->filePath(name); }

    void Write(const QString& name, const QByteArray& content)
    {
        QFile file(Path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    /// Writes a description with these features.
    QString Describe(const QString& name, const QStringList& features, const QByteArray& nodes)
    {
        QByteArray links;
        foreach (const QString& feature, features)
            links += "<pFeature>" + feature.toUtf8() + "</pFeature>";
        Write(name, "<RegisterDescription ModelName='M' SchemaMajorVersion='1' SchemaMinorVersion='1' "
                    "SchemaSubMinorVersion='0'><Category Name='Root'><pFeature>C</pFeature></Category>"
                    "<Category Name='C'>" +
                        links + "</Category>" + nodes + "</RegisterDescription>");
        return Path(name);
    }

    QStringList Generate(const QString& xml) const
    {
        return {"generate", "--xml", xml, "--output", Path("out"), "--class", "K"};
    }

    std::unique_ptr<QTemporaryDir> m_folder;

private slots:
    void init() { m_folder.reset(new QTemporaryDir); }

    void ThePairIsTheWindows()
    {
        QCoreApplication::setOrganizationName("OPX");
        QCoreApplication::setApplicationName("KoltaClassGenerator");
        QSettings().clear();
        QDir().mkpath(Path("window"));
        KoltaClassGenerator window;
        QListWidget* list = window.centralWidget()->findChild<QListWidget*>();
        window.centralWidget()
            ->findChild<QLineEdit*>("m_editDestinationFolder", Qt::FindDirectChildrenOnly)
            ->setText(Path("window"));
        window.findChild<QCheckBox*>()->setChecked(true);
        QVERIFY(list->count() >= 12);
        for (int row = 0; row < list->count(); ++row)
        {
            const QString text = list->item(row)->text();
            const QString serialNumber = text.mid(text.lastIndexOf('(') + 1).chopped(1);
            list->setCurrentRow(row);
            window.findChild<QPushButton*>("m_btnRun")->click();
            const bool empty = serialNumber == "NoFeatures";
            QCOMPARE(window.findChild<QPushButton*>("m_btnRun")->isEnabled(), !empty);
            const QString name = window.findChild<QLineEdit*>("m_editClassName")->text();
            const Outcome outcome = Call({"generate", "--camera", serialNumber, "--output", Path("batch"), "--force"});
            QVERIFY2(outcome.code == 0, qPrintable(outcome.err));
            for (const char* ending : {".h", ".cpp"})
                if (!empty)
                    QCOMPARE(Content(Path("batch/" + name + ending)), Content(Path("window/" + name + ending)));
        }
    }

    void CamerasAndFeaturesAreListed()
    {
        QVERIFY(Call({"list"}).out.contains("Kolta Mono\tSim1-Mono\tsimulated\t/"));
        const QJsonArray cameras = QJsonDocument::fromJson(Call({"list", "--json"}).out.toUtf8()).array();
        QCOMPARE(cameras.size(), 12);
        QCOMPARE(cameras.last().toObject()["serialNumber"].toString(), QString("Sim3-Mini"));
        QCOMPARE(Call({"features", "--camera", "NegativeAndLargeEnumerators", "--match", "W*e"}).out,
            QString("/Values\tWide\tEnum\tRW\tLowest = -9223372036854775807, Negative = -1, Zero = 0, AboveInt = "
                    "2147483648, Largest = 9223372036854775807\n"));
        QVERIFY(Call({"features", "--camera", "EveryType", "--match", "B*"}).out.isEmpty());
        const QJsonArray features = QJsonDocument::fromJson(
            Call({"features", "--xml", CAMERAS "/ReadOnlyAndWriteOnly.xml", "--json"}).out.toUtf8())
                                        .array();
        QCOMPARE(features.size(), 3);
        QCOMPARE(features.at(2).toObject()["access"].toString(), QString("WO"));
    }

    void AnUpToDatePairIsLeftAlone()
    {
        const QString xml = CAMERAS "/EveryType.xml";
        QCOMPARE(Call(Generate(xml) << "--depfile" << Path("k.d")).code, 0);
        QCOMPARE(Content(Path("k.d")).split(' ').first(), Path("out/K.h").toUtf8());
        const QDateTime before = QFileInfo(Path("out/K.h")).lastModified();
        QTest::qWait(20);
        const Outcome second = Call(Generate(xml));
        QCOMPARE(second.code, 0);
        QVERIFY(second.err.contains("Creating header file '" + Path("out/K.h") + "' ...\n... done.\n"));
        QCOMPARE(QFileInfo(Path("out/K.h")).lastModified(), before);
        QCOMPARE(QDir(Path("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 2);

        QStringList check = Generate(xml);
        check[0] = "check";
        QCOMPARE(Call(check).code, 0);
        Write("out/K.h", "changed\n");
        const Outcome differs = Call(check);
        QCOMPARE(differs.code, 1);
        QVERIFY(differs.out.startsWith("--- ") && differs.out.contains("\n-changed\n"));
        QVERIFY(differs.err.contains("Run: kolta-classgen generate --xml"));
        QCOMPARE(Content(Path("out/K.h")), QByteArray("changed\n"));
    }

    void OptionsAreThoseOfTheWindow()
    {
        Write("t.h", "### CLASS_NAME ### ### HEADER_FILE_NAME ###\n### METHOD_DECLARATIONS ###\n");
        const Outcome outcome =
            Call(Generate(CAMERAS "/NestedCategories.xml")
                 << "--header"
                 << "h.hpp"
                 << "--source"
                 << "s.cc"
                 << "--header-template" << Path("t.h") << "--source-template" << Path("t.h") << "--getter-prefix"
                 << ""
                 << "--getter-suffix"
                 << "Get"
                 << "--setter-prefix"
                 << "Put"
                 << "--setter-suffix"
                 << "Now");
        QVERIFY2(outcome.code == 0, qPrintable(outcome.err));
        const QByteArray header = Content(Path("out/h.hpp"));
        QVERIFY(header.startsWith("### CLASS_NAME ###") || header.startsWith("K h.hpp\n"));
        QVERIFY(
            header.contains("KltErrorType TopGet (KltInt64_t & value);\nKltErrorType PutTopNow (KltInt64_t value);\n"
                            "KltErrorType TopFeatureGet (OPX::KltAPI::FeaturePtr & feature);\n"));
        QCOMPARE(Content(Path("out/s.cc")), header);
    }

    void NamesThatCannotBeCompiledAreRefused_data()
    {
        QTest::addColumn<QStringList>("features");
        QTest::addColumn<QByteArray>("nodes");
        QTest::addColumn<QString>("problem");
        const QByteArray two =
            "<Integer Name='A B'><Value>1</Value></Integer><Integer Name='A_B'><Value>1</Value></Integer>";
        QTest::newRow("members") << QStringList({"A B", "A_B"}) << two
                                 << "'A B' and 'A_B' both end in the member 'm_A_BFeature'.";
        QTest::newRow("methods") << QStringList({"A B", "A_B"}) << two
                                 << "'A B' and 'A_B' both end in the method 'SetA_B'.";
        QTest::newRow("keyword") << QStringList("delete") << QByteArray("<Command Name='delete'/>")
                                 << "'delete' ends in the method 'delete', a keyword of C++.";
        QTest::newRow("class") << QStringList("K") << QByteArray("<Command Name='K'/>")
                               << "The method for 'K' has the name of the class.";
        QTest::newRow("no entries") << QStringList("E")
                                    << QByteArray("<Enumeration Name='E'><Value>0</Value></Enumeration>")
                                    << "Enumeration 'E' has no entries, so its type does not exist.";
        QTest::newRow("enumerators") << QStringList("E")
                                     << QByteArray("<Enumeration Name='E'><EnumEntry Name='a-b'><Value>0</Value>"
                                                   "</EnumEntry><EnumEntry Name='a b'><Value>1</Value></EnumEntry>"
                                                   "<Value>0</Value></Enumeration>")
                                     << "both end in the enumerator 'E_a_b'.";
    }

    void NamesThatCannotBeCompiledAreRefused()
    {
        QFETCH(QStringList, features);
        QFETCH(QByteArray, nodes);
        QFETCH(QString, problem);
        const QString xml = Describe("n.xml", features, nodes);
        const Outcome refused = Call(Generate(xml));
        QCOMPARE(refused.code, 5);
        QVERIFY2(refused.err.contains("error: ") && refused.err.contains(problem), qPrintable(refused.err));
        QVERIFY(!QFile::exists(Path("out/K.h")));
        QCOMPARE(Call(Generate(xml) << "--force").code, 0);
        QVERIFY(QFile::exists(Path("out/K.h")));
    }

    void NamesThatTheCameraDoesNotKnowAreWarnedOf()
    {
        const Outcome outcome = Call(Generate(CAMERAS "/OddNames.xml"));
        QCOMPARE(outcome.code, 0);
        QVERIFY(outcome.err.contains("warning: 'With Blank' becomes 'With_Blank'"));
    }

    void DifferencesOfCamerasAreNamed()
    {
        const QString before = Describe("a.xml", {"Same", "Gone", "Type", "Access", "E"},
            "<Integer Name='Same'/><Integer Name='Gone'/><Integer Name='Type'/><Integer Name='Access'/>"
            "<Enumeration Name='E'><EnumEntry Name='x'><Value>0</Value></EnumEntry></Enumeration>");
        const QString after = Describe("b.xml", {"E", "Same", "New", "Type", "Access"},
            "<Integer Name='Same'/><Float Name='New'/><Float Name='Type'/>"
            "<Integer Name='Access'><ImposedAccessMode>RO</ImposedAccessMode></Integer>"
            "<Enumeration Name='E'><EnumEntry Name='x'><Value>1</Value></EnumEntry></Enumeration>");
        const Outcome outcome = Call({"diff", before, after});
        QCOMPARE(outcome.out, QString("~ Access: access RW -> RO\n~ E: entries x = 0 -> x = 1\n+ New (Float, RW)\n"
                                      "~ Type: type Int -> Float\n- Gone (Int, RW)\n"));
        QCOMPARE(outcome.code, 1);
        QCOMPARE(Call({"diff", "EveryType", CAMERAS "/EveryType.xml"}).code, 0);
    }

    void DescriptionsAreStored()
    {
        QCOMPARE(Call({"dump-xml", "--camera", "EveryType", "--output", Path("d.xml")}).code, 0);
        QCOMPARE(Content(Path("d.xml")), Content(CAMERAS "/EveryType.xml"));
        QCOMPARE(Call({"dump-xml", "--camera", "EveryType"}).out.toUtf8(), Content(CAMERAS "/EveryType.xml"));
    }

    void WhatGoesWrongHasItsExitCode()
    {
        Write("broken.xml", "<RegisterDescription>");
        Write("file", "");
        const QList<QPair<int, QStringList>> calls = {{0, {"--help"}}, {0, {"--version"}}, {0, {"generate", "--help"}},
            {2, {}}, {2, {"nonsense"}}, {2, {"generate", "--output", "x"}},
            {2, {"generate", "--camera", "A", "--xml", "B", "--output", "x"}},
            {2, Generate(CAMERAS "/EveryType.xml") << "--header"
                                                   << "x"
                                                   << "--source"
                                                   << "x"},
            {3, {"features", "--camera", "Nobody"}}, {3, Generate(Path("none.xml"))}, {3, Generate(Path("broken.xml"))},
            {3, {"diff", "EveryType", "Nobody"}}, {4, {"dump-xml", "--camera", "EveryType", "--output", "/none/x"}},
            {4, {"generate", "--camera", "EveryType", "--output", Path("file")}},
            {4, Generate(CAMERAS "/EveryType.xml") << "--header-template" << Path("none")},
            {4, Generate(CAMERAS "/EveryType.xml") << "--header"
                                                   << "none/x.h"}};
        for (const auto& call : calls)
        {
            const Outcome outcome = Call(call.second);
            QVERIFY2(outcome.code == call.first, qPrintable(call.second.join(' ') + ": " + outcome.err));
            QVERIFY2(call.first == 0 || !outcome.err.isEmpty() || !outcome.out.isEmpty(), "silent");
        }
    }

    void AProgramThatIsKilledLeavesTheOldPair()
    {
        QByteArray nodes;
        QStringList names;
        for (int i = 0; i < 20000; ++i)
        {
            names.append(QString("F%1").arg(i));
            nodes += "<Integer Name='F" + QByteArray::number(i) + "'/>";
        }
        const QString xml = Describe("big.xml", names, nodes);
        QDir().mkpath(Path("out"));
        for (int delay : {50, 300, 600, 900})
        {
            Write("out/K.h", "old header\n");
            Write("out/K.cpp", "old source\n");
            QProcess program;
            program.start(CLASSGEN, Generate(xml));
            QVERIFY(program.waitForStarted());
            QTest::qWait(delay);
            program.kill();
            program.waitForFinished();
            if (program.exitStatus() == QProcess::CrashExit)
            {
                QCOMPARE(Content(Path("out/K.h")), QByteArray("old header\n"));
                QCOMPARE(Content(Path("out/K.cpp")), QByteArray("old source\n"));
            }
        }
    }

    void TheManualNamesEveryOption()
    {
        const QString manual = Call({"man"}).out;
        const QString completion = Call({"bash-completion"}).out;
        for (const char* option : {"camera", "xml", "output", "depfile", "force", "match", "json"})
        {
            QVERIFY2(manual.contains(QString("\\-\\-") + option), option);
            QVERIFY2(completion.contains(QString("--") + option), option);
        }
    }
};

QTEST_MAIN(BatchTest)
#include "BatchTest.moc"
