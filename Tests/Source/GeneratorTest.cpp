#include "CppClassGenerator.h"
#include "FileChooserWidget.h"
#include "JavaClassGenerator.h"
#include "TestData.h"
#include "TestFolder.h"

#include <QDir>
#include <QFile>
#include <QFocusEvent>
#include <QLineEdit>
#include <QSettings>
#include <QSignalSpy>
#include <QTextStream>
#include <QtTest>

#include <memory>

using namespace TestData;

namespace
{

class Java : public JavaClassGenerator
{
public:
    void Run(const char*, bool, const FeatureInfos&) override {}
};

QString Notice(const QString& from, const QString& to)
{
    return "Info: '" + from + "' is not a valid C++ identifier -> changed to '" + to + "'!";
}

} // namespace

/// What stored classes and faults do not show: single rules, options, names.
class GeneratorTest : public QObject
{
    Q_OBJECT

private:
    QLineEdit* Edit(const char* name) { return m_page->findChild<QLineEdit*>(QLatin1String(name)); }

    QLineEdit* Template(const char* kind)
    {
        return m_page->findChild<FileChooserWidget*>(QString("m_%1TemplateFileChooser").arg(kind))->m_lineEdit;
    }

    QList<QLineEdit*> StoredEdits()
    {
        return {Edit("m_editGetterPrefix"), Edit("m_editGetterSuffix"), Edit("m_editSetterPrefix"),
            Edit("m_editSetterSuffix"), Template("header"), Template("source")};
    }

    void Build()
    {
        m_generator.reset(new CppClassGenerator);
        m_page.reset(new QWidget);
        m_generator->SetupUi(m_page.get());
        m_generator->ReadSettings();
    }

    /// What both templates of this content make; the messages go to m_said.
    QByteArray Run(const QByteArray& content, const std::vector<ScriptedSdk::FeatureData>& features = {})
    {
        for (const char* kind : {"header", "source"})
            Template(kind)->setText(m_folder->Write("t", content));
        Messages messages(*m_generator);
        m_generator->Run((m_folder->path() + "/./x/../").toUtf8().constData(), true, Catalogue(features));
        m_said = messages.Take().replaceInStrings(m_folder->path(), "");
        const QByteArray made = m_folder->Content(Edit("m_editHeaderFileName")->text());
        return m_folder->Content(Edit("m_editSourceFileName")->text()) == made ? made : "another source: " + made;
    }

    std::unique_ptr<TestFolder> m_folder;
    std::unique_ptr<QWidget> m_page;
    std::unique_ptr<CppClassGenerator> m_generator;
    QStringList m_said;

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
        m_folder.reset(new TestFolder);
        Build();
        Edit("m_editClassName")->setText("Cam");
        Edit("m_editHeaderFileName")->setText("Cam.h");
        Edit("m_editSourceFileName")->setText("Cam.cpp");
    }

    void NamesBecomeIdentifiers()
    {
        const QList<QPair<QString, QString>> rows = {{"_cam2", "_cam2"}, {"", ""}, {"My Camera-1", "My_Camera_1"},
            {"a..b", "a__b"}, {"2ndCam", "I2ndCam"}, {QChar(0x0663), QString("I") + QChar(0x0663)},
            {QChar(0xb2), QChar(0xb2)}, {QChar(0xc4), QChar(0xc4)}, {QString::fromUtf8("\xf0\x9f\x93\xb7x"), "__x"},
            {"%1<b>\n", "_1_b__"}};
        Messages messages(*m_generator);
        for (const auto& row : rows)
        {
            QCOMPARE(m_generator->GetValidIdentifierName(row.first), row.second);
            QCOMPARE(messages.Take().join('|'), row.first == row.second ? QString() : Notice(row.first, row.second));
        }
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
    }

    void OptionsAreValidWhenEverythingIsNamedAndTheTemplatesExist()
    {
        const QString missing = m_folder->filePath("none");
        const QList<QPair<QLineEdit*, QStringList>> required = {{Edit("m_editClassName"), {""}},
            {Edit("m_editHeaderFileName"), {""}}, {Edit("m_editSourceFileName"), {""}},
            {Template("header"), {"", missing}}, {Template("source"), {"", missing}}};
        QSignalSpy changed(m_generator.get(), SIGNAL(OptionsChanged()));
        for (const auto& edit : required)
            for (const QString& text : edit.second)
            {
                const QString before = edit.first->text();
                QVERIFY(m_generator->OptionsValid());
                edit.first->setText(text);
                QVERIFY(!m_generator->OptionsValid());
                edit.first->setText(before);
            }
        QCOMPARE(changed.size(), 14);
        Template("header")->setText(m_folder->path());
        changed.clear();
        for (int i = 0; i < 4; ++i)
            StoredEdits().at(i)->setText(i % 2 == 0 ? "" : "x");
        QVERIFY(m_generator->OptionsValid() && changed.isEmpty());
    }

    void OptionsOutliveTheSession()
    {
        const QString templates = QCoreApplication::applicationDirPath() + "/Templates/CppTemplate";
        const QStringList keys = {"GetterPrefix", "GetterSuffix", "SetterPrefix", "SetterSuffix",
            "HeaderTemplateFilePath", "SourceTemplateFilePath"};
        const QStringList defaults = {"Get", "", "Set", "", templates + ".h", templates + ".cpp"};
        const QStringList texts = {"", "g", "", "s", "/h, x", ""};
        for (int i = 0; i < keys.size(); ++i)
        {
            QCOMPARE(StoredEdits().at(i)->text(), defaults.at(i));
            StoredEdits().at(i)->setText(texts.at(i));
        }
        m_generator->WriteSettings();
        QCOMPARE(QSettings().allKeys().size(), 6);
        Build();
        QVERIFY(Edit("m_editClassName")->text().isEmpty());
        for (int i = 0; i < keys.size(); ++i)
        {
            QCOMPARE(StoredEdits().at(i)->text(), texts.at(i));
            QCOMPARE(QSettings().value("CppClassGenerator/" + keys.at(i)).toString(), texts.at(i));
        }
    }

    void EveryOptionReachesItsPlace()
    {
        int number = 0;
        for (const char* name : {"m_editClassName", "m_editHeaderFileName", "m_editSourceFileName",
                 "m_editGetterPrefix", "m_editGetterSuffix", "m_editSetterPrefix", "m_editSetterSuffix"})
            Edit(name)->setText("x" + QString::number(++number));
        for (const char* kind : {"header", "source"})
        {
            const QByteArray names = "### CLASS_NAME ### ### HEADER_FILE_NAME ###\n### METHOD_DECLARATIONS ###\n";
            Template(kind)->setText(m_folder->Write(kind, kind + names));
        }
        m_generator->Run(m_folder->path().toUtf8().constData(), true, Catalogue({MakeFeature("W", KltFeatureDataInt)}));
        const QByteArray rest = "x1 x2\n\n// Category /C\nKltErrorType x4Wx5 (KltInt64_t & value);\n"
                                "KltErrorType x6Wx7 (KltInt64_t value);\n"
                                "KltErrorType x4WFeaturex5 (OPX::KltAPI::FeaturePtr & feature);\n\n";
        QCOMPARE(m_folder->Content("x2"), "header" + rest);
        QCOMPARE(m_folder->Content("x3"), "source" + rest);
    }

    void AllNamesOfAFeatureAreMadeBeforeItsTypeIsLookedAt()
    {
        Edit("m_editGetterSuffix")->setText(" g");
        Edit("m_editSetterPrefix")->setText("1");
        Edit("m_editSetterSuffix")->setText("s");
        QCOMPARE(
            Run("### METHOD_DECLARATIONS ###\n", {MakeFeature("a b", KltFeatureDataUnknown, ReadOnly)}), QByteArray());
        QCOMPARE(m_said.mid(3, 5),
            QStringList({Notice("a b", "a_b"), Notice("Geta_b g", "Geta_b_g"), Notice("1a_bs", "I1a_bs"),
                Notice("Geta_bFeature g", "Geta_bFeature_g"),
                "Unknown feature type KltFeatureDataUnknown detected! Feature a_b will be ignored."}));
    }

    void TemplateLinesAreProcessedOneByOne()
    {
        const QByteArray member = "OPX::KltAPI::FeaturePtr m_WFeature;\n";
        const QByteArray indent(30, ' ');
        const QList<QPair<QByteArray, QByteArray>> rows = {
            {"#ifndef ### HEADER_FILE_MACRO_NAME ###\n", "#ifndef CAM_H\n"},
            {"\"### HEADER_FILE_NAME ###\"\n", "\"Cam.h\"\n"},
            {"### CLASS_NAME ###::### CLASS_NAME ###\n", "Cam::Cam\n"},
            {"x   ### VARIABLE_DECLARATIONS ### y\n", "    " + member},
            {"\t### VARIABLE_DECLARATIONS ###\n", " " + member},
            {"### VARIABLE_DECLARATIONS ### ### METHOD_DECLARATIONS ###\n",
                "\n" + indent + "// Category /C\n" + indent + "KltErrorType W ();\n" + indent +
                    "KltErrorType GetWFeature (OPX::KltAPI::FeaturePtr & feature);\n\n"},
            {"### CLASS_NAME ### ### VARIABLE_DECLARATIONS ###\n", "Cam ### VARIABLE_DECLARATIONS ###\n"},
            {"### class_name ### ###CLASS_NAME###\n", "### class_name ### ###CLASS_NAME###\n"},
            {"\n\nx\n\n", "\n\nx\n\n"}, {"x\r\ny", "x\ny\n"}, {"x\ry\n", "xy\n"}, {"", ""}};
        for (const auto& row : rows)
            QCOMPARE(Run(row.first, {MakeFeature("W", KltFeatureDataCommand)}), row.second);
        QCOMPARE(m_said, QStringList({"Processing header template file '/t' ...", "Creating header file '/Cam.h' ...",
                             "... done.", "... done.", "Processing source template file '/t' ...",
                             "Creating source file '/Cam.cpp' ...", "... done.", "... done."}));
    }

    void AClassNameCanBeAPlaceholderItself()
    {
        Edit("m_editClassName")->setText("### CLASS_NAME ###");
        QCOMPARE(Run("### CLASS_NAME ### ### ENUM_DECLARATIONS ###\n"), QByteArray());
        Edit("m_editClassName")->setText("C");
        Edit("m_editHeaderFileName")->setText("### CLASS_NAME ###");
        QCOMPARE(Run("### HEADER_FILE_NAME ###\n"), QByteArray("C\n"));
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
        QVERIFY(name->isEnabled() && !file->isEnabled());

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
