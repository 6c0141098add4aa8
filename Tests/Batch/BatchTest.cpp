// The window and the front end over the real SDK.

#include "TestFolder.h"
#include "WindowDriver.h"

#include <QCheckBox>
#include <QDir>
#include <QProcess>
#include <QSettings>

class BatchTest : public QObject
{
    Q_OBJECT

private slots:
    void ThePairIsTheWindows()
    {
        WindowDriver driver;
        QSettings().clear();
        driver.Open();
        const TestFolder folder;
        QDir(folder.path()).mkdir("window");
        driver.Destination()->setText(folder.filePath("window"));
        driver.Child<QCheckBox>("m_cbOverwriteFiles")->setChecked(true);
        QVERIFY(driver.List()->count() >= 12);
        for (int row = 0; row < driver.List()->count(); ++row)
        {
            driver.List()->setCurrentRow(row);
            const QString serialNumber = driver.List()->item(row)->text().section('(', -1).chopped(1);
            QCOMPARE(driver.Run()->isEnabled(), serialNumber != "NoFeatures");
            if (!driver.Run()->isEnabled())
                continue;
            driver.Run()->click();
            QCOMPARE(QProcess::execute(CLASSGEN,
                         {"generate", "--camera", serialNumber, "--output", folder.filePath("batch"), "--force"}),
                0);
            for (const char* edit : {"m_editHeaderFileName", "m_editSourceFileName"})
            {
                const QString file = driver.Text(edit);
                QVERIFY2(QFile::exists(folder.filePath("window/" + file)) &&
                             folder.Content("batch/" + file) == folder.Content("window/" + file),
                    qPrintable(file));
            }
        }
    }
};

QTEST_MAIN(BatchTest)
#include "BatchTest.moc"
