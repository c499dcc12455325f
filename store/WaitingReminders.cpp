#include "store/WaitingReminders.h"

#include "model/StateChange.h"
#include "platform/Clock.h"
#include "platform/LoginItem.h"
#include "store/PlannerPorts.h"
#include "store/SavedDataWriter.h"
#include "store/ScheduleReminders.h"

#include <QPointer>

#include <algorithm>

namespace tessaly {

namespace {

/// How long after its minute began a reminder is late.
constexpr double lateSeconds = 60;

bool isPending(const WaitingReminder &reminder)
{
    return reminder.state == ReminderState::Waiting || reminder.state == ReminderState::Due;
}

} // namespace

WaitingReminders::WaitingReminders(const PlannerPorts &ports, SavedDataWriter &writer, const ReminderWording &wording,
                                   ScheduleReminders &schedules)
    : m_ports(ports), m_writer(writer), m_wording(wording), m_schedules(schedules), m_list(writer.loadWaiting()),
      m_alarm(ports.clock.makeAlarm([this] { showDue(); }))
{
    m_ports.notificationPresenter.setActionHandler(
        [this](const QString &identifier, const QString &key) { takeAction(identifier, key); });
    m_ports.notificationPresenter.setAvailabilityHandler([this] {
        m_held.clear();
        showDue();
    });
}

WaitingReminders::~WaitingReminders()
{
    m_ports.notificationPresenter.setActionHandler({});
    m_ports.notificationPresenter.setAvailabilityHandler({});
}

bool WaitingReminders::hasPending() const
{
    return std::ranges::any_of(m_list, isPending) || m_schedules.next();
}

void WaitingReminders::start()
{
    m_isStarted = true;
    setLoginItem();
    present(ReminderEvent::WasReported);
}

void WaitingReminders::showDue()
{
    if (m_isStarted)
        present(ReminderEvent::WasShown);
}

void WaitingReminders::replace(const QList<WaitingReminder> &before, const QList<WaitingReminder> &after,
                               StateChange &done)
{
    const auto in = [](const QList<WaitingReminder> &list, const WaitingReminder &reminder) {
        return std::ranges::find(list, reminder.identifier, &WaitingReminder::identifier);
    };
    const auto isTooLate = [this, now = m_ports.clock.now()](const WaitingReminder &reminder) {
        return !reminder.isUnanswered() && dueInstant(reminder, m_ports.calendar) < now;
    };
    QList<WaitingReminder> list;
    QSet<QString> stillShown;
    for (const WaitingReminder &reminder : std::as_const(m_list)) {
        const auto next = in(after, reminder);
        // One that was put off, which is done again after the new minute has passed, is still unanswered.
        const bool staysUnanswered = reminder.isUnanswered() && next != after.cend() && isTooLate(*next);
        if (staysUnanswered)
            stillShown.insert(reminder.identifier);
        if (staysUnanswered || in(before, reminder) == before.cend())
            list.append(reminder);
        else
            done.waitingBefore.append(reminder);
    }
    for (const WaitingReminder &reminder : after) {
        if (isTooLate(reminder))
            continue;
        list.append(reminder);
        done.waitingAfter.append(reminder);
    }
    for (const WaitingReminder &reminder : before + after) {
        if (!stillShown.contains(reminder.identifier))
            takeOffDesktop(reminder.identifier);
    }
    assign(list);
}

void WaitingReminders::takeOffDesktop(const QString &identifier)
{
    m_askedFor.remove(identifier);
    m_held.remove(identifier);
    m_ports.notificationPresenter.withdraw(identifier);
    if (m_together.remove(identifier) && m_together.isEmpty())
        m_ports.notificationPresenter.withdraw(ReminderWording::missedIdentifier);
}

bool WaitingReminders::isToBeShown(const WaitingReminder &reminder) const
{
    return reminder.state == ReminderState::Due && !m_askedFor.contains(reminder.identifier) &&
           !m_held.contains(reminder.identifier);
}

void WaitingReminders::takeDue(Instant now)
{
    QList<WaitingReminder> list = m_list;
    const QList<WaitingReminder> ofSchedules = m_schedules.takeDue(now);
    for (const WaitingReminder &reminder : ofSchedules) {
        if (std::ranges::find(list, reminder.identifier, &WaitingReminder::identifier) == list.end())
            list.append(reminder);
    }
    for (WaitingReminder &reminder : list) {
        if (reminder.state == ReminderState::Waiting && dueInstant(reminder, m_ports.calendar) <= now)
            reminder.state = stateAfter(reminder.state, ReminderEvent::MinuteBegan);
    }
    const QStringList gone = takeGone(list);
    if (list != m_list) {
        assign(list);
        // Before they are shown: a planner that is killed meanwhile finds them due at its next start.
        m_writer.save();
    }
    for (const QString &identifier : gone)
        takeOffDesktop(identifier);
    if (!ofSchedules.isEmpty())
        m_schedules.save();
}

QStringList WaitingReminders::takeGone(QList<WaitingReminder> &list) const
{
    QStringList gone;
    list.removeIf([&](const WaitingReminder &reminder) {
        const bool isGone = ScheduleReminders::isOfSchedule(reminder) && !m_wording.hasRecord(reminder);
        if (isGone)
            gone.append(reminder.identifier);
        return isGone;
    });
    return gone;
}

void WaitingReminders::present(ReminderEvent event)
{
    const Instant now = m_ports.clock.now();
    takeDue(now);
    QList<WaitingReminder> late;
    QList<WaitingReminder> single;
    for (const WaitingReminder &reminder : unanswered(m_list, m_ports.calendar)) {
        const bool isLate = dueInstant(reminder, m_ports.calendar).plus(lateSeconds) <= now;
        if (isToBeShown(reminder))
            (isLate ? late : single).append(reminder);
    }
    if (late.size() == 1)
        single.prepend(late.takeFirst());
    if (!late.isEmpty()) {
        for (const WaitingReminder &reminder : std::as_const(late))
            m_together.insert(reminder.identifier);
        hand(m_wording.notification(late), late, event);
    }
    for (const WaitingReminder &reminder : std::as_const(single))
        hand(m_wording.notification(reminder), {reminder}, event);
    setAlarm();
}

void WaitingReminders::hand(const Notification &notification, const QList<WaitingReminder> &reminders,
                            ReminderEvent event)
{
    const quint64 call = ++m_lastCall;
    QStringList identifiers;
    for (const WaitingReminder &reminder : reminders) {
        identifiers.append(reminder.identifier);
        m_askedFor.insert(reminder.identifier, call);
    }
    m_ports.notificationPresenter.present(notification,
                                          [self = QPointer(this), identifiers, call, event](Presentation presentation) {
                                              if (self)
                                                  self->takeAnswer(identifiers, call, presentation, event);
                                          });
}

void WaitingReminders::takeAnswer(const QStringList &identifiers, quint64 call, Presentation presentation,
                                  ReminderEvent event)
{
    QList<WaitingReminder> list = m_list;
    for (WaitingReminder &reminder : list) {
        // It may have been answered, or put off and shown again, while the desktop was asked.
        if (!identifiers.contains(reminder.identifier) || m_askedFor.value(reminder.identifier) != call)
            continue;
        m_askedFor.remove(reminder.identifier);
        if (presentation == Presentation::Unavailable)
            m_held.insert(reminder.identifier);
        else
            reminder.state = stateAfter(reminder.state, event);
    }
    if (list != m_list) {
        assign(list);
        m_writer.save();
    }
    if (presentation == Presentation::Shown && !m_held.isEmpty()) {
        // Whoever has shown this one can show the others.
        m_held.clear();
        showDue();
    }
}

void WaitingReminders::takeAction(const QString &identifier, const QString &key)
{
    if (identifier == ReminderWording::missedIdentifier)
        emit showRequested();
    else if (const auto answer = ReminderWording::answerOf(key))
        emit answered(identifier, *answer);
}

void WaitingReminders::assign(const QList<WaitingReminder> &list)
{
    if (m_list == list)
        return;
    m_list = list;
    m_writer.setWaiting(m_list);
    setAlarm();
    emit changed();
}

void WaitingReminders::setAlarm()
{
    std::optional<Instant> next = m_schedules.next();
    for (const WaitingReminder &reminder : std::as_const(m_list)) {
        if (reminder.state != ReminderState::Waiting && !isToBeShown(reminder))
            continue;
        const Instant due = dueInstant(reminder, m_ports.calendar);
        next = std::min(next.value_or(due), due);
    }
    if (!m_isStarted)
        return;
    if (next)
        m_alarm->set(*next);
    else
        m_alarm->cancel();
    if (hasPending() != m_hadPending) {
        setLoginItem();
        emit changed();
    }
}

void WaitingReminders::setLoginItem()
{
    LoginItem &item = m_ports.reminderLoginItem;
    m_hadPending = hasPending();
    if (m_hadPending && item.isEnabled())
        return;
    if (const Result<void> done = item.setEnabled(m_hadPending); !done)
        emit loginItemFailed(done.error());
}

} // namespace tessaly
