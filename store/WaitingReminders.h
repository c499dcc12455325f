#pragma once

#include "model/WaitingReminder.h"

#include <QObject>

#include <memory>

namespace tessaly {

class Alarm;
class SavedDataWriter;
struct Error;
struct PlannerPorts;
struct StateChange;

/// The reminders that wait for their minute, saved together with the to-dos. Each is shown once: it is removed and that
/// is saved before it is shown, and it is restored only when no notification service could show it. It then waits for
/// a service. The program starts at login while any reminder waits. Main thread only.
class WaitingReminders : public QObject
{
    Q_OBJECT

public:
    /// A reminder that fell due while the planner was not running is shown at the next start unless it is older.
    static constexpr double longestDelaySeconds = 86400;

    /// Loads the reminders and does nothing else. Both must outlive the object.
    WaitingReminders(const PlannerPorts &ports, SavedDataWriter &writer);
    ~WaitingReminders() override;
    Q_DISABLE_COPY_MOVE(WaitingReminders)

    /// In no particular order.
    [[nodiscard]] const QList<WaitingReminder> &list() const { return m_list; }

    /// Shows missed reminders, drops those that are too old, and waits for the rest. To be called once, before the
    /// event loop runs.
    void start();
    /// Removes the reminders with the identifiers of `before` and adds those of `after` whose minute has not begun;
    /// what changed is added to `done`. The caller saves the data next, and with it what waits.
    void replace(const QList<WaitingReminder> &before, const QList<WaitingReminder> &after, StateChange &done);
    /// Shows what is due. To be called when the user's clock has changed.
    void showDue();

signals:
    /// The list has changed.
    void changed();
    /// The program will not start at login although reminders wait, or will although none does.
    void loginItemFailed(const tessaly::Error &error);

private:
    void assign(const QList<WaitingReminder> &list);
    void show(const WaitingReminder &reminder);
    void setAlarm();
    void setLoginItem();

    const PlannerPorts &m_ports;
    SavedDataWriter &m_writer;
    QList<WaitingReminder> m_list;
    /// Identifiers of those that the desktop has been asked to show and has not answered for.
    QSet<QString> m_askedFor;
    /// Identifiers of those in the list that are due and that no service could show.
    QSet<QString> m_held;
    std::unique_ptr<Alarm> m_alarm;
    bool m_isStarted = false;
};

} // namespace tessaly
