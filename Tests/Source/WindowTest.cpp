#include "Answer.h"
#include "FileChooserWidget.h"
#include "Stored.h"
#include "TestData.h"
#include "WindowDriver.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDesktopServices>
#include <QDropEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextDocumentFragment>

#include <algorithm>
#include <csignal>

using namespace TestData;
using ScriptedSdk::First;
using ScriptedSdk::Second;
using ScriptedSdk::TheScript;

namespace
{

/// What is where in a grid or a form.
QString Cells(const QLayout& layout)
{
    const QGridLayout* grid = qobject_cast<const QGridLayout*>(&layout);
    const QFormLayout* form = qobject_cast<const QFormLayout*>(&layout);
    QString text;
    for (int i = 0; i < layout.count(); ++i)
    {
        int at[] = {0, 0, 0, 0};
        QFormLayout::ItemRole role = QFormLayout::LabelRole;
        if (grid != nullptr)
            grid->getItemPosition(i, &at[0], &at[1], &at[2], &at[3]);
        if (form != nullptr)
            form->getItemPosition(i, &at[0], &role);
        QLayoutItem* item = layout.itemAt(i);
        const QString name = item->layout() != nullptr   ? item->layout()->objectName()
                             : item->widget() != nullptr ? item->widget()->objectName()
                                                         : QString("space");
        text += QString(", %1 at %2,%3 %4x%5").arg(name).arg(at[0]).arg(at[1] + role).arg(at[2]).arg(at[3]);
    }
    return text;
}

/// The object and its settings, as far as they do not depend on the style or the version of Qt.
QString Described(const QObject& object)
{
    static const char* const Properties[] = {"windowTitle", "title", "text", "shortcut", "toolTip", "accessibleName",
        "accessibleDescription", "checked", "readOnly", "autoFillBackground", "tabsClosable", "documentMode"};
    QString text = QString(object.metaObject()->className()) + ' ' + object.objectName();
    for (const char* name : Properties)
    {
        const QString value =
            object.property(name).toString().replace(QCoreApplication::applicationDirPath(), "BIN").replace('\n', ' ');
        if (!value.isEmpty() && value != "false")
            text += QString(", %1 '%2'").arg(name, value);
    }
    if (const QLayout* layout = qobject_cast<const QLayout*>(&object))
        return text + Cells(*layout);
    const QWidget* widget = qobject_cast<const QWidget*>(&object);
    if (widget != nullptr)
        text +=
            QString(widget->isEnabled() ? "" : ", disabled") +
            (widget->layoutDirection() == Qt::RightToLeft ? ", from right to left" : "") +
            (widget->isWindow() ? QString()
                                : QString(", at least %1x%2").arg(widget->minimumWidth()).arg(widget->minimumHeight()));
    for (const char* name : {"alignment", "elideMode"})
        if (object.property(name).isValid())
            text += QString(", %1 %2").arg(name).arg(object.property(name).toInt());
    if (const QLabel* label = qobject_cast<const QLabel*>(&object))
        text += ", buddy " + (label->buddy() != nullptr ? label->buddy()->objectName() : "none");
    if (const QAbstractButton* button = qobject_cast<const QAbstractButton*>(&object))
        text += button->icon().isNull() ? "" : ", with icon";
    if (const FileChooserWidget* chooser = qobject_cast<const FileChooserWidget*>(&object))
        text += ", caption '" + chooser->m_caption + "', filter '" + chooser->m_filter + "'";
    foreach (const QAction* action, widget != nullptr ? widget->actions() : QList<QAction*>())
        text += ", " + (action->menu() != nullptr ? action->menu()->objectName() : action->objectName());
    return text;
}

/// Everything below an object that has a name of ours, by name: in which order children are kept is up to Qt.
QString Tree(const QObject& object, int depth)
{
    QString text = QString(2 * depth, ' ') + Described(object) + '\n';
    QObjectList children = object.children();
    std::stable_sort(children.begin(), children.end(),
        [](const QObject* a, const QObject* b) { return a->objectName() < b->objectName(); });
    foreach (const QObject* child, children)
        if (child->objectName() == "qt_tabwidget_stackedwidget" ||
            (!child->objectName().isEmpty() && child->objectName()[0].isLetter() &&
                !child->objectName().startsWith("qt_")))
            text += Tree(*child, depth + 1);
    return text;
}

/// A copy, since the clipboard keeps what it is given.
QMimeData* Copied(const QMimeData& given)
{
    auto* copied = new QMimeData;
    for (const QString& format : given.formats())
        copied->setData(format, given.data(format));
    return copied;
}

void Drop(QLineEdit& edit, const QMimeData& given)
{
    const QPoint at(edit.width() - 5, 5);
    QDragEnterEvent enter(at, Qt::CopyAction, &given, Qt::LeftButton, Qt::NoModifier);
    QDragMoveEvent move(at, Qt::CopyAction, &given, Qt::LeftButton, Qt::NoModifier);
    QDropEvent drop(at, Qt::CopyAction, &given, Qt::LeftButton, Qt::NoModifier);
    for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), static_cast<QDropEvent*>(&move), &drop})
    {
        event->setAccepted(false);
        QCoreApplication::sendEvent(&edit, event);
        QVERIFY(event->isAccepted());
    }
}

void PasteByKey(QLineEdit& edit, const QMimeData& given)
{
    QApplication::clipboard()->setMimeData(Copied(given));
    QTest::keySequence(&edit, QKeySequence::Paste);
}

void PasteByMenu(QLineEdit& edit, const QMimeData& given)
{
    QApplication::clipboard()->setMimeData(Copied(given));
    QContextMenuEvent asked(QContextMenuEvent::Keyboard, QPoint(5, 5), edit.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&edit, &asked);
    QWidget* menu = QApplication::activePopupWidget();
    QVERIFY(menu != nullptr);
    for (QAction* action : menu->actions())
        if (action->text().remove('&').startsWith("Paste"))
            action->trigger();
    menu->close();
}

void PasteByMouse(QLineEdit& edit, const QMimeData& given)
{
    if (QApplication::clipboard()->supportsSelection())
        QApplication::clipboard()->setMimeData(Copied(given), QClipboard::Selection);
    QTest::mouseClick(&edit, Qt::MiddleButton, Qt::NoModifier, QPoint(edit.width() - 5, 5));
}

} // namespace

class WindowTest : public QObject, protected WindowDriver
{
    Q_OBJECT

private:
    /// Presses a key wherever the focus is.
    static void Press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    /// Presses Tab until a widget of this name has the focus.
    static void TabTo(const char* name)
    {
        for (int i = 0; i < 40 && QApplication::focusWidget()->objectName() != QLatin1String(name); ++i)
            Press(Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString(name));
    }

    /// Presses a key in the window and returns what the box that it opens shows.
    QString PressAndLook(Qt::KeyboardModifiers modifiers)
    {
        QString seen;
        AnswerNext<QMessageBox>(
            [&seen, this](QMessageBox& box)
            {
                seen = box.parentWidget() == Window() ? box.windowTitle() + '|' + box.text() : "";
                box.close();
            });
        Window()->activateWindow();
        if (QTest::qWaitForWindowActive(Window()))
            QTest::keyClick(Window(), Qt::Key_F1, modifiers);
        return seen;
    }

    /// Keys, and then a click on Refresh, which reach the window when the event loop runs again.
    void PressSoon(const QString& keys)
    {
        QWindow* window = Window()->windowHandle();
        for (const QChar key : keys)
            qApp->postEvent(window, new QKeyEvent(QEvent::KeyPress, key.toUpper().unicode(), Qt::NoModifier, key));
        const QPointF at = Refresh()->mapTo(Window(), Refresh()->rect().center());
        const QPointF onScreen = Window()->mapToGlobal(at.toPoint());
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            qApp->postEvent(window, new QMouseEvent(type, at, at, onScreen, Qt::LeftButton, Qt::LeftButton, {}));
    }

    /// Where the row is in the window; outside the rows for numbers that no row has.
    QPoint Place(int row)
    {
        const QRect first = List()->visualItemRect(List()->item(0));
        return List()->viewport()->mapTo(Window(), first.center() + QPoint(0, row * first.height()));
    }

    /// The row that is highlighted, is current and belongs to the camera that was read last; -2 if they differ.
    int SelectedRow()
    {
        const QString name = Text("m_editClassName");
        const int row = List()->currentRow();
        if (row < 0)
            return List()->selectedItems().isEmpty() ? -1 : -2;
        const bool read =
            name == QString::fromStdString(TheScript().cameras[static_cast<std::size_t>(row)].name) + "Camera";
        return read && List()->selectedItems() == QList<QListWidgetItem*>({List()->item(row)}) ? row : -2;
    }

    static bool Waits()
    {
        return QApplication::overrideCursor() != nullptr && QApplication::overrideCursor()->shape() == Qt::WaitCursor;
    }

    /// Notes the messages that came last when the box was painted during work.
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && Waits())
            m_painted += Child<QTextEdit>("m_messages")->document()->lastBlock().text();
        return false;
    }

    QString m_painted;
    QUrl m_opened;
    std::unique_ptr<QTemporaryDir> m_folder;

public slots:
    void OnUrl(const QUrl& url) { m_opened = url; }

private slots:
    void init()
    {
        ScriptedSdk::Reset();
        QSettings().clear();
        m_folder.reset(new QTemporaryDir);
        TheScript().cameras = {
            {"Cam", "S1", {MakeFeature("W", KltFeatureDataInt), MakeFeature("X", KltFeatureDataEnum)}},
            {"Two", "S2", {MakeFeature("V", KltFeatureDataInt)}}};
    }

    void cleanup() { Close(); }

    void TheFormIsLaidOutAsUsersKnowIt()
    {
        Open();
        QVERIFY(!Window()->windowIcon().isNull());
        QCOMPARE(Window()->findChild<QLayout*>("verticalLayout")->contentsMargins().bottom(), 30);
        QCOMPARE(Window()->findChild<QLayout*>("gridLayout_2")->contentsMargins(), QMargins(11, 11, 11, 11));
        for (QLineEdit* path :
            {Destination(), Edit("m_headerTemplateFileChooser"), Edit("m_sourceTemplateFileChooser")})
            path->clear();
        const QByteArray difference = DifferenceFromStored("Window.txt", Tree(*Window(), 0));
        QVERIFY2(difference.isEmpty(), difference.constData());
    }

    /// Also on a low screen, where the messages are the first to make room.
    void TheWindowOpensWithRoomForItsFieldsButNotBelowTheScreen()
    {
        const QFont usual = QApplication::font();
        for (int points : {6, 9, 11})
        {
            QFont font = usual;
            font.setPointSize(points);
            QApplication::setFont(font);
            Open();
            const int screen = Window()->screen()->availableSize().height();
            const int wanted = points == 6 ? 482 : Window()->sizeHint().height();
            QVERIFY(Window()->height() == wanted || (wanted > screen - 50 && Window()->height() <= screen));
            for (const char* name : {"m_editClassName", "m_editGetterPrefix", "m_sourceTemplateFileChooser"})
                QVERIFY(Edit(name)->height() >= Edit(name)->sizeHint().height() || screen < 500);
            Close();
            QApplication::setFont(usual);
        }
    }

    void AClassIsGeneratedByKeyboardAlone()
    {
        Open();
        QCOMPARE(Said(), QStringList("2 cameras found."));
        QCOMPARE(Rows(), QString("Cam (S1), Two (S2)"));
        TabTo("m_listBoxCameras");
        Press(Qt::Key_Down);
        QCOMPARE(Said().first(), QString("Reading features of camera 'Cam' ..."));
        Press(Qt::Key_Down);
        QCOMPARE(Said(), QStringList({"Reading features of camera 'Two' ...",
                             "... done, 1 features in 1 categories and 0 enums found."}));
        QCOMPARE(Text("m_editClassName"), QString("TwoCamera"));
        QVERIFY(!Run()->isEnabled());
        Press(Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), m_folder->path());
        QVERIFY(Run()->isEnabled());
        QStringList order;
        while (order.size() < 40 && !order.contains("m_messages"))
        {
            Press(Qt::Key_Tab);
            order.append(QApplication::focusWidget()->objectName());
        }
        QCOMPARE(order.join(" "),
            QString("m_btnBrowse m_cbOverwriteFiles qt_tabwidget_tabbar m_editClassName m_editHeaderFileName "
                    "m_editSourceFileName m_editGetterPrefix m_editGetterSuffix m_editSetterPrefix m_editSetterSuffix "
                    "m_editDestinationFolder m_btnBrowse m_editDestinationFolder m_btnBrowse m_btnRun m_messages"));
        Press(Qt::Key_Backtab);
        Press(Qt::Key_Space);
        QCOMPARE(Said().size(), 12);
        QVERIFY(QFile::exists(m_folder->filePath("TwoCamera.h")) && QFile::exists(m_folder->filePath("TwoCamera.cpp")));
        Press(Qt::Key_Space);
        QVERIFY(Said().at(2).endsWith("already exists and should not be overwritten!"));
        TabTo("m_messages");
        Press(Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString("m_btnRefresh"));
        TabTo("m_cbOverwriteFiles");
        Press(Qt::Key_Space);
        TabTo("m_btnRun");
        Press(Qt::Key_Space);
        QCOMPARE(Said().size(), 12);

        // From everywhere, and what was typed counts.
        for (const char* name : {"m_editClassName", "m_listBoxCameras", "m_messages"})
        {
            TabTo(name);
            if (QApplication::focusWidget() == Edit("m_editClassName"))
                QTest::keyClicks(QApplication::focusWidget(), "My Camera");
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return, Qt::ControlModifier);
            QCOMPARE(QApplication::focusWidget()->objectName(), QString(name));
            QVERIFY(Said().contains("Creating header file '" + m_folder->filePath("My_Camera.h") + "' ..."));
        }
        Press(Qt::Key_F5);
        QCOMPARE(Said(), QStringList("2 cameras found."));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(Said().isEmpty());
    }

    void RunFollowsItsConditions()
    {
        Open();
        Destination()->setText(QCoreApplication::applicationFilePath());
        QCOMPARE(Run()->toolTip(), QString("Select a camera."));
        List()->setCurrentRow(0);
        QVERIFY(Run()->isEnabled());
        QCOMPARE(Run()->toolTip(), QString("Write the class (Ctrl+Return)"));
        // What is checked first is spoiled last.
        const struct
        {
            QLineEdit* edit;
            const char* text;
            const char* missing;
        } steps[] = {
            {Edit("m_sourceTemplateFileChooser"), "none", "The source template does not exist."},
            {Edit("m_headerTemplateFileChooser"), "", "The header template does not exist."},
            {Edit("m_editSourceFileName"), "", "Enter a source file name."},
            {Edit("m_editHeaderFileName"), "", "Enter a header file name."},
            {Edit("m_editClassName"), "", "Enter a class name."},
            {Destination(), "none", "The destination folder does not exist."},
            {Destination(), "", "Choose a destination folder."},
        };
        QStringList before;
        for (const auto& step : steps)
        {
            before.append(step.edit->text());
            step.edit->setText(step.text);
            QCOMPARE(Run()->toolTip(), QString(step.missing));
            QVERIFY(!Run()->isEnabled());
        }
        for (const auto& step : steps)
            step.edit->setText(before.takeFirst());
        Destination()->setText(m_folder->path());
        TheScript().cameras[1].features.clear();
        QTest::mouseClick(Refresh(), Qt::LeftButton);
        QVERIFY(!Run()->isEnabled());
        for (int row : {1, 0, 1})
        {
            List()->setCurrentRow(row);
            QVERIFY(Run()->isEnabled() == (row == 0));
        }
        QCOMPARE(Run()->toolTip(), QString("The camera has no features."));
    }

    void PathsAreTakenAsPeopleGiveThem()
    {
        const struct
        {
            const char* urls;
            const char* text;
            QString path;
        } rows[] = {{"file:///tmp/a%20b", "", "/tmp/a b"}, {"file://localhost/tmp", "/other", "/tmp"},
            {"", "file:///tmp/c%3F\r\n", "/tmp/c?"}, {"", "/tmp/d \n\n", "<>/tmp/d "},
            {"", "~/e", "<>" + QDir::homePath() + "/e"}, {"", "~e/~/", "<>~e/~/"},
            {"file:///tmp\nfile:///", "two", "<>two"}, {"https://h/p", "page", "<>page"},
            {"file://server/p", "share", "<>share"}};
        Open();
        const QList<void (*)(QLineEdit&, const QMimeData&)> ways = {Drop, PasteByKey, PasteByMenu, PasteByMouse};
        for (QLineEdit* edit :
            {Destination(), Edit("m_headerTemplateFileChooser"), Edit("m_sourceTemplateFileChooser")})
            for (const auto& row : rows)
                for (const auto& way : ways)
                {
                    QMimeData given;
                    if (*row.urls != '\0')
                        given.setUrls(QUrl::fromStringList(QString(row.urls).split('\n')));
                    if (*row.text != '\0')
                        given.setText(row.text);
                    edit->setText("<>");
                    way(*edit, given);
                    const bool possible = way != PasteByMouse || QApplication::clipboard()->supportsSelection();
                    QCOMPARE(edit->text(), possible ? row.path : QString("<>"));
                }
        Destination()->clear();
        QTest::keyClicks(Destination(), "~/file:///");
        QCOMPARE(Destination()->text(), QString("~/file:///"));
        QCOMPARE(Destination()->toolTip(), QString("The destination folder does not exist."));
        Destination()->setText(m_folder->path());
        QVERIFY(Destination()->toolTip().isEmpty() && Destination()->styleSheet().isEmpty());
    }

    void ARefreshReadsNothingAndKeepsWhatWasTyped()
    {
        Open();
        List()->setCurrentRow(1);
        QCOMPARE(TheScript().sessions.back(), std::string("Close Two"));
        Edit("m_editClassName")->setText("Typed");
        Said();
        TheScript().sessions.clear();
        TheScript().cameras.pop_back();
        QTest::mouseClick(Refresh(), Qt::LeftButton);
        QCOMPARE(Said(), QStringList("1 cameras found."));
        QCOMPARE(Text("m_editClassName"), QString("Typed"));
        QVERIFY(TheScript().sessions.empty());
        TheScript().cameras.clear();
        QTest::mouseClick(Refresh(), Qt::LeftButton);
        QCOMPARE(Said(), QStringList("0 cameras found."));

        // Reading the same camera again changes no option, and still allows a run.
        init();
        Destination()->setText(m_folder->path());
        for (int i = 0; i < 2; ++i)
        {
            QTest::mouseClick(Refresh(), Qt::LeftButton);
            QVERIFY(!Run()->isEnabled());
            List()->setCurrentRow(0);
            QVERIFY(Run()->isEnabled());
        }
    }

    /// Whatever the pointer does between press and release.
    void ADragSelectsNoOtherRowThanItsPress()
    {
        TheScript().cameras.push_back({"Three", "S3", {}});
        Open();
        QWindow* window = Window()->windowHandle();
        for (int before : {-1, 0, 1, 2})
            for (int start : {0, 1, 2, 8})
                for (int end : {-6, 0, 1, 2, 8, 30})
                    for (Qt::KeyboardModifiers modifiers : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier})
                    {
                        List()->setCurrentRow(before);
                        TheScript().sessions.clear();
                        const int selected = start < 3 ? start : before;
                        QTest::mousePress(window, Qt::LeftButton, modifiers, Place(start));
                        QCOMPARE(SelectedRow(), selected);
                        for (int step = 0; step <= 4; ++step)
                        {
                            QTest::mouseMove(window, Place(start) + (Place(end) - Place(start)) * step / 4);
                            QCOMPARE(SelectedRow(), selected);
                        }
                        QTest::mouseRelease(window, Qt::LeftButton, modifiers, Place(end));
                        QCOMPARE(SelectedRow(), selected);
                        QCOMPARE(TheScript().sessions.size(), std::size_t(selected == before ? 0 : 2));
                    }
    }

    void NoKeyLeavesTheHighlightedRow()
    {
        TheScript().cameras.push_back({"Three", "S3", {}});
        Open();
        QCOMPARE(SelectedRow(), -1);
        QTest::keyClick(List(), Qt::Key_Up);
        QCOMPARE(SelectedRow(), 0);
        const Qt::Key keys[] = {Qt::Key_Space, Qt::Key_Down, Qt::Key_End, Qt::Key_A, Qt::Key_PageUp, Qt::Key_T,
            Qt::Key_Up, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_Return, Qt::Key_Escape};
        for (Qt::KeyboardModifiers modifiers : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier})
            for (Qt::Key key : keys)
            {
                QTest::keyClick(List(), key, modifiers);
                QVERIFY2(SelectedRow() >= 0, qPrintable(QString::number(key)));
            }
        // As people do who hear the window.
        List()->clearSelection();
        QCOMPARE(SelectedRow(), -1);
        List()->item(1)->setSelected(true);
        QCOMPARE(SelectedRow(), 1);
    }

    void WorkIsShownAndWhatIsPressedMeanwhileComesAfterIt()
    {
        TheScript().cameras.push_back({"Three", "S3", {MakeFeature("W", KltFeatureDataInt)}});
        Open();
        Destination()->setText(m_folder->path());
        Child<QTextEdit>("m_messages")->viewport()->installEventFilter(this);
        bool waits = true;
        QString keys = "hr";
        for (const char* call : {"Camera::Open", "FeatureContainer::GetFeatures", "Feature::GetFlags"})
            TheScript().meanwhile[call] = [&]
            {
                waits = waits && Waits();
                if (keys.isEmpty())
                    return;
                PressSoon(keys);
                keys.clear();
                // For longer than people pause between two keys.
                QTest::qSleep(QApplication::keyboardInputInterval() + 1);
            };
        QTest::keyClick(List(), Qt::Key_T);
        QVERIFY(!Waits());
        QCOMPARE(m_painted, QString("Reading features of camera 'Two' ..."));
        QTRY_COMPARE(List()->currentRow(), -1);
        QCOMPARE(
            TheScript().sessions, std::vector<std::string>({"Open Two", "Close Two", "Open Three", "Close Three"}));
        QCOMPARE(Said().last(), QString("3 cameras found."));

        // What a program sends does not wait for anything.
        keys = "t";
        QTest::keyClick(List(), Qt::Key_Down);
        QSignalSpy laidOut(Child<QTextEdit>("m_messages")->document(), SIGNAL(contentsChanged()));
        QTest::mouseClick(Run(), Qt::LeftButton);
        QCOMPARE(laidOut.size(), 1);
        QVERIFY(waits && TheScript().calls["Feature::GetFlags"] > 0);
        QCOMPARE(Said().last(), QString("... done."));

        // Not even after a failure that nobody foresaw.
        TheScript().meanwhile = {{"Camera::Open", [] { throw std::bad_alloc(); }}};
        bool failed = false; // Qt 5 and Qt 6 have different macros for this.
        try
        {
            List()->setCurrentRow(1);
        }
        catch (const std::bad_alloc&)
        {
            failed = true;
        }
        QVERIFY(failed);
        QVERIFY(!Waits());
    }

    void TheMessagesShowWhatTheUserStarted()
    {
        const auto fill = []
        {
            for (int i = 0; i < 40; ++i)
                ScriptedSdk::Notify(UpdateTriggerCameraArrived);
            QCoreApplication::processEvents();
        };
        Open();
        Destination()->setText(m_folder->path());
        Child<QCheckBox>("m_cbOverwriteFiles")->setChecked(true);
        QScrollBar* bar = Child<QTextEdit>("m_messages")->verticalScrollBar();
        fill();
        bar->setValue(7);
        fill();
        QCOMPARE(bar->value(), 7);
        TheScript().Fail("Camera::Open", -6);
        for (int i = 0; i < 3; ++i)
        {
            bar->setValue(7);
            i < 2 ? List()->setCurrentRow(i) : Run()->click();
            QCOMPARE(bar->value(), bar->maximum());
            TheScript().faults.clear();
        }
        Run()->click();
        QStringList groups;
        for (QTextBlock block = Child<QTextEdit>("m_messages")->document()->begin(); block.isValid();
             block = block.next())
            if (block.blockFormat().topMargin() > 0)
                groups.append(block.text().left(20));
        QCOMPARE(groups, QStringList({"Unable to open camer", "Reading features of ", "Processing header te",
                             "Processing header te"}));
    }

    void TheMessagesMenuClearsAndOpensTheFolder()
    {
        Open();
        QWidget* rows = Child<QTextEdit>("m_messages")->viewport();
        QDesktopServices::setUrlHandler("file", this, "OnUrl");
        for (const QString& folder : {QString("none"), m_folder->path()})
        {
            Destination()->setText(folder);
            QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(5, 5), rows->mapToGlobal(QPoint(5, 5)));
            QCoreApplication::sendEvent(rows, &asked);
            QWidget* menu = QApplication::activePopupWidget();
            QVERIFY(menu != nullptr);
            QStringList texts;
            for (QAction* action : menu->actions())
            {
                texts.append(action->text().remove('&').section('\t', 0, 0));
                if (action->isEnabled() && (texts.last() == "Clear" || texts.last() == "Open Destination Folder"))
                    action->trigger();
            }
            QCOMPARE(texts.join("|"), QString("Copy||Select All||Clear|Open Destination Folder"));
            menu->close();
            QVERIFY(Said().isEmpty());
            QCOMPARE(m_opened, folder == "none" ? QUrl() : QUrl::fromLocalFile(m_folder->path()));
        }
        QDesktopServices::unsetUrlHandler("file");
    }

    /// For people who use a screen reader, or have no mouse.
    void EveryControlHasANameARoleAndAPlaceInTheTabOrder()
    {
        Open();
        QList<QAccessibleInterface*> found = {QAccessible::queryAccessibleInterface(Window())};
        int controls = 0;
        for (int i = 0; i < found.size(); ++i)
        {
            QAccessibleInterface* control = found.at(i);
            for (int child = 0; child < control->childCount(); ++child)
                found.append(control->child(child));
            if (!control->state().focusable || control->state().invisible)
                continue;
            ++controls;
            const QWidget* widget = qobject_cast<QWidget*>(control->object());
            QVERIFY2(!control->text(QAccessible::Name).isEmpty() && control->role() != QAccessible::NoRole &&
                         (widget == nullptr || (widget->focusPolicy() & Qt::TabFocus) != 0),
                widget != nullptr ? qPrintable(widget->objectName()) : "");
        }
        QVERIFY(controls > 20);
    }

    void RowsAreMappedToCamerasByPosition()
    {
        TheScript().cameras.push_back({"", "S3", {}});
        TheScript().Fail("Camera::GetName@Cam", -4, Second);
        TheScript().Fail("Camera::GetSerialNumber@Two", -4, First);
        Open();
        QCOMPARE(Said(), QStringList("3 cameras found."));
        QCOMPARE(Rows(), QString("[NoName] (S1),  (S3)"));
        List()->setCurrentRow(1);
        QCOMPARE(TheScript().sessions, std::vector<std::string>({"Open Two", "Close Two"}));
    }

    void ANotificationFromAnotherThreadRefreshesTheList()
    {
        Open();
        Said();
        for (int reason : {2, -1})
            ScriptedSdk::Notify(static_cast<UpdateTriggerType>(reason));
        TheScript().cameras.pop_back();
        ScriptedSdk::Notify(UpdateTriggerCameraLeft);
        QCOMPARE(List()->count(), 2);
        QTRY_COMPARE(List()->count(), 1);
        TheScript().cameras.push_back({"New", "S9", {}});
        ScriptedSdk::Notify(UpdateTriggerCameraArrived);
        QTRY_COMPARE(List()->count(), 2);
        QCOMPARE(Said(), QStringList({"1 cameras found.", "2 cameras found."}));
    }

    void TextsFromCamerasAreShownAsTheyAre()
    {
        const std::string name = "%1 <b>\xc3\x84</b> " + std::string(300, 'x');
        TheScript().cameras = {{name, "<i>%2", {MakeFeature("a b", KltFeatureDataInt)}}};
        Open();
        QCOMPARE(Rows(), QString::fromStdString(name) + " (<i>%2)");
        List()->setCurrentRow(0);
        QCOMPARE(Said().at(1), "Reading features of camera '" + QString::fromStdString(name) + "' ...");
        QCOMPARE(QTextDocumentFragment::fromHtml(List()->item(0)->toolTip()).toPlainText(), Rows());
        for (const char* edit : {"m_editClassName", "m_editHeaderFileName", "m_editSourceFileName"})
            QCOMPARE(Edit(edit)->cursorPosition(), 0);
    }

    void SettingsAreKeptFromWindowToWindow()
    {
        Open();
        Destination()->setText(m_folder->path());
        Child<QCheckBox>("m_cbOverwriteFiles")->setChecked(true);
        Edit("m_editGetterPrefix")->setText("Read");
        QTest::keyClick(Window(), Qt::Key_F, Qt::AltModifier);
        QTRY_VERIFY(QApplication::activePopupWidget() != nullptr);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_X);
        QTRY_VERIFY(!Window()->isVisible());
        Close();
        QCOMPARE(TheScript().calls["KoltaSystem::Startup"], 1);
        QCOMPARE(TheScript().calls["KoltaSystem::Shutdown"], 1);
        Open();
        QCOMPARE(Destination()->text(), m_folder->path());
        QVERIFY(Child<QCheckBox>("m_cbOverwriteFiles")->isChecked());
        QCOMPARE(Text("m_editGetterPrefix"), QString("Read"));
        QCOMPARE(QSettings().allKeys().size(), 8);
    }

    void TheAboutBoxesOpenByTheirKeys()
    {
        Open();
        QCOMPARE(PressAndLook(Qt::NoModifier),
            QString(
                "About KoltaClassGenerator|<h2><b>KoltaClassGenerator</b></h2><br><br>KoltaClassGenerator is a tool "
                "to create camera helper classes for any of the Kolta APIs.<br><br>Version: 1.0.6<br><br>OPX<br>"
                "Copyright (C) 2026 OPX<br><a href=\"www.opx.example\">www.opx.example</a>"));
        QVERIFY(PressAndLook(Qt::ControlModifier).startsWith("About Qt|"));
    }

    void BrowsingSetsTheDestination()
    {
        Open();
        QPushButton* button =
            Window()->centralWidget()->findChild<QPushButton*>("m_btnBrowse", Qt::FindDirectChildrenOnly);
        const QString before = QCoreApplication::applicationDirPath();
        Destination()->setText(before);
        const QString seen = Browse(Destination(), button, m_folder->path());
        QVERIFY(seen.startsWith("Select Destination Folder|" + before + '|'));
        QVERIFY(seen.endsWith('|' + before + '|' + m_folder->path()));
    }

    void AProgramEndsInOrderHoweverItIsEnded()
    {
        const QString box = "Box: 3|Error|Cannot start Kolta!\nReason: No transport layers were found.|Exit\n";
        const QList<QPair<QString, int>> ends = {{"SCRIPTED_FAILURE=KoltaSystem::Startup", 0},
            {"SCRIPTED_FAILURE=KoltaSystem::RegisterCameraListObserver", 0}, {"SCRIPTED_SESSION_END=now", 0},
            {"NONE=", SIGTERM}, {"NONE=", SIGHUP}, {"NONE=", SIGINT}};
        for (const auto& end : ends)
        {
            init();
            QProcess program;
            program.setEnvironment(QProcess::systemEnvironment()
                                   << end.first << "XDG_CONFIG_HOME=" + m_folder->path() << "LC_ALL=C"
                                   << "LANG=C.UTF-8");
            // Somebody may have it ignore one of them.
            program.start(
                "env", {end.second == SIGTERM ? "--ignore-signal=INT" : "--default-signal=INT", SCRIPTED_TOOL});
            program.setReadChannel(QProcess::StandardError);
            // Until the window is created.
            QByteArray errors;
            while (end.second != 0 && !errors.contains("Options"))
            {
                QVERIFY(program.waitForReadyRead());
                errors += program.readAllStandardError();
            }
            if (end.second == SIGTERM)
                QVERIFY(::kill(static_cast<pid_t>(program.processId()), SIGINT) == 0 && !program.waitForFinished(200));
            if (end.second != 0)
                ::kill(static_cast<pid_t>(program.processId()), end.second);
            QVERIFY(program.waitForFinished(20000));
            const bool started = !end.first.startsWith("SCRIPTED_FAILURE");
            QVERIFY(!(errors + program.readAllStandardError()).contains("locale"));
            QCOMPARE(program.exitStatus(), QProcess::NormalExit);
            QCOMPARE(program.exitCode(), started ? 0 : 255);
            QCOMPARE(
                QString::fromUtf8(program.readAllStandardOutput()), (started ? "" : box) + "Shutdowns: 1\nTimes: C\n");
            QCOMPARE(QDir(m_folder->path()).exists("OPX/KoltaClassGenerator.conf"), started);
        }
    }
};

QTEST_MAIN(WindowTest)
#include "WindowTest.moc"
