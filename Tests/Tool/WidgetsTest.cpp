#include "FileChooserWidget.h"
#include "FolderChooserWidget.h"
#include "QtCompat.h"
#include "TextEditIoDevice.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTimer>
#include <QtTest>

#include <memory>

namespace
{

const char Green[] = "QLineEdit { background-color: rgb(100,255,100);}";
const char Red[] = "QLineEdit { background-color: rgb(255,100,100);}";

QStringList Paragraphs(const QTextEdit& edit)
{
    QStringList paragraphs;
    for (QTextBlock block = edit.document()->begin(); block.isValid(); block = block.next())
        paragraphs.append(block.text());
    return paragraphs;
}

} // namespace

class WidgetsTest : public QObject
{
    Q_OBJECT

private:
    /// Presses the button twice: the first time, the dialog is cancelled.
    void Browse(
        QLineEdit* edit, QPushButton* button, const QString& start, const QString& chosen, const QString& expected)
    {
        edit->setText(start);
        for (bool accepted : {false, true})
        {
            QString seen;
            QTimer::singleShot(200, this,
                [&]
                {
                    QFileDialog* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                    seen = dialog->windowTitle() + '|' + dialog->directory().path() + '|' +
                           dialog->nameFilters().join(QStringLiteral(";;"));
                    dialog->setDirectory(QFileInfo(chosen).path());
                    dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(chosen);
                    QMetaObject::invokeMethod(dialog, accepted ? "accept" : "reject");
                });
            QTest::mouseClick(button, Qt::LeftButton);
            QVERIFY2(seen.startsWith(expected), qPrintable(seen));
            QCOMPARE(edit->text(), accepted ? chosen : start);
        }
    }

private slots:
    void AFileChooserTellsWhetherSomethingIsThere()
    {
        FileChooserWidget chooser;
        QPalette dark = chooser.palette();
        dark.setColor(QPalette::Text, Qt::white);
        chooser.setPalette(dark);
        QCOMPARE(chooser.m_lineEdit->objectName(), QStringLiteral("m_editDestinationFolder"));
        QCOMPARE(chooser.m_browseButton->objectName(), QStringLiteral("m_btnBrowse"));
        QCOMPARE(chooser.m_layout->objectName(), QStringLiteral("horizontalLayout"));
        QCOMPARE(chooser.m_caption, QStringLiteral("Select File"));
        QVERIFY(!chooser.m_browseButton->icon().isNull() && chooser.m_browseButton->text().isEmpty());
        QVERIFY(chooser.m_filter.isEmpty() && chooser.m_lineEdit->styleSheet().isEmpty());

        QSignalSpy changed(&chooser, SIGNAL(filePathChanged(QString)));
        QTest::keyClicks(chooser.m_lineEdit, QStringLiteral("/tmpx"));
        QCOMPARE(changed.size(), 5);
        QCOMPARE(changed.last().at(0).toString(), QStringLiteral("/tmpx"));
        QCOMPARE(chooser.m_lineEdit->styleSheet(), QLatin1String(Red));
        QCOMPARE(chooser.m_lineEdit->palette().color(QPalette::Text), QColor(Qt::black));
        for (const QString& path : {QDir::tempPath(), QCoreApplication::applicationFilePath()})
        {
            chooser.m_lineEdit->setText(path);
            QCOMPARE(chooser.m_lineEdit->styleSheet(), QLatin1String(Green));
        }
        chooser.m_lineEdit->clear();
        QCOMPARE(chooser.m_lineEdit->styleSheet(), QLatin1String(Red));
        QCOMPARE(changed.size(), 8);
        chooser.m_lineEdit->setText(QString());
        QCOMPARE(changed.size(), 8);
    }

    void BrowsingSetsThePathUnlessItIsCancelled()
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        FileChooserWidget file;
        file.m_caption = QStringLiteral("Select Template File");
        file.m_filter = QStringLiteral("Headers (*.h;*.hpp);;All files (*.*)");
        FolderChooserWidget folder;
        QVERIFY(folder.m_lineEdit->styleSheet().isEmpty());
        Browse(file.m_lineEdit, file.m_browseButton, QCoreApplication::applicationFilePath(),
            QFINDTESTDATA("WidgetsTest.cpp"),
            "Select Template File|" + QCoreApplication::applicationDirPath() + "|Headers (*.h *.hpp);;All files (*.*)");
        Browse(folder.m_lineEdit, folder.m_browseButton, QDir::tempPath(), QCoreApplication::applicationDirPath(),
            "Select File|" + QDir::tempPath());
        QCOMPARE(folder.m_lineEdit->styleSheet(), QLatin1String(Green));
        folder.m_lineEdit->setText(QStringLiteral("/nothing there"));
        QCOMPARE(folder.m_lineEdit->styleSheet(), QLatin1String(Red));
    }

    void EveryMessageIsOneParagraphOfPlainText()
    {
        QTextEdit edit;
        TextEditIoDevice device(nullptr, &edit);
        QVERIFY(device.open(QIODevice::WriteOnly | QIODevice::Text));
        QTextStream stream(&device);
        UseUtf8(stream);
        const QStringList messages = {QStringLiteral("a < b > c"), QStringLiteral("<b>%1</b> & co"),
            QString::fromUtf8("\xc3\x84\xe2\x82\xac\xf0\x9f\x93\xb7"), QString(20000, QLatin1Char('x')),
            QStringLiteral("  blanks  ")};
        for (const QString& message : messages)
        {
            stream << message;
            stream.flush();
            stream.flush();
        }
        QCOMPARE(Paragraphs(edit), messages);
        stream << QStringLiteral("one\ntwo\r\nthree");
        stream.flush();
        QCOMPARE(Paragraphs(edit).last().split(QChar(QChar::LineSeparator)).join(QLatin1String("|")),
            QStringLiteral("one|two|three"));
    }

    void TheDeviceReportsSuccessWhateverHappens()
    {
        std::unique_ptr<QTextEdit> edit(new QTextEdit);
        TextEditIoDevice device(nullptr, edit.get());
        QCOMPARE(device.writeData("abc", 3), qint64(3));
        QCOMPARE(device.writeData("de\0f", 4), qint64(4));
        QCOMPARE(device.writeData("ghij", 2), qint64(2));
        QCOMPARE(Paragraphs(*edit).join(QLatin1String("|")), QStringLiteral("abc|de|gh"));
        char byte = 0;
        QCOMPARE(device.readData(&byte, 1), qint64(0));
        edit.reset();
        QCOMPARE(device.writeData("abc", 3), qint64(3));
    }
};

QTEST_MAIN(WidgetsTest)
#include "WidgetsTest.moc"
