#ifndef WINDOWDRIVER_H
#define WINDOWDRIVER_H

#include "FileChooserWidget.h"
#include "KoltaClassGenerator.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTextBlock>
#include <QTextEdit>
#include <QtTest>

#include <memory>

/// Opens the window, and finds what is in it.
class WindowDriver
{
public:
    /// Settings are looked for by these names.
    WindowDriver()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("OPX"));
        QCoreApplication::setApplicationName(QStringLiteral("KoltaClassGenerator"));
    }

    void Open()
    {
        m_window.reset(new KoltaClassGenerator);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void Close() { m_window.reset(); }

    KoltaClassGenerator* Window() { return m_window.get(); }

    template <class T>
    T* Child(const char* name)
    {
        return m_window->centralWidget()->findChild<T*>(QLatin1String(name));
    }

    QListWidget* List() { return Child<QListWidget>("m_listBoxCameras"); }
    QPushButton* Run() { return Child<QPushButton>("m_btnRun"); }
    QPushButton* Refresh() { return Child<QPushButton>("m_btnRefresh"); }

    /// An edit of the options page, or the one in a chooser.
    QLineEdit* Edit(const char* name)
    {
        FileChooserWidget* chooser = Child<FileChooserWidget>(name);
        return chooser != nullptr ? chooser->m_lineEdit : Child<QLineEdit>(name);
    }

    QString Text(const char* edit) { return Edit(edit)->text(); }

    /// A file chooser has an edit of this name, too.
    QLineEdit* Destination()
    {
        return m_window->centralWidget()->findChild<QLineEdit*>(
            QStringLiteral("m_editDestinationFolder"), Qt::FindDirectChildrenOnly);
    }

    QString Rows()
    {
        QStringList rows;
        for (int row = 0; row < List()->count(); ++row)
            rows.append(List()->item(row)->text());
        return rows.join(QStringLiteral(", "));
    }

    /// The messages since the last call.
    QStringList Said()
    {
        QTextEdit* box = Child<QTextEdit>("m_messages");
        QStringList lines;
        for (QTextBlock block = box->document()->begin(); block.isValid() && !box->document()->isEmpty();
             block = block.next())
            lines.append(block.text());
        box->clear();
        return lines;
    }

private:
    std::unique_ptr<KoltaClassGenerator> m_window;
};

#endif
