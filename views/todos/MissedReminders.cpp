#include "views/todos/MissedReminders.h"

#include <algorithm>

namespace tessaly {

namespace {

QList<RowListModel<MissedReminderRow>::Role> roles()
{
    return {{"title", [](const MissedReminderRow &row) { return QVariant(row.title); }},
            {"dueText", [](const MissedReminderRow &row) { return QVariant(row.dueText); }}};
}

} // namespace

MissedReminders::MissedReminders(QObject *parent) : QObject(parent), m_rows(roles())
{
}

void MissedReminders::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    connect(&store->waitingReminders(), &WaitingReminders::changed, this, &MissedReminders::refresh);
    // Their titles and due dates.
    connect(store, &PlannerStore::remindersChanged, this, &MissedReminders::refresh);
    const auto onZone = [this] {
        m_labels = std::make_unique<DateLabels>(m_store->calendar());
        refresh();
    };
    connect(store, &PlannerStore::timeZoneChanged, this, onZone);
    onZone();
    emit storeChanged();
}

QString MissedReminders::tomorrowTime() const
{
    const QTime time = putOffTomorrow;
    return m_store ? m_store->calendar().locale().toString(time, QLocale::ShortFormat) : QString();
}

void MissedReminders::showAll()
{
    m_showsAll = true;
    refresh();
}

int MissedReminders::complete(int row)
{
    return answer(row, ReminderAnswer::Complete);
}

int MissedReminders::remindInTenMinutes(int row)
{
    return answer(row, ReminderAnswer::InTenMinutes);
}

int MissedReminders::remindInOneHour(int row)
{
    return answer(row, ReminderAnswer::InOneHour);
}

int MissedReminders::remindTomorrow(int row)
{
    return answer(row, ReminderAnswer::Tomorrow);
}

void MissedReminders::dismissAll()
{
    QStringList identifiers;
    for (const WaitingReminder &reminder : unanswered(m_store->waitingReminders().list(), m_store->calendar()))
        identifiers.append(reminder.identifier);
    m_store->answerReminders(identifiers, ReminderAnswer::Dismiss);
}

int MissedReminders::answer(int row, ReminderAnswer answer)
{
    if (row < 0 || row >= m_rows.rowCount())
        return -1;
    m_store->answerReminders({m_rows.rows().at(row).identifier}, answer);
    return std::min(row, m_rows.rowCount() - 1);
}

void MissedReminders::refresh()
{
    const WaitingReminders &reminders = m_store->waitingReminders();
    const QList<WaitingReminder> missed = unanswered(reminders.list(), m_store->calendar());
    m_count = static_cast<int>(missed.size());
    m_showsAll = m_showsAll && m_count > 0;
    m_wasClosed = std::ranges::all_of(
        missed, [](const WaitingReminder &reminder) { return reminder.state == ReminderState::Missed; });
    QList<MissedReminderRow> rows;
    for (const WaitingReminder &reminder : missed.first(m_showsAll ? m_count : std::min(m_count, mostRows))) {
        rows.append({reminder.identifier, reminders.wording().title(reminder),
                     m_labels->dayAndTime(reminders.wording().due(reminder))});
    }
    m_rows.setRows(rows);
    emit changed();
}

} // namespace tessaly
