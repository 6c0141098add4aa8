// Sets the scripted SDK up from the environment before the program starts, and answers its error box or ends its
// session.

#include "Answer.h"
#include "ScriptedSdk.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QSessionManager>

#include <clocale>
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

    ~FromEnvironment()
    {
        std::printf(
            "Shutdowns: %d\nTimes: %s\n", m_script.calls["KoltaSystem::Shutdown"], std::setlocale(LC_TIME, nullptr));
    }

    ScriptedSdk::Script& m_script;
};

const FromEnvironment g_fromEnvironment;

void PressExit(QMessageBox& box)
{
    std::printf("Box: %d|%s|%s", box.icon(), qPrintable(box.windowTitle()), qPrintable(box.text()));
    for (const QAbstractButton* button : box.buttons())
        std::printf("|%s", qPrintable(button->text()));
    std::printf("\n");
    box.buttons().first()->click();
}

/// As the application object does when the desktop asks it to. Nobody looks at the manager.
void EndSession()
{
    QObject manager;
    QMetaObject::invokeMethod(qApp, "commitDataRequest", Qt::DirectConnection,
        Q_ARG(QSessionManager&, reinterpret_cast<QSessionManager&>(manager)));
}

void Watch()
{
    AnswerNext<QMessageBox>(PressExit);
    if (std::getenv("SCRIPTED_SESSION_END") != nullptr)
        QTimer::singleShot(500, EndSession);
}

} // namespace

// Runs when the application object is made.
Q_COREAPP_STARTUP_FUNCTION(Watch)
