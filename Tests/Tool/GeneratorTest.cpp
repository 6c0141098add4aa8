#include "CppClassGenerator.h"
#include "FileChooserWidget.h"
#include "JavaClassGenerator.h"
#include "TestData.h"

#include <QFile>
#include <QLineEdit>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextStream>
#include <QtTest>

using namespace TestData;
using ScriptedSdk::TheScript;

namespace
{

class Java : public JavaClassGenerator
{
public:
    void Run(const char*, bool, const FeatureInfos&) override {}
};

void Write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray Read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

QString Notice(const char* from, const char* to)
{
    return QStringLiteral("Info: '") + QString::fromUtf8(from) +
           QStringLiteral("' is not a valid C++ identifier -> changed to '") + QString::fromUtf8(to) +
           QStringLiteral("'!");
}

typedef int (CppClassGenerator::*Writer)(QTextStream&, int, const FeatureInfos&);

} // namespace

class GeneratorTest : public QObject
{
    Q_OBJECT

private:
    QLineEdit* Edit(const char* name) { return m_page->findChild<QLineEdit*>(QLatin1String(name)); }

    QLineEdit* Template(const char* name)
    {
        return m_page->findChild<FileChooserWidget*>(QLatin1String(name))->m_lineEdit;
    }

    QString Block(Writer writer, int column, const std::vector<ScriptedSdk::FeatureData>& features, int count)
    {
        QString text;
        QTextStream stream(&text);
        const int written = (m_generator.get()->*writer)(stream, column, Catalogue(features));
        return written == count ? text : QStringLiteral("count %1").arg(written);
    }

    /// Runs on a header and a source template of this content.
    QStringList Run(const QByteArray& header, const QByteArray& source = "", bool overwrite = true,
        const std::vector<ScriptedSdk::FeatureData>& features = {})
    {
        Write(m_folder->filePath("t.h"), header);
        Write(m_folder->filePath("t.cpp"), source);
        Template("m_headerTemplateFileChooser")->setText(m_folder->filePath("t.h"));
        Template("m_sourceTemplateFileChooser")->setText(m_folder->filePath("t.cpp"));
        Messages messages(*m_generator);
        m_generator->Run((m_folder->path() + "/./x/../").toUtf8().constData(), overwrite, Catalogue(features));
        return messages.Take().join("\n").replace(m_folder->path(), "D").split("\n");
    }

    QByteArray Output(const char* name = "Cam.h") { return Read(m_folder->filePath(name)); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QWidget> m_page;
    std::unique_ptr<CppClassGenerator> m_generator;

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("OPX");
        QCoreApplication::setApplicationName("GeneratorTest");
    }

    void init()
    {
        ScriptedSdk::Reset();
        QSettings().clear();
        m_folder.reset(new QTemporaryDir);
        m_generator.reset(new CppClassGenerator);
        m_page.reset(new QWidget);
        m_generator->SetupUi(m_page.get());
        m_generator->ReadSettings();
        m_generator->SetCameraName("");
        Edit("m_editClassName")->setText("Cam");
        Edit("m_editHeaderFileName")->setText("Cam.h");
        Edit("m_editSourceFileName")->setText("Cam.cpp");
    }

    void NamesBecomeIdentifiers_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("identifier");
        QTest::newRow("valid") << "_cam2"
                               << "_cam2";
        QTest::newRow("empty") << ""
                               << "";
        QTest::newRow("blank and hyphen") << "My Camera-1"
                                          << "My_Camera_1";
        QTest::newRow("runs") << "a..b"
                              << "a__b";
        QTest::newRow("digit") << "2ndCam"
                               << "I2ndCam";
        QTest::newRow("digit of another script") << QString(QChar(0x0663)) << QString("I") + QChar(0x0663);
        QTest::newRow("superscript") << QString(QChar(0xb2)) << QString(QChar(0xb2));
        QTest::newRow("letters") << QString(QChar(0xc4)) << QString(QChar(0xc4));
        QTest::newRow("outside the basic plane") << QString::fromUtf8("\xf0\x9f\x93\xb7x") << "__x";
        QTest::newRow("markup") << "%1<b>\n"
                                << "_1_b__";
    }

    void NamesBecomeIdentifiers()
    {
        QFETCH(QString, name);
        QFETCH(QString, identifier);
        Messages messages(*m_generator);
        QCOMPARE(m_generator->GetValidIdentifierName(name), identifier);
        const QStringList expected(Notice(name.toUtf8().constData(), identifier.toUtf8().constData()));
        QCOMPARE(messages.Take(), name == identifier ? QStringList() : expected);
    }

    void ACameraGivesItsNameToClassAndFiles()
    {
        QSignalSpy changed(m_generator.get(), SIGNAL(OptionsChanged()));
        Messages messages(*m_generator);
        m_generator->SetCameraName("42 X-9");
        QCOMPARE(messages.Take(), QStringList(Notice("42 X-9Camera", "I42_X_9Camera")));
        QCOMPARE(Edit("m_editClassName")->text(), QString("I42_X_9Camera"));
        QCOMPARE(Edit("m_editHeaderFileName")->text(), QString("I42_X_9Camera.h"));
        QCOMPARE(Edit("m_editSourceFileName")->text(), QString("I42_X_9Camera.cpp"));
        QCOMPARE(changed.size(), 3);
        QVERIFY(m_generator->CameraName().isEmpty());

        Edit("m_editHeaderFileName")->setText("mine.h");
        Edit("m_editClassName")->clear();
        QTest::keyClicks(Edit("m_editClassName"), "a b");
        QCOMPARE(Edit("m_editHeaderFileName")->text(), QString("mine.h"));
        QFocusEvent leave(QEvent::FocusOut);
        QCoreApplication::sendEvent(Edit("m_editClassName"), &leave);
        QCOMPARE(Edit("m_editHeaderFileName")->text(), QString("a_b.h"));
        changed.clear();
        for (const char* affix :
            {"m_editGetterPrefix", "m_editGetterSuffix", "m_editSetterPrefix", "m_editSetterSuffix"})
            Edit(affix)->setText("changed");
        QVERIFY(changed.isEmpty());
    }

    void OptionsAreValidWhenEverythingIsNamedAndTheTemplatesExist()
    {
        QVERIFY(m_generator->OptionsValid());
        for (const char* name : {"m_editClassName", "m_editHeaderFileName", "m_editSourceFileName"})
        {
            const QString text = Edit(name)->text();
            Edit(name)->clear();
            QVERIFY2(!m_generator->OptionsValid(), name);
            Edit(name)->setText(text);
        }
        for (const char* name : {"m_headerTemplateFileChooser", "m_sourceTemplateFileChooser"})
        {
            const QString text = Template(name)->text();
            for (const QString& missing : {QString(), m_folder->filePath("none")})
            {
                Template(name)->setText(missing);
                QVERIFY2(!m_generator->OptionsValid(), name);
            }
            Template(name)->setText(m_folder->path());
            QVERIFY2(m_generator->OptionsValid(), name);
            QSignalSpy changed(m_generator.get(), SIGNAL(OptionsChanged()));
            Template(name)->setText(text);
            QCOMPARE(changed.size(), 1);
        }
        for (const char* affix : {"m_editGetterPrefix", "m_editSetterPrefix"})
            Edit(affix)->clear();
        QVERIFY(m_generator->OptionsValid());
    }

    void OptionsOutliveTheSession()
    {
        const QString templates = QCoreApplication::applicationDirPath() + "/Templates/CppTemplate";
        const auto edits = [this]
        {
            return QList<QLineEdit*>({Edit("m_editGetterPrefix"), Edit("m_editGetterSuffix"),
                Edit("m_editSetterPrefix"), Edit("m_editSetterSuffix"), Template("m_headerTemplateFileChooser"),
                Template("m_sourceTemplateFileChooser")});
        };
        const QStringList keys = {"GetterPrefix", "GetterSuffix", "SetterPrefix", "SetterSuffix",
            "HeaderTemplateFilePath", "SourceTemplateFilePath"};
        const QStringList defaults = {"Get", "", "Set", "", templates + ".h", templates + ".cpp"};
        const QStringList texts = {"", "g", "", "s", "/h, x", ""};
        for (int i = 0; i < keys.size(); ++i)
        {
            QCOMPARE(edits().at(i)->text(), defaults.at(i));
            edits().at(i)->setText(texts.at(i));
        }
        m_generator->WriteSettings();
        QCOMPARE(QSettings().allKeys().size(), 6);

        CppClassGenerator next;
        m_page.reset(new QWidget);
        next.SetupUi(m_page.get());
        next.ReadSettings();
        QVERIFY(Edit("m_editClassName")->text().isEmpty());
        for (int i = 0; i < keys.size(); ++i)
        {
            QCOMPARE(edits().at(i)->text(), texts.at(i));
            QCOMPARE(QSettings().value("CppClassGenerator/" + keys.at(i)).toString(), texts.at(i));
        }
    }

    void DeclarationsAreWrittenForEveryUsableType()
    {
        const std::vector<ScriptedSdk::FeatureData> features = {MakeFeature("I", KltFeatureDataInt),
            MakeFeature("F", KltFeatureDataFloat, ReadOnly), MakeFeature("E", KltFeatureDataEnum, KltFeatureFlagsWrite),
            MakeFeature("R", KltFeatureDataEnum, 5), MakeFeature("S", KltFeatureDataString),
            MakeFeature("B", KltFeatureDataBool, ReadOnly), MakeFeature("C", KltFeatureDataCommand),
            MakeFeature("W", KltFeatureDataRaw), MakeFeature("N", KltFeatureDataNone, ReadWrite, {}, "/D"),
            MakeFeature("U", 77, ReadWrite, {}, "/D")};
        const QString expected =
            "\n  // Category /C\n"
            "  KltErrorType GetI (KltInt64_t & value);\n  KltErrorType SetI (KltInt64_t value);\n"
            "  KltErrorType GetIFeature (OPX::KltAPI::FeaturePtr & feature);\n\n"
            "  KltErrorType GetF (double & value);\n"
            "  KltErrorType GetFFeature (OPX::KltAPI::FeaturePtr & feature);\n\n"
            "  KltErrorType GetE (EEnum & value);\n  KltErrorType SetE (EEnum value);\n"
            "  KltErrorType GetEFeature (OPX::KltAPI::FeaturePtr & feature);\n\n"
            "  KltErrorType GetR (REnum & value);\n"
            "  KltErrorType GetRFeature (OPX::KltAPI::FeaturePtr & feature);\n\n"
            "  KltErrorType GetS (std::string & value);\n  KltErrorType SetS (const char * value);\n"
            "  KltErrorType GetSFeature (OPX::KltAPI::FeaturePtr & feature);\n\n"
            "  KltErrorType GetB (bool & value);\n"
            "  KltErrorType GetBFeature (OPX::KltAPI::FeaturePtr & feature);\n\n"
            "  KltErrorType C ();\n  KltErrorType GetCFeature (OPX::KltAPI::FeaturePtr & feature);\n\n"
            "  KltErrorType GetW (OPX::KltAPI::UcharVector & value);\n"
            "  KltErrorType SetW (const OPX::KltAPI::UcharVector & value);\n"
            "  KltErrorType GetWFeature (OPX::KltAPI::FeaturePtr & feature);\n\n";
        Messages messages(*m_generator);
        QCOMPARE(Block(&CppClassGenerator::WriteMethodDeclarations, 2, features, 8), expected);
        QCOMPARE(messages.Take(),
            QStringList({"Unknown feature type KltFeatureDataNone detected! Feature N will be ignored.",
                "Unknown feature type <unknown> detected! Feature U will be ignored."}));
        QVERIFY(Block(&CppClassGenerator::WriteMethodImplementations, 0, features, 8).startsWith("\n// Category /C\n"));
        QCOMPARE(messages.Take().size(), 2);

        const QString members = Block(&CppClassGenerator::WriteVariableDeclarations, 1, features, 10);
        QCOMPARE(members.count('\n'), 10);
        QVERIFY(members.startsWith(" OPX::KltAPI::FeaturePtr m_IFeature;\n OPX::KltAPI::FeaturePtr m_FFeature;\n"));
        QVERIFY(members.endsWith("m_NFeature;\n OPX::KltAPI::FeaturePtr m_UFeature;\n"));
        QVERIFY(messages.Take().isEmpty());
    }

    void WhatTheSdkDeliversCounts()
    {
        TheScript().Fail("Feature::GetFlags@F", -1);
        TheScript().Fail("EnumEntry::GetValue@x", -1);
        const std::vector<ScriptedSdk::FeatureData> features = {MakeFeature("F", KltFeatureDataInt),
            MakeFeature("T", KltFeatureDataInt), MakeFeature("E", KltFeatureDataEnum, 0xfffffffe, {{"x", 7}})};
        const FeatureInfos infos = Catalogue(features);
        TheScript().Fail("Feature::GetDataType@T", -1);
        QString text;
        QTextStream stream(&text);
        QCOMPARE(m_generator->WriteMethodDeclarations(stream, 0, infos), 2);
        QVERIFY(text.contains("GetF (") && !text.contains("SetF (") && text.contains("SetE ("));
        m_generator->WriteEnumDeclarations(stream, 0, infos);
        QVERIFY(text.contains("E_x = 7\n"));
    }

    void EnumerationsAreWrittenWithTheirEntries()
    {
        const QString expected = "typedef enum _AEnum\n{\n    A_Neg = -9223372036854775807,\n    A_Off = 0,\n"
                                 "    A_Big = 4294967296\n} AEnum;\n\n"
                                 "typedef enum _OneEnum\n{\n    One_x = 7\n} OneEnum;\n\n";
        QCOMPARE(
            Block(&CppClassGenerator::WriteEnumDeclarations, 0,
                {MakeFeature("One", KltFeatureDataEnum, ReadWrite, {{"x", 7}}), MakeFeature("None", KltFeatureDataEnum),
                    MakeFeature("A", KltFeatureDataEnum, ReadWrite,
                        {{"Big", 4294967296ll}, {"Neg", -9223372036854775807ll}, {"Off", 0}})},
                4),
            expected);
        QCOMPARE(Block(&CppClassGenerator::WriteEnumDeclarations, 0, {MakeFeature("None", KltFeatureDataEnum)}, 0),
            QString());
    }

    void BodiesAreWrittenForEveryKindOfMethod()
    {
        Edit("m_editClassName")->setText("My Cam");
        const QString frame = " {\n     KltErrorType result;\n     OPX::KltAPI::FeaturePtr pFeature;\n"
                              "     result = Get$Feature (pFeature);\n     if (result != KltErrorSuccess)\n"
                              "         return result;\n";
        const QString end = "     return result;\n }\n";
        const QString accessor =
            " KltErrorType My Cam::Get$Feature (OPX::KltAPI::FeaturePtr & feature)\n {\n"
            "     if (m_$Feature.get() == NULL)\n     {\n         KltErrorType result;\n"
            "         result = GetFeatureByName (\"$\", m_$Feature);\n         if (result != KltErrorSuccess)\n"
            "         {\n             m_$Feature.reset();\n             return result;\n         }\n     }\n"
            "     feature = m_$Feature;\n     return KltErrorSuccess;\n }\n\n";
        const auto of = [](QString text, const char* name) { return text.replace("$", name); };
        const QString expected =
            "\n // Category /C\n KltErrorType My Cam::GetI (KltInt64_t & value)\n" + of(frame, "I") +
            "     result = pFeature->GetValue (value);\n" + end + " KltErrorType My Cam::SetI (KltInt64_t value)\n" +
            of(frame, "I") + "     result = pFeature->SetValue (value);\n" + end + of(accessor, "I") +
            " KltErrorType My Cam::GetE (EEnum & value)\n" + of(frame, "E") + "     KltInt64_t nValue;\n" +
            "     result = pFeature->GetValue (nValue);\n     value = (EEnum) nValue;\n" + end +
            " KltErrorType My Cam::SetE (EEnum value)\n" + of(frame, "E") +
            "     result = pFeature->SetValue (value);\n" + end + of(accessor, "E") + " KltErrorType My Cam::C ()\n" +
            of(frame, "C") + "     result = pFeature->RunCommand ();\n" + end + of(accessor, "C");
        QCOMPARE(Block(&CppClassGenerator::WriteMethodImplementations, 1,
                     {MakeFeature("I", KltFeatureDataInt), MakeFeature("E", KltFeatureDataEnum),
                         MakeFeature("C", KltFeatureDataCommand)},
                     3),
            expected);
    }

    void EveryWriterSaysOnceWhatItHadToChange()
    {
        const std::vector<ScriptedSdk::FeatureData> odd = {
            MakeFeature("a b", KltFeatureDataEnum, ReadOnly, {{"x-y", 1}, {"z", 2}})};
        Messages messages(*m_generator);
        Block(&CppClassGenerator::WriteMethodDeclarations, 0, odd, 1);
        QCOMPARE(messages.Take(), QStringList(Notice("a b", "a_b")));
        Block(&CppClassGenerator::WriteMethodImplementations, 0, odd, 1);
        QCOMPARE(messages.Take(), QStringList(Notice("a b", "a_b")));
        Block(&CppClassGenerator::WriteVariableDeclarations, 0, odd, 1);
        QCOMPARE(messages.Take(), QStringList(Notice("a b", "a_b")));
        Block(&CppClassGenerator::WriteEnumDeclarations, 0, odd, 2);
        QCOMPARE(messages.Take(),
            QStringList({Notice("a bEnum", "a_bEnum"), Notice("a b_x-y", "a_b_x_y"), Notice("a b_z", "a_b_z")}));

        // All names come first, also those of methods that are not written.
        Edit("m_editGetterSuffix")->setText(" g");
        Edit("m_editSetterPrefix")->setText("1");
        Edit("m_editSetterSuffix")->setText("s");
        const QString text = Block(
            &CppClassGenerator::WriteMethodDeclarations, 0, {MakeFeature("a b", KltFeatureDataUnknown, ReadOnly)}, 0);
        QCOMPARE(
            messages.Take(), QStringList({Notice("a b", "a_b"), Notice("Geta_b g", "Geta_b_g"),
                                 Notice("1a_bs", "I1a_bs"), Notice("Geta_bFeature g", "Geta_bFeature_g"),
                                 "Unknown feature type KltFeatureDataUnknown detected! Feature a_b will be ignored."}));
        QVERIFY(text.isEmpty());
    }

    void TemplateLinesAreProcessedOneByOne_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("expected");
        const QByteArray member = "OPX::KltAPI::FeaturePtr m_WFeature;\n";
        const QByteArray declared = "KltErrorType W ();\n";
        QTest::newRow("macro") << QByteArray("#ifndef ### HEADER_FILE_MACRO_NAME ###\n")
                               << QByteArray("#ifndef CAM_H\n");
        QTest::newRow("header") << QByteArray("\"### HEADER_FILE_NAME ###\"\n") << QByteArray("\"Cam.h\"\n");
        QTest::newRow("twice") << QByteArray("### CLASS_NAME ###::### CLASS_NAME ###\n") << QByteArray("Cam::Cam\n");
        QTest::newRow("indented") << QByteArray("x   ### VARIABLE_DECLARATIONS ### y\n") << "    " + member;
        QTest::newRow("tab") << QByteArray("\t### VARIABLE_DECLARATIONS ###\n") << " " + member;
        QTest::newRow("two blocks") << QByteArray("### VARIABLE_DECLARATIONS ### ### METHOD_DECLARATIONS ###\n")
                                    << "\n" + QByteArray(30, ' ') + "// Category /C\n" + QByteArray(30, ' ') +
                                           declared + QByteArray(30, ' ') +
                                           "KltErrorType GetWFeature (OPX::KltAPI::FeaturePtr & feature);\n\n";
        QTest::newRow("name and block") << QByteArray("### CLASS_NAME ### ### VARIABLE_DECLARATIONS ###\n")
                                        << QByteArray("Cam ### VARIABLE_DECLARATIONS ###\n");
        QTest::newRow("other spelling") << QByteArray("### class_name ### ###CLASS_NAME###\n")
                                        << QByteArray("### class_name ### ###CLASS_NAME###\n");
        QTest::newRow("empty lines") << QByteArray("\n\nx\n\n") << QByteArray("\n\nx\n\n");
        QTest::newRow("no end") << QByteArray("x\r\ny") << QByteArray("x\ny\n");
        QTest::newRow("carriage return inside") << QByteArray("x\ry\n") << QByteArray("xy\n");
        QTest::newRow("nothing") << QByteArray() << QByteArray();
    }

    void TemplateLinesAreProcessedOneByOne()
    {
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, expected);
        Run(line, line, true, {MakeFeature("W", KltFeatureDataCommand)});
        QCOMPARE(Output("Cam.h"), expected);
        QCOMPARE(Output("Cam.cpp"), expected);
    }

    void AClassNameCanBeAPlaceholderItself()
    {
        Edit("m_editClassName")->setText("### CLASS_NAME ###");
        Run("### CLASS_NAME ### ### ENUM_DECLARATIONS ###\n");
        QCOMPARE(Output(), QByteArray());
        Edit("m_editHeaderFileName")->setText("Cam.h");
        Edit("m_editClassName")->setText("C");
        Edit("m_editHeaderFileName")->setText("### CLASS_NAME ###");
        Run("### HEADER_FILE_NAME ###\n");
        QCOMPARE(Output("### CLASS_NAME ###"), QByteArray("C\n"));
    }

    void ARunReportsEveryStep()
    {
        QCOMPARE(Run("### METHOD_DECLARATIONS ###\n### ENUM_DECLARATIONS ###\n### VARIABLE_DECLARATIONS ###\n",
                     "### METHOD_IMPLEMENTATIONS ###\n", false, {MakeFeature("a b", KltFeatureDataInt)}),
            QStringList({"Processing header template file 'D/t.h' ...", "Creating header file 'D/Cam.h' ...",
                "... done.", Notice("a b", "a_b"), "    ... 1 method declarations written.",
                "    ... 0 enum declarations written.", Notice("a b", "a_b"),
                "    ... 1 variable declarations written.", "... done.",
                "Processing source template file 'D/t.cpp' ...", "Creating source file 'D/Cam.cpp' ...", "... done.",
                Notice("a b", "a_b"), "    ... 1 method implementations written.", "... done."}));
    }

    void FilesThatExistAreOnlyReplacedOnDemand()
    {
        Write(m_folder->filePath("Cam.h"), "old");
        QCOMPARE(Run("new\n", "new\n", false),
            QStringList({"Processing header template file 'D/t.h' ...", "Creating header file 'D/Cam.h' ...",
                "Error: header file 'D/Cam.h' already exists and should not be overwritten!",
                "Processing source template file 'D/t.cpp' ...", "Creating source file 'D/Cam.cpp' ...", "... done.",
                "... done."}));
        QCOMPARE(Output("Cam.h"), QByteArray("old"));
        QCOMPARE(Output("Cam.cpp"), QByteArray("new\n"));
        Run("new\n");
        QCOMPARE(Output("Cam.h"), QByteArray("new\n"));
        Edit("m_editHeaderFileName")->setText("folder");
        QVERIFY(QDir(m_folder->path()).mkdir("folder"));
        QCOMPARE(Run("", "", false).at(2),
            QString("Error: header file 'D/folder' already exists and should not be overwritten!"));
    }

    void AFailureOfTheHeaderDoesNotStopTheSource()
    {
        Edit("m_editHeaderFileName")->setText("none/Cam.h");
        const QStringList created = Run("x\n", "y\n");
        QCOMPARE(created.size(), 7);
        QVERIFY(created.at(2).startsWith("Error '") && created.at(2).endsWith("' while creating header file!"));
        QCOMPARE(Output("Cam.cpp"), QByteArray("y\n"));

        Edit("m_editHeaderFileName")->setText("Cam.h");
        for (const QString& path : {m_folder->path(), m_folder->filePath("none")})
        {
            Template("m_headerTemplateFileChooser")->setText(path);
            Messages messages(*m_generator);
            m_generator->Run(m_folder->path().toUtf8().constData(), true, FeatureInfos());
            const QStringList read = messages.Take();
            QCOMPARE(read.size(), 6);
            QVERIFY(read.at(1).startsWith("Error '") && read.at(1).endsWith("' while reading header template file!"));
            QCOMPARE(Output("Cam.h"), QByteArray("(no file)"));
        }
    }

    void TextsFromCamerasAreData()
    {
        const std::string name = "%1<b>\xc3\x84 " + std::string(300, 'n');
        const QString cleaned = QString::fromUtf8("_1_b_\xc3\x84_") + QString(300, 'n');
        const QString block = Block(&CppClassGenerator::WriteMethodDeclarations, 0,
            {MakeFeature(name, KltFeatureDataCommand, ReadWrite, {}, "/%1 <i>\xc3\x96")}, 1);
        QVERIFY(block.startsWith(QString::fromUtf8("\n// Category /%1 <i>\xc3\x96\nKltErrorType ") + cleaned + " ();"));
    }

    void TheJavaPageNamesTheFileAfterTheClass()
    {
        Java java;
        QWidget page;
        java.SetupUi(&page);
        QVERIFY(java.CameraName().isEmpty() && !java.OptionsValid());
        QCOMPARE(page.objectName(), QString("JavaOptionsWidget"));
        QCOMPARE(page.size(), QSize(267, 82));
        QCOMPARE(java.Widget()->objectName(), QString("widget"));
        QLineEdit* name = page.findChild<QLineEdit*>("m_editClassName");
        QLineEdit* file = page.findChild<QLineEdit*>("m_editClassFileName");
        QVERIFY(
            name->isEnabled() && !file->isEnabled() && !page.findChild<QWidget*>("m_lblClassFileName")->isEnabled());

        QSignalSpy changed(&java, SIGNAL(OptionsChanged()));
        java.SetCameraName("Cam \xe4");
        QCOMPARE(name->text(), QString("Cam ") + QChar(0xe4));
        QCOMPARE(file->text(), name->text() + ".java");
        QCOMPARE(changed.size(), 2);
        QVERIFY(java.OptionsValid() && java.CameraName().isEmpty());
        name->clear();
        QTest::keyClicks(name, "Foo");
        QCOMPARE(file->text(), QString("Cam ") + QChar(0xe4) + ".java");
        QTest::keyClick(name, Qt::Key_Return);
        QCOMPARE(file->text(), QString("Foo.java"));
        java.SetCameraName("");
        QCOMPARE(file->text(), QString(".java"));
        QVERIFY(!java.OptionsValid());
        java.ClassGeneratorBase::SetCameraName("\xe4");
        QCOMPARE(java.CameraName(), QString(QChar(0xe4)));
    }
};

QTEST_MAIN(GeneratorTest)
#include "GeneratorTest.moc"
