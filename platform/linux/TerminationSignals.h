#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace tessaly {

/// Turns the signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into one of Qt's, so that it can save first.
/// The same signal for a second time ends the program at once. Those that the program was started to ignore stay
/// ignored. Only one object may exist at a time.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

signals:
    void received();

private:
    /// Reading and writing end of a pipe.
    int m_pipe[2] = {-1, -1};
    QSocketNotifier m_notifier;
};

} // namespace tessaly
