// Sets the scripted SDK up from the environment before the program starts, and answers its error box.

#include "ScriptedSdk.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace
{

struct FromEnvironment
{
    // Asked for first, the script outlives this.
    FromEnvironment() : m_script(ScriptedSdk::TheScript())
    {
        if (const char* call = std::getenv("SCRIPTED_FAILURE"))
            m_script.Fail(call, KltErrorNoTransportLayer);
    }

    ~FromEnvironment() { std::printf("Shutdowns: %d\n", m_script.calls["KoltaSystem::Shutdown"]); }

    ScriptedSdk::Script& m_script;
};

const FromEnvironment g_fromEnvironment;

void PressExit()
{
    QMessageBox* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr)
    {
        QTimer::singleShot(50, PressExit);
        return;
    }
    std::printf("Box: %s|%s", qPrintable(box->windowTitle()), qPrintable(box->text()));
    for (const QAbstractButton* button : box->buttons())
        std::printf("|%s", qPrintable(button->text()));
    std::printf("\n");
    box->buttons().first()->click();
}

void Watch()
{
    QTimer::singleShot(0, PressExit);
}

} // namespace

// Runs when the application object is made.
Q_COREAPP_STARTUP_FUNCTION(Watch)
