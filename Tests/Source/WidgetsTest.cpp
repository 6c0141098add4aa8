#include "Answer.h"
#include "FileChooserWidget.h"
#include "FolderChooserWidget.h"
#include "QtCompat.h"
#include "TextEditIoDevice.h"
#include "Window/TextEditBlock.h"

#include <QDir>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>
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
        FileChooserWidget file;
        file.m_caption = QStringLiteral("Select Template File");
        file.m_filter = QStringLiteral("Headers (*.h;*.hpp);;All files (*.*)");
        FolderChooserWidget folder;
        QVERIFY(folder.m_lineEdit->styleSheet().isEmpty());
        const QString here = QCoreApplication::applicationDirPath();
        const QString chosen = QFINDTESTDATA("WidgetsTest.cpp");
        file.m_lineEdit->setText(here);
        QCOMPARE(Browse(file.m_lineEdit, file.m_browseButton, chosen),
            "Select Template File|" + here + "|Headers (*.h *.hpp);;All files (*)|" + here + '|' + chosen);
        folder.m_lineEdit->setText(QDir::tempPath());
        QVERIFY(Browse(folder.m_lineEdit, folder.m_browseButton, here).startsWith("Select File|" + QDir::tempPath()));
        QCOMPARE(folder.m_lineEdit->text(), here);
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

    /// Many messages are laid out at once, and the end is followed unless somebody reads further up.
    void MessagesInABlockAreShownAsSingleOnesAre()
    {
        QTextEdit edit;
        edit.show();
        TextEditIoDevice device(nullptr, &edit);
        QSignalSpy changed(edit.document(), SIGNAL(contentsChanged()));
        const QByteArray message(200, '<');
        for (int count : {3, 2000, 1})
        {
            const TextEditBlock block(edit);
            for (int i = 0; i < count; ++i)
                device.writeData(message.constData(), message.size());
        }
        QCOMPARE(changed.size(), 3);
        QCOMPARE(Paragraphs(edit).count(QString::fromLatin1(message)), 2004);
        QVERIFY(edit.verticalScrollBar()->maximum() > 2000 * edit.fontMetrics().height());
        QCOMPARE(edit.verticalScrollBar()->value(), edit.verticalScrollBar()->maximum());
        device.writeData("a", 1);
        QCOMPARE(edit.verticalScrollBar()->value(), edit.verticalScrollBar()->maximum());
        edit.verticalScrollBar()->setValue(7);
        {
            const TextEditBlock block(edit);
            device.writeData("b", 1);
        }
        device.writeData("c", 1);
        QCOMPARE(edit.verticalScrollBar()->value(), 7);
        QCOMPARE(edit.verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
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
