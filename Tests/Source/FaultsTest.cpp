// Everything that can fail around the window, one fault at a time: what the user sees then, and that the next action
// works. The stored text has the messages without a fault, and for every fault what is different.

#include "Stored.h"
#include "TestData.h"
#include "TestFolder.h"
#include "WindowDriver.h"

#include <QCheckBox>
#include <QRegularExpression>
#include <QSettings>

#include <functional>
#include <memory>

using namespace TestData;
using ScriptedSdk::First;
using ScriptedSdk::Second;
using ScriptedSdk::TheScript;

class FaultsTest : public QObject
{
    Q_OBJECT

private:
    typedef std::function<void()> Action;
    typedef QList<QPair<QString, QString>> Story;

    QString Path(const QString& name) const { return m_folder->filePath(name); }

    /// Templates and an empty output folder, whatever was there before.
    void MakeFolder()
    {
        QFile::remove(Path("t.h"));
        QDir(Path("t.h")).removeRecursively();
        QDir(Path("out")).removeRecursively();
        m_folder->Write(
            "t.h", "### ENUM_DECLARATIONS ###\n### METHOD_DECLARATIONS ###\n### VARIABLE_DECLARATIONS ###\n");
        m_folder->Write("t.cpp", "### CLASS_NAME ###\n");
        QVERIFY(QDir(m_folder->path()).mkdir("out"));
    }

    QString Files() const
    {
        QStringList files;
        foreach (const QString& name, QDir(Path("out")).entryList(QDir::Files))
            files.append(name + ": " + m_folder->Content("out/" + name).simplified());
        return "\n    " + files.join("\n    ");
    }

    QString Seen()
    {
        QString said = m_driver.Said().join("\n    ").replace(m_folder->path(), "");
        // The system's texts for its errors vary.
        said.replace(QRegularExpression("Error '[^']*'"), "Error '...'");
        return "\n    " + said + "\n    " + m_driver.Text("m_editClassName") + "; " +
               (m_driver.Run()->isEnabled() ? "Run" : "no Run") + "; " + m_driver.Rows();
    }

    QString Press(QPushButton* button)
    {
        button->click();
        return Seen() + (button == m_driver.Run() ? Files() : QString());
    }

    QString SelectTheSecond()
    {
        m_driver.List()->setCurrentRow(1);
        return Seen();
    }

    /// The camera that is selected at first is not the one in trouble. Overwriting is allowed.
    Story Tell(const Action& beforeSelecting, const Action& beforeRunning)
    {
        ScriptedSdk::Reset();
        TheScript().cameras = {{"Cam", "S1", {MakeFeature("V", KltFeatureDataInt)}},
            {"Two", "S2",
                {MakeFeature("E", KltFeatureDataEnum, ReadWrite, {{"b", 2}, {"a", 1}}, "/A"),
                    MakeFeature("C", KltFeatureDataCommand)}}};
        MakeFolder();
        m_driver.Open();
        m_driver.List()->setCurrentRow(0);
        m_driver.Said();
        Story story;
        beforeSelecting();
        story.append({"select", SelectTheSecond()});
        beforeRunning();
        story.append({"run", Press(m_driver.Run())});
        story.append({"refresh", Press(m_driver.Refresh())});

        TheScript().faults.clear();
        MakeFolder();
        m_driver.Destination()->setText(Path("out"));
        m_driver.Child<QCheckBox>("m_cbOverwriteFiles")->setChecked(true);
        story.append({"without the fault: refresh", Press(m_driver.Refresh())});
        story.append({"without the fault: select", SelectTheSecond()});
        story.append({"without the fault: run", Press(m_driver.Run())});
        m_driver.Close();
        return story;
    }

    static void Nothing() {}

    void Add(const QString& name, const Action& beforeSelecting, const Action& beforeRunning)
    {
        const Story story = Tell(beforeSelecting, beforeRunning);
        m_text += "== " + name + "\n";
        for (int i = 0; i < story.size(); ++i)
            if (m_undisturbed.isEmpty() || story.at(i) != m_undisturbed.at(i))
                m_text += story.at(i).first + story.at(i).second + "\n";
        if (m_undisturbed.isEmpty())
            m_undisturbed = story;
    }

    Story m_undisturbed;
    QString m_text;
    WindowDriver m_driver;
    std::unique_ptr<TestFolder> m_folder;

private slots:
    void init()
    {
        m_folder.reset(new TestFolder);
        m_undisturbed.clear();
        m_text.clear();
        QSettings().clear();
        QSettings().setValue("CppClassGenerator/HeaderTemplateFilePath", Path("t.h"));
        QSettings().setValue("CppClassGenerator/SourceTemplateFilePath", Path("t.cpp"));
        QSettings().setValue("DestinationFolder", Path("out"));
        QSettings().setValue("OverwriteFiles", true);
        Add("nothing fails", Nothing, Nothing);
    }

    void OfTheSdk()
    {
        const QList<QPair<const char*, int>> calls = {{"KoltaSystem::GetCameras", 2}, {"Camera::GetName", 2},
            {"Camera::GetSerialNumber", 2}, {"Camera::Open", 1}, {"FeatureContainer::GetFeatures", 2},
            {"Camera::Close", 1}, {"Feature::GetName", 2}, {"Feature::GetCategory", 2}, {"Feature::GetDataType", 1},
            {"Feature::GetFlags", 1}, {"Feature::GetEntries", 2}, {"EnumEntry::GetName", 2}, {"EnumEntry::GetValue", 1},
            {"KoltaSystem::Shutdown", 1}};
        KltErrorType code = 0;
        for (const auto& call : calls)
            for (int which = 1; which <= call.second; ++which)
            {
                --code;
                const auto fail = [&] { TheScript().Fail(call.first, code, which == 1 ? First : Second); };
                Add(QString("%1, call %2, gives %3").arg(call.first).arg(which).arg(code), fail, Nothing);
                code %= 19;
            }
        const QByteArray difference = DifferenceFromStored("SdkFaults.txt", m_text);
        QVERIFY2(difference.isEmpty(), difference.constData());
    }

    /// Between the moment when Run can be pressed and the moment when it is.
    void OfFiles()
    {
        const QString header = Path("t.h");
        const QString output = Path("out/TwoCamera.h");
        const auto overwrite = [&](bool allowed)
        { m_driver.Child<QCheckBox>("m_cbOverwriteFiles")->setChecked(allowed); };
        // Even root cannot open a link to itself.
        const auto spoil = [](const QString& path) { QVERIFY(QFile::link(path, path)); };
        Add("the template is gone", Nothing, [&] { QFile::remove(header); });
        Add("the template is a folder", Nothing, [&] { QVERIFY(QFile::remove(header) && QDir().mkdir(header)); });
        Add("the template cannot be read", Nothing,
            [&]
            {
                QFile::remove(header);
                spoil(header);
            });
        Add("the output folder is gone", Nothing, [&] { QDir(Path("out")).removeRecursively(); });
        Add("the output folder cannot be written", Nothing, [&] { m_driver.Destination()->setText("/proc"); });
        Add("the output cannot be written", Nothing, [&] { spoil(output); });
        Add("the output is a folder", Nothing, [&] { QVERIFY(QDir().mkdir(output)); });
        Add("the output exists", Nothing,
            [&]
            {
                m_folder->Write("out/TwoCamera.h", "old");
                overwrite(false);
            });
        Add("the output is a link to nothing", Nothing,
            [&]
            {
                QVERIFY(QFile::link(Path("nothing"), output));
                overwrite(false);
            });
        Add("the output is on a full disk", Nothing,
            [&]
            {
                m_driver.Destination()->setText("/dev");
                m_driver.Edit("m_editHeaderFileName")->setText("full");
                m_driver.Edit("m_editSourceFileName")->setText("full");
            });
        const QByteArray difference = DifferenceFromStored("FileFaults.txt", m_text);
        QVERIFY2(difference.isEmpty(), difference.constData());
    }

    /// Run keeps its state, even where it would otherwise have lost it.
    void OfACameraThatIsSelectedMeanwhile()
    {
        for (const char* call : {"Camera::Open", "FeatureContainer::GetFeatures"})
        {
            const auto failWithoutFolder = [&]
            {
                TheScript().Fail(call, -12);
                QDir(Path("out")).removeRecursively();
            };
            const Story story = Tell(failWithoutFolder, Nothing);
            QVERIFY2(story.first().second.contains("; Run;"), call);
        }
    }
};

QTEST_MAIN(FaultsTest)
#include "FaultsTest.moc"
