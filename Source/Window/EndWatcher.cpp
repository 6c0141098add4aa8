#include "Window/EndWatcher.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{

/// What is written to the second can be read from the first.
int g_pipe[] = {-1, -1};

/// Called at any moment, in any thread: only wakes the event loop. The second time a signal ends the program at once:
/// the first may wait for a camera that does not answer.
void WriteToPipe(int signal)
{
    std::signal(signal, SIG_DFL);
    const int error = errno;
    const ssize_t written = write(g_pipe[1], "", 1);
    static_cast<void>(written); // A pipe that is full wakes the loop as well.
    errno = error;
}

} // namespace

EndWatcher::EndWatcher()
{
    connect(QCoreApplication::instance(), SIGNAL(commitDataRequest(QSessionManager&)), this, SIGNAL(EndRequested()));
    if (pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, SIGNAL(activated(int)), this, SLOT(OnSignal()));
    for (int signal : {SIGTERM, SIGHUP, SIGINT})
        // Somebody may have had us ignore it, as nohup does.
        if (std::signal(signal, WriteToPipe) == SIG_IGN)
            std::signal(signal, SIG_IGN);
}

void EndWatcher::OnSignal()
{
    char bytes[16];
    if (read(g_pipe[0], bytes, sizeof bytes) > 0)
        emit EndRequested();
}
