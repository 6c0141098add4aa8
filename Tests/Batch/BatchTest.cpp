// The window and the front end over the real SDK.

#include "KoltaClassGenerator.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

class BatchTest : public QObject
{
    Q_OBJECT

private:
    QByteArray Content(const QString& path) const
    {
        QFile file(m_folder.filePath(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "no " + path.toUtf8();
    }

    QTemporaryDir m_folder;

private slots:
    void ThePairIsTheWindows()
    {
        QCoreApplication::setOrganizationName("OPX");
        QCoreApplication::setApplicationName("KoltaClassGenerator");
        QSettings().clear();
        QDir(m_folder.path()).mkdir("window");
        KoltaClassGenerator window;
        QListWidget* list = window.findChild<QListWidget*>();
        QPushButton* run = window.findChild<QPushButton*>("m_btnRun");
        window.centralWidget()
            ->findChild<QLineEdit*>("m_editDestinationFolder", Qt::FindDirectChildrenOnly)
            ->setText(m_folder.filePath("window"));
        window.findChild<QCheckBox*>()->setChecked(true);
        QVERIFY(list->count() >= 12);
        for (int row = 0; row < list->count(); ++row)
        {
            list->setCurrentRow(row);
            const QString serialNumber = list->item(row)->text().section('(', -1).chopped(1);
            QCOMPARE(run->isEnabled(), serialNumber != "NoFeatures");
            if (!run->isEnabled())
                continue;
            run->click();
            QCOMPARE(QProcess::execute(CLASSGEN,
                         {"generate", "--camera", serialNumber, "--output", m_folder.filePath("batch"), "--force"}),
                0);
            const QString name = window.findChild<QLineEdit*>("m_editClassName")->text();
            for (const QString& file : {name + ".h", name + ".cpp"})
                QVERIFY2(QFile::exists(m_folder.filePath("window/" + file)) &&
                             Content("batch/" + file) == Content("window/" + file),
                    qPrintable(file));
        }
    }
};

QTEST_MAIN(BatchTest)
#include "BatchTest.moc"
