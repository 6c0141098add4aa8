#include "Answer.h"
#include "FileChooserWidget.h"
#include "FolderChooserWidget.h"
#include "QtCompat.h"
#include "TextEditIoDevice.h"
#include "Window/MessageEdit.h"
#include "Window/TextEditBlock.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDir>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextLayout>
#include <QtTest>

#include <algorithm>
#include <cmath>
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

/// How well one colour is seen on the other, as the guidelines for accessibility of the web reckon it.
double Contrast(const QColor& one, const QColor& other)
{
    const auto luminance = [](const QColor& color)
    {
        const auto linear = [](double part)
        { return part <= 0.04 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF()) + 0.05;
    };
    return std::max(luminance(one), luminance(other)) / std::min(luminance(one), luminance(other));
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
        const QString chosen = QStringLiteral(TEMPLATES "/CppTemplate.h");
        file.m_lineEdit->setText(here);
        QCOMPARE(Browse(file.m_lineEdit, file.m_browseButton, chosen),
            "Select Template File|" + here + "|Headers (*.h *.hpp);;All files (*)|" + here + '|' + chosen);

        file.SetDefault(chosen, QStringLiteral("Back"));
        file.m_lineEdit->setText(QStringLiteral("/nothing/there"));
        QCOMPARE(file.m_lineEdit->toolTip(), "The file does not exist.\nThe default is " + chosen);
        AnswerNext<QFileDialog>(
            [&](QFileDialog& dialog)
            {
                QCOMPARE(dialog.sidebarUrls().last(), QUrl::fromLocalFile(QStringLiteral(TEMPLATES)));
                dialog.reject();
            });
        file.m_browseButton->click();
        QVERIFY(!QFileDialog().sidebarUrls().contains(QUrl::fromLocalFile(QStringLiteral(TEMPLATES))));
        QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
        QCoreApplication::sendEvent(file.m_lineEdit, &asked);
        QAction* back = QApplication::activePopupWidget()->actions().last();
        QCOMPARE(back->text(), QStringLiteral("Back"));
        back->trigger();
        QApplication::activePopupWidget()->close();
        QCOMPARE(file.m_lineEdit->text(), chosen);
        QVERIFY(file.m_lineEdit->toolTip().isEmpty());

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

    /// Only on the screen: the text and what is copied stay plain.
    void ErrorsAndTheBeginningOfWorkCanBeSeen()
    {
        MessageEdit edit;
        TextEditIoDevice device(nullptr, &edit);
        const QByteArrayList errors = {"Error 'No' while reading header template file!", "Error: header file",
            "Unable to open camera! Reason: ", "Unknown feature type None detected!"};
        const QByteArrayList messages = errors + QByteArrayList({"Info: 'Error'", "<b>... done.</b>"});
        for (const QByteArray& message : messages)
        {
            if (message == errors.at(1))
                device.StartGroup();
            device.writeData(message.constData(), message.size());
        }
        for (const QColor& base : {QColor(Qt::white), QColor(45, 45, 45)})
        {
            QPalette palette = edit.palette();
            palette.setColor(QPalette::Base, base);
            edit.setPalette(palette);
            for (QTextBlock block = edit.document()->begin(); block.isValid(); block = block.next())
            {
                const auto formats = block.layout()->formats();
                QCOMPARE(formats.size(), errors.contains(block.text().toUtf8()) ? 1 : 0);
                QVERIFY(formats.isEmpty() || Contrast(formats.at(0).format.foreground().color(), base) > 4.5);
                QCOMPARE(block.blockFormat().topMargin() > 0, block.text().toUtf8() == errors.at(1));
                QVERIFY(!block.charFormat().hasProperty(QTextFormat::ForegroundBrush));
            }
        }
        edit.selectAll();
        edit.copy();
        QCOMPARE(QApplication::clipboard()->mimeData()->formats(), QStringList("text/plain"));
        QCOMPARE(QApplication::clipboard()->text(), QString::fromUtf8(messages.join('\n')));
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
