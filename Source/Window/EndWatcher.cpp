#include "Window/EndWatcher.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{

const int Signals[] = {SIGTERM, SIGHUP, SIGINT};

/// What is written to the second can be read from the first.
int g_pipe[] = {-1, -1};

/// Called at any moment, in any thread: only wakes the event loop.
void WriteToPipe(int signal)
{
    static_cast<void>(signal);
    const int error = errno;
    const ssize_t written = write(g_pipe[1], "", 1);
    static_cast<void>(written); // A pipe that is full wakes the loop as well.
    errno = error;
}

/// The second time a signal ends the program at once: the first may wait for a camera that does not answer.
void Handle(int signal)
{
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    // Somebody may have had us ignore it, as nohup does.
    if (action.sa_handler == SIG_IGN)
        return;
    action = {};
    action.sa_handler = WriteToPipe;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigaction(signal, &action, nullptr);
}

void Release(int signal)
{
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    if (action.sa_handler == WriteToPipe)
        std::signal(signal, SIG_DFL);
}

} // namespace

EndWatcher::EndWatcher()
{
    connect(QCoreApplication::instance(), SIGNAL(commitDataRequest(QSessionManager&)), this, SIGNAL(EndRequested()));
    if (pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, SIGNAL(activated(int)), this, SLOT(OnSignal()));
    for (int signal : Signals)
        Handle(signal);
}

EndWatcher::~EndWatcher()
{
    for (int signal : Signals)
        Release(signal);
    for (int end : g_pipe)
        close(end);
}

void EndWatcher::OnSignal()
{
    char bytes[16];
    while (read(g_pipe[0], bytes, sizeof bytes) > 0)
    {
    }
    emit EndRequested();
}
