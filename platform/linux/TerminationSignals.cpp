#include "platform/linux/TerminationSignals.h"

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace tessaly {

namespace {

constexpr int handled[] = {SIGTERM, SIGINT, SIGHUP};

int writingEnd = -1;

/// Little is allowed in here; see signal-safety(7).
void note(int)
{
    const char byte = 0;
    // A full pipe is enough of a signal.
    [[maybe_unused]] const ssize_t written = write(writingEnd, &byte, 1);
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent) : QObject(parent), m_notifier(QSocketNotifier::Read)
{
    if (pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    writingEnd = m_pipe[1];
    m_notifier.setSocket(m_pipe[0]);
    m_notifier.setEnabled(true);
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        if (read(m_pipe[0], &byte, 1) == 1)
            emit received();
    });
    for (const int number : handled) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
            continue;
        action.sa_handler = note;
        action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
        sigaction(number, &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    for (const int number : handled) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == note)
            std::signal(number, SIG_DFL);
    }
    m_notifier.setEnabled(false);
    for (const int end : m_pipe) {
        if (end >= 0)
            close(end);
    }
}

} // namespace tessaly
