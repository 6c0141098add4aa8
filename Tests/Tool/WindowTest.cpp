#include "FileChooserWidget.h"
#include "KoltaClassGenerator.h"
#include "TestData.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QFormLayout>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTimer>
#include <QtTest>

#include <stdexcept>

using namespace TestData;
using ScriptedSdk::First;
using ScriptedSdk::Second;
using ScriptedSdk::TheScript;

class WindowTest : public QObject
{
    Q_OBJECT

private:
    template <class T>
    T* Child(const char* name)
    {
        return m_window->centralWidget()->findChild<T*>(QLatin1String(name));
    }

    QLineEdit* Destination()
    {
        return m_window->centralWidget()->findChild<QLineEdit*>("m_editDestinationFolder", Qt::FindDirectChildrenOnly);
    }

    QListWidget* List() { return Child<QListWidget>("m_listBoxCameras"); }
    QPushButton* Run() { return Child<QPushButton>("m_btnRun"); }

    /// The messages since the last call.
    QStringList Said()
    {
        QTextEdit* box = Child<QTextEdit>("m_messages");
        QStringList lines;
        for (QTextBlock block = box->document()->begin(); block.isValid(); block = block.next())
            lines.append(block.text());
        if (box->document()->isEmpty())
            lines.clear();
        box->clear();
        return lines;
    }

    void Open()
    {
        m_window.reset(new KoltaClassGenerator);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    QStringList Rows()
    {
        QStringList rows;
        for (int row = 0; row < List()->count(); ++row)
            rows.append(List()->item(row)->text());
        return rows;
    }

    /// Presses a key in the window and hands the box that it opens to \a look.
    template <class Look>
    void PressAndLook(Qt::Key key, Qt::KeyboardModifiers modifiers, Look look)
    {
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        bool seen = false;
        QTimer::singleShot(200, this,
            [&]
            {
                QMessageBox* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                seen = box != nullptr && box->parentWidget() == m_window.get();
                if (seen)
                    look(*box);
                if (QApplication::activeModalWidget() != nullptr)
                    QApplication::activeModalWidget()->close();
            });
        QTest::keyClick(m_window.get(), key, modifiers);
        QTRY_VERIFY(seen);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<KoltaClassGenerator> m_window;

private slots:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("OPX");
        QCoreApplication::setApplicationName("KoltaClassGenerator");
    }

    void init()
    {
        ScriptedSdk::Reset();
        QSettings().clear();
        m_folder.reset(new QTemporaryDir);
        TheScript().cameras = {
            {"Cam", "S1", {MakeFeature("W", KltFeatureDataInt), MakeFeature("X", KltFeatureDataEnum)}},
            {"Two", "S2", {MakeFeature("V", KltFeatureDataInt)}}};
    }

    void cleanup() { m_window.reset(); }

    void TheFormIsLaidOutAsUsersKnowIt()
    {
        Open();
        // Styles with high line edits need more than the form asks for.
        QCOMPARE(m_window->size(), QSize(782, 482).expandedTo(m_window->minimumSizeHint()));
        QCOMPARE(m_window->objectName(), QString("KoltaClassGeneratorClass"));
        QCOMPARE(m_window->windowTitle(), QString("Kolta SDK - Class Generator"));
        QVERIFY(!m_window->windowIcon().isNull());
        QVERIFY(List()->width() >= 169 && List()->height() >= 199);
        QTabWidget* tabs = Child<QTabWidget>("m_twOptions");
        QCOMPARE(tabs->count(), 1);
        QCOMPARE(tabs->tabText(0), QString("C++"));
        QVERIFY(tabs->currentWidget()->autoFillBackground());
        QVERIFY(Child<QTextEdit>("m_messages")->isReadOnly());
        for (const char* name : {"m_btnRefresh", "m_btnBrowse"})
        {
            const QPushButton* button =
                m_window->centralWidget()->findChild<QPushButton*>(name, Qt::FindDirectChildrenOnly);
            QVERIFY(button->text().isEmpty() && !button->icon().isNull());
            QVERIFY(!button->toolTip().isEmpty() && !button->accessibleName().isEmpty());
        }
        QStringList menus;
        foreach (const QAction* menu, m_window->menuBar()->actions())
            foreach (const QAction* action, menu->menu()->actions())
                menus.append(menu->text() + "/" + action->text() + " " + action->shortcut().toString());
        QCOMPARE(menus, QStringList({"&File/E&xit ", "&Help/&About F1", "&Help/About &Qt Ctrl+F1"}));
        foreach (const QLabel* label, m_window->findChildren<QLabel*>())
            QVERIFY2(label->buddy() != nullptr, qPrintable(label->objectName()));
        QCOMPARE(Child<QPushButton>("m_btnRefresh")->layoutDirection(), Qt::RightToLeft);
        QCOMPARE(Child<QCheckBox>("m_cbOverwriteFiles")->text(), QString("Overwrite Files without Warning"));
        QCOMPARE(tabs->elideMode(), Qt::ElideNone);
        QCOMPARE(m_window->findChild<QLayout*>("verticalLayout")->contentsMargins().bottom(), 30);
        QGridLayout* grid = m_window->findChild<QGridLayout*>("gridLayout_2");
        QCOMPARE(grid->contentsMargins(), QMargins(11, 11, 11, 11));
        QStringList cells;
        for (int i = 0; i < grid->count(); ++i)
        {
            int at[4];
            grid->getItemPosition(i, &at[0], &at[1], &at[2], &at[3]);
            const QLayout* layout = grid->itemAt(i)->layout();
            cells.append(QString("%1%2%3%4 ").arg(at[0]).arg(at[1]).arg(at[2]).arg(at[3]) +
                         (layout ? layout->objectName() : grid->itemAt(i)->widget()->objectName()));
        }
        cells.sort();
        QCOMPARE(cells, QStringList({"0022 verticalLayout_2", "0211 verticalLayout", "1211 verticalLayout_3",
                            "2211 m_btnRun", "3013 verticalLayout_4"}));
        QFormLayout* form = Child<QFormLayout>("formLayout");
        QStringList rows;
        for (int row = 0; row < form->rowCount(); ++row)
            if (form->itemAt(row, QFormLayout::LabelRole))
                rows.append(qobject_cast<QLabel*>(form->itemAt(row, QFormLayout::LabelRole)->widget())->text() +
                            QString(" %1").arg(form->itemAt(row, QFormLayout::FieldRole)->widget()->minimumWidth()));
        QCOMPARE(rows, QStringList({"Class Name 130", "Header File Name 130", "Source File Name 130",
                           "Header Template 144", "Source Template 144"}));
        for (const char* name : {"m_headerTemplateFileChooser", "m_sourceTemplateFileChooser"})
        {
            const FileChooserWidget* chooser = Child<FileChooserWidget>(name);
            QCOMPARE(chooser->m_caption, QString("Select Template File"));
            QCOMPARE(chooser->m_filter, name[2] == 'h' ? QString("C++ header files (*.h;*.hpp);;All files (*.*)")
                                                       : QString("C++ source files (*.cpp);;All files (*.*)"));
        }
    }

    void TabGoesThroughTheWindowFromTheListToTheMessages()
    {
        Open();
        List()->setFocus();
        QStringList order;
        while (order.size() < 40 && !order.contains("m_messages"))
        {
            order.append(QApplication::focusWidget()->objectName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        // Run cannot be pressed yet, so it is passed over.
        QCOMPARE(order.join(" "),
            QString("m_listBoxCameras m_btnRefresh m_editDestinationFolder m_btnBrowse m_cbOverwriteFiles "
                    "qt_tabwidget_tabbar m_editClassName m_editHeaderFileName m_editSourceFileName m_editGetterPrefix "
                    "m_editGetterSuffix m_editSetterPrefix m_editSetterSuffix m_editDestinationFolder m_btnBrowse "
                    "m_editDestinationFolder m_btnBrowse m_messages"));
    }

    void AClassIsGeneratedByKeyboardAlone()
    {
        Open();
        QCOMPARE(Said(), QStringList("2 cameras found."));
        QVERIFY(!Run()->isEnabled());
        List()->setFocus();
        QTest::keyClick(List(), Qt::Key_Down);
        QTest::keyClick(List(), Qt::Key_Home);
        Said();
        QTest::keyClick(List(), Qt::Key_Down);
        QCOMPARE(Said(), QStringList({"Reading features of camera 'Two' ...",
                             "... done, 1 features in 1 categories and 0 enums found."}));
        QCOMPARE(Child<QLineEdit>("m_editClassName")->text(), QString("TwoCamera"));
        QVERIFY(!Run()->isEnabled());
        QTest::keyClicks(Destination(), m_folder->path());
        QVERIFY(Run()->isEnabled());
        QTest::keyClick(Run(), Qt::Key_Space);
        QCOMPARE(Said().size(), 12);
        QVERIFY(QFile::exists(m_folder->filePath("TwoCamera.h")) && QFile::exists(m_folder->filePath("TwoCamera.cpp")));
        QTest::keyClick(Run(), Qt::Key_Space);
        QVERIFY(Said().at(2).endsWith("already exists and should not be overwritten!"));
        QTest::mouseClick(Child<QCheckBox>("m_cbOverwriteFiles"), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
        QTest::keyClick(Run(), Qt::Key_Space);
        QCOMPARE(Said().size(), 12);
        QCOMPARE(TheScript().sessions.back(), std::string("Close Two"));
    }

    void RunFollowsItsConditions()
    {
        Open();
        List()->setCurrentRow(0);
        Destination()->setText(m_folder->filePath("none"));
        QVERIFY(!Run()->isEnabled());
        Destination()->setText(QCoreApplication::applicationFilePath());
        QVERIFY(Run()->isEnabled());
        Destination()->clear();
        QVERIFY(!Run()->isEnabled());
        Destination()->setText(m_folder->path());
        Child<QLineEdit>("m_editClassName")->clear();
        QVERIFY(!Run()->isEnabled());
        Child<QLineEdit>("m_editClassName")->setText("C");
        QVERIFY(Run()->isEnabled());
        TheScript().cameras[1].features.clear();
        QTest::mouseClick(Child<QPushButton>("m_btnRefresh"), Qt::LeftButton);
        QVERIFY(!Run()->isEnabled());
        List()->setCurrentRow(1);
        QVERIFY(!Run()->isEnabled());
    }

    void ARefreshReadsNothingAndKeepsWhatWasTyped()
    {
        Open();
        List()->setCurrentRow(1);
        Child<QLineEdit>("m_editClassName")->setText("Typed");
        Said();
        TheScript().sessions.clear();
        TheScript().cameras.pop_back();
        QTest::mouseClick(Child<QPushButton>("m_btnRefresh"), Qt::LeftButton);
        QCOMPARE(Said(), QStringList("1 cameras found."));
        QCOMPARE(Rows(), QStringList("Cam (S1)"));
        QCOMPARE(Child<QLineEdit>("m_editClassName")->text(), QString("Typed"));
        QVERIFY(TheScript().sessions.empty());

        // Reading the same camera again changes no option, and allows a run all the same.
        Destination()->setText(m_folder->path());
        List()->setCurrentRow(0);
        QTest::mouseClick(Child<QPushButton>("m_btnRefresh"), Qt::LeftButton);
        QVERIFY(!Run()->isEnabled());
        List()->setCurrentRow(0);
        QVERIFY(Run()->isEnabled());
    }

    void RowsAreMappedToCamerasByPosition()
    {
        TheScript().cameras.push_back({"", "S3", {}});
        TheScript().Fail("Camera::GetName@Cam", -4, Second);
        TheScript().Fail("Camera::GetSerialNumber@Two", -4, First);
        Open();
        QCOMPARE(Said(), QStringList("3 cameras found."));
        QCOMPARE(Rows(), QStringList({"[NoName] (S1)", " (S3)"}));
        List()->setCurrentRow(1);
        QCOMPARE(TheScript().sessions.front(), std::string("Open Two"));
        List()->setCurrentRow(0);
        QCOMPARE(Said().at(2), QString("Reading features of camera '' ..."));
        QCOMPARE(Child<QLineEdit>("m_editClassName")->text(), QString("Camera"));
    }

    void WhatFailsIsSaidAndChangesNothingElse_data()
    {
        QTest::addColumn<QString>("call");
        QTest::addColumn<int>("which");
        QTest::addColumn<QString>("message");
        for (int which : {1, 2})
            QTest::newRow(qPrintable(QString("features %1").arg(which)))
                << "FeatureContainer::GetFeatures" << which
                << "Unable to read camera features! Reason: Timeout during wait.";
        QTest::newRow("open") << "Camera::Open" << 1 << "Unable to open camera! Reason: Timeout during wait.";
    }

    void WhatFailsIsSaidAndChangesNothingElse()
    {
        QFETCH(QString, call);
        QFETCH(int, which);
        QFETCH(QString, message);
        Open();
        Destination()->setText(m_folder->path());
        List()->setCurrentRow(0);
        QVERIFY(Run()->isEnabled());
        Said();
        TheScript().sessions.clear();
        TheScript().Fail(call.toStdString(), -12, which == 1 ? First : Second);
        QVERIFY(QDir().rmdir(m_folder->path()));
        List()->setCurrentRow(1);
        QCOMPARE(Said().last(), message);
        QVERIFY(Run()->isEnabled());
        QVERIFY(QDir().mkdir(m_folder->path()));
        QCOMPARE(Child<QLineEdit>("m_editClassName")->text(), QString("CamCamera"));
        QCOMPARE(TheScript().sessions.back(), std::string(call == "Camera::Open" ? "Open Two" : "Close Two"));
        QTest::mouseClick(Run(), Qt::LeftButton);
        QVERIFY(QFile::exists(m_folder->filePath("CamCamera.cpp")));
        TheScript().faults.clear();
        List()->setCurrentRow(0);
        QVERIFY(Said().last().startsWith("... done, 2 features in 1 categories and 1 enums"));
    }

    void AFailedListingIsSaid()
    {
        Open();
        List()->setCurrentRow(0);
        for (ScriptedSdk::Which which : {First, Second})
        {
            Said();
            TheScript().faults.clear();
            TheScript().Fail("KoltaSystem::GetCameras", -1, which);
            QTest::mouseClick(Child<QPushButton>("m_btnRefresh"), Qt::LeftButton);
            QCOMPARE(Said(), QStringList("Unable to get camera list! Reason: Unexpected fault in KltApi or driver."));
            QCOMPARE(List()->count(), 0);
        }
        TheScript().faults.clear();
        TheScript().cameras.clear();
        QTest::mouseClick(Child<QPushButton>("m_btnRefresh"), Qt::LeftButton);
        QCOMPARE(Said(), QStringList("0 cameras found."));
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
        QCOMPARE(Rows(), QStringList(QString::fromStdString(name) + " (<i>%2)"));
        List()->setCurrentRow(0);
        QCOMPARE(Said().at(1), "Reading features of camera '" + QString::fromStdString(name) + "' ...");
    }

    void SettingsAreKeptFromWindowToWindow()
    {
        Open();
        Destination()->setText(m_folder->path());
        Child<QCheckBox>("m_cbOverwriteFiles")->setChecked(true);
        Child<QLineEdit>("m_editGetterPrefix")->setText("Read");
        QTest::keyClick(m_window.get(), Qt::Key_F, Qt::AltModifier);
        QTRY_VERIFY(QApplication::activePopupWidget() != nullptr);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_X);
        QTRY_VERIFY(!m_window->isVisible());
        m_window.reset();
        QCOMPARE(TheScript().calls["KoltaSystem::Startup"], 1);
        QCOMPARE(TheScript().calls["KoltaSystem::Shutdown"], 1);
        Open();
        QCOMPARE(Destination()->text(), m_folder->path());
        QVERIFY(Child<QCheckBox>("m_cbOverwriteFiles")->isChecked());
        QCOMPARE(Child<QLineEdit>("m_editGetterPrefix")->text(), QString("Read"));
        QCOMPARE(QSettings().allKeys().size(), 8);
    }

    void TheAboutBoxesOpenByTheirKeys()
    {
        Open();
        PressAndLook(Qt::Key_F1, Qt::NoModifier,
            [](const QMessageBox& box)
            {
                QCOMPARE(box.windowTitle(), QString("About KoltaClassGenerator"));
                QCOMPARE(box.text(),
                    QString(
                        "<h2><b>KoltaClassGenerator</b></h2><br><br>KoltaClassGenerator is a tool to create camera "
                        "helper classes for any of the Kolta APIs.<br><br>Version: 1.0.6<br><br>OPX<br>Copyright (C) "
                        "2026 OPX<br><a href=\"www.opx.example\">www.opx.example</a>"));
            });
        PressAndLook(Qt::Key_F1, Qt::ControlModifier,
            [](const QMessageBox& box) { QCOMPARE(box.windowTitle(), QString("About Qt")); });
    }

    void BrowsingSetsTheDestination()
    {
        Open();
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        for (bool accepted : {false, true})
        {
            QTimer::singleShot(200, this,
                [&]
                {
                    QFileDialog* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                    QVERIFY(dialog != nullptr);
                    QCOMPARE(dialog->windowTitle(), QString("Select Destination Folder"));
                    dialog->setDirectory(m_folder->path());
                    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(m_folder->path());
                    QMetaObject::invokeMethod(dialog, accepted ? "accept" : "reject");
                });
            QTest::mouseClick(
                m_window->centralWidget()->findChild<QPushButton*>("m_btnBrowse", Qt::FindDirectChildrenOnly),
                Qt::LeftButton);
            QCOMPARE(Destination()->text(), accepted ? m_folder->path() : QString());
        }
    }

    void AFailedStartLeavesNoSessionAndNoSettings_data()
    {
        QTest::addColumn<QString>("call");
        QTest::newRow("start") << "KoltaSystem::Startup";
        QTest::newRow("observer") << "KoltaSystem::RegisterCameraListObserver";
    }

    void AFailedStartLeavesNoSessionAndNoSettings()
    {
        QFETCH(QString, call);
        TheScript().Fail(call.toStdString(), -16);
        QString text;
        try
        {
            m_window.reset(new KoltaClassGenerator);
        }
        catch (const std::runtime_error& error)
        {
            text = QString::fromLatin1(error.what());
        }
        QCOMPARE(text, QString("Cannot start Kolta!\nReason: No transport layers were found."));
        QCOMPARE(TheScript().calls["KoltaSystem::Shutdown"], 1);
        QVERIFY(QSettings().allKeys().isEmpty());
    }

    void AProgramThatCannotStartEndsWithAnError()
    {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("SCRIPTED_FAILURE", "KoltaSystem::Startup");
        program.setProcessEnvironment(environment);
        program.start(SCRIPTED_TOOL, QStringList());
        QVERIFY(program.waitForFinished(20000));
        QCOMPARE(program.exitCode(), 255);
        const QString output = QString::fromUtf8(program.readAllStandardOutput());
        QCOMPARE(output, QString("Box: Error|Cannot start Kolta!\nReason: No transport layers were found.|Exit\n"
                                 "Shutdowns: 1\n"));
    }
};

QTEST_MAIN(WindowTest)
#include "WindowTest.moc"
