#pragma once

#include "store/ReminderWording.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <memory>

namespace tessaly {

class Alarm;
class SavedDataWriter;
class ScheduleReminders;
enum class Presentation;
struct Error;
struct PlannerPorts;
struct StateChange;

/// The reminders that wait for their minute or for an answer, saved together with the to-dos. None is forgotten and
/// none comes twice: each is saved as due before it is shown and as shown once a service has taken it. What a planner
/// that was killed in between left as due is reported at the next start; what no service could show waits for one.
/// Several that are late come together, as one notification. Those of schedules join the list when they fall due. One
/// alarm is set, for the next of all. The program starts at login while any reminder is still
/// to be shown. Main thread only.
class WaitingReminders : public QObject
{
    Q_OBJECT

public:
    /// Loads the reminders and does nothing else. Ports, writer and schedules must outlive the object.
    WaitingReminders(const PlannerPorts &ports, SavedDataWriter &writer, const ReminderWording &wording,
                     ScheduleReminders &schedules);
    ~WaitingReminders() override;
    Q_DISABLE_COPY_MOVE(WaitingReminders)

    /// In no particular order.
    [[nodiscard]] const QList<WaitingReminder> &list() const { return m_list; }
    /// Whether any is still to be shown.
    [[nodiscard]] bool hasPending() const;
    [[nodiscard]] const ReminderWording &wording() const { return m_wording; }

    /// Reports what was missed and waits for the rest. To be called once, before the event loop runs.
    void start();
    /// Removes the reminders with the identifiers of `before`, takes them off the desktop, and adds those of `after`
    /// unless their minute has begun unseen; what changed is added to `done`. The caller saves the data next, and with
    /// it what waits.
    void replace(const QList<WaitingReminder> &before, const QList<WaitingReminder> &after, StateChange &done);
    /// Shows what is due. To be called when the user's clock has changed.
    void showDue();

signals:
    /// The list has changed, or hasPending().
    void changed();
    /// The user has pressed a button of the reminder's notification.
    void answered(const QString &identifier, tessaly::ReminderAnswer answer);
    /// The user wants to see what was missed.
    void showRequested();
    /// The program will not start at login although reminders wait, or will although none does.
    void loginItemFailed(const tessaly::Error &error);

private:
    void assign(const QList<WaitingReminder> &list);
    void takeDue(Instant now);
    /// Takes those out of the list whose schedule is gone or starts at another time now; their identifiers.
    [[nodiscard]] QStringList takeGone(QList<WaitingReminder> &list) const;
    void present(ReminderEvent event);
    void hand(const Notification &notification, const QList<WaitingReminder> &reminders, ReminderEvent event);
    void takeAnswer(const QStringList &identifiers, quint64 call, Presentation presentation, ReminderEvent event);
    void takeOffDesktop(const QString &identifier);
    void takeAction(const QString &identifier, const QString &key);
    [[nodiscard]] bool isToBeShown(const WaitingReminder &reminder) const;
    void setAlarm();
    void setLoginItem();

    const PlannerPorts &m_ports;
    SavedDataWriter &m_writer;
    ReminderWording m_wording;
    ScheduleReminders &m_schedules;
    QList<WaitingReminder> m_list;
    /// By their identifiers, those that the desktop has been asked to show and has not answered for: the last call.
    QHash<QString, quint64> m_askedFor;
    quint64 m_lastCall = 0;
    /// Identifiers of those that are due and that no service could show.
    QSet<QString> m_held;
    /// Identifiers of those that came together in one notification and are unanswered.
    QSet<QString> m_together;
    std::unique_ptr<Alarm> m_alarm;
    bool m_isStarted = false;
    /// What hasPending() was when the login item was set.
    bool m_hadPending = false;
};

} // namespace tessaly
