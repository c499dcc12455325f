#include "store/WaitingReminders.h"

#include "model/StateChange.h"
#include "platform/Clock.h"
#include "platform/LoginItem.h"
#include "platform/NotificationPresenter.h"
#include "store/PlannerPorts.h"
#include "store/SavedDataWriter.h"

#include <QPointer>

#include <algorithm>

namespace tessaly {

WaitingReminders::WaitingReminders(const PlannerPorts &ports, SavedDataWriter &writer)
    : m_ports(ports), m_writer(writer), m_list(writer.loadWaiting()),
      m_alarm(ports.clock.makeAlarm([this] { showDue(); }))
{
    m_ports.notificationPresenter.setAvailabilityHandler([this] {
        m_held.clear();
        showDue();
    });
}

WaitingReminders::~WaitingReminders()
{
    m_ports.notificationPresenter.setAvailabilityHandler({});
}

void WaitingReminders::start()
{
    m_isStarted = true;
    const Instant oldest = m_ports.clock.now().plus(-longestDelaySeconds);
    QList<WaitingReminder> list = m_list;
    list.removeIf([&](const WaitingReminder &reminder) { return dueInstant(reminder, m_ports.calendar) < oldest; });
    if (list != m_list) {
        assign(list);
        m_writer.save();
    }
    setLoginItem();
    showDue();
}

void WaitingReminders::replace(const QList<WaitingReminder> &before, const QList<WaitingReminder> &after,
                               StateChange &done)
{
    QList<WaitingReminder> list;
    for (const WaitingReminder &reminder : std::as_const(m_list)) {
        if (std::ranges::find(before, reminder.identifier, &WaitingReminder::identifier) == before.cend())
            list.append(reminder);
        else
            done.waitingBefore.append(reminder);
    }
    for (const WaitingReminder &reminder : after) {
        if (dueInstant(reminder, m_ports.calendar) < m_ports.clock.now())
            continue;
        list.append(reminder);
        done.waitingAfter.append(reminder);
    }
    for (const WaitingReminder &reminder : before + after) {
        m_askedFor.remove(reminder.identifier);
        m_held.remove(reminder.identifier);
    }
    assign(list);
}

void WaitingReminders::showDue()
{
    if (!m_isStarted)
        return;
    const auto [due, waiting] = splitDue(m_list, m_held, m_ports.calendar, m_ports.clock.now());
    if (!due.isEmpty()) {
        assign(waiting);
        // Before they are shown: a crash in between loses a notification, but none ever comes twice.
        m_writer.save();
    }
    for (const WaitingReminder &reminder : due)
        show(reminder);
    setAlarm();
}

void WaitingReminders::show(const WaitingReminder &reminder)
{
    m_askedFor.insert(reminder.identifier);
    m_ports.notificationPresenter.present({reminder.identifier, reminder.title, reminder.body},
                                          [self = QPointer(this), reminder](Presentation presentation) {
                                              // It may have been replaced, or its to-do ticked, while the desktop was
                                              // asked.
                                              if (!self || !self->m_askedFor.remove(reminder.identifier))
                                                  return;
                                              if (presentation == Presentation::Unavailable) {
                                                  self->m_held.insert(reminder.identifier);
                                                  self->assign(QList(self->m_list) << reminder);
                                                  self->m_writer.save();
                                              } else if (!self->m_held.isEmpty()) {
                                                  // Whoever has shown this one can show the others.
                                                  self->m_held.clear();
                                                  self->showDue();
                                              }
                                          });
}

void WaitingReminders::assign(const QList<WaitingReminder> &list)
{
    if (m_list == list)
        return;
    const bool hadAny = !m_list.isEmpty();
    m_list = list;
    m_writer.setWaiting(m_list);
    setAlarm();
    if (hadAny != !m_list.isEmpty())
        setLoginItem();
    emit changed();
}

void WaitingReminders::setAlarm()
{
    std::optional<Instant> next;
    for (const WaitingReminder &reminder : std::as_const(m_list)) {
        const Instant due = dueInstant(reminder, m_ports.calendar);
        if (!m_held.contains(reminder.identifier))
            next = std::min(next.value_or(due), due);
    }
    if (next && m_isStarted)
        m_alarm->set(*next);
    else
        m_alarm->cancel();
}

void WaitingReminders::setLoginItem()
{
    LoginItem &item = m_ports.reminderLoginItem;
    const bool isWanted = !m_list.isEmpty();
    if (!m_isStarted || (isWanted && item.isEnabled()))
        return;
    if (const Result<void> done = item.setEnabled(isWanted); !done)
        emit loginItemFailed(done.error());
}

} // namespace tessaly
