#include "views/dashboard/TodayModel.h"

#include "model/DisplayTitle.h"
#include "model/ReminderRules.h"
#include "model/ScheduleColors.h"
#include "model/ScheduleRules.h"
#include "model/Uuid.h"
#include "platform/Clock.h"
#include "store/RecordRows.h"

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

/// Rows of the sidebar.
constexpr int scheduleSection = 1;
constexpr int toDoSection = 2;

} // namespace

TodayModel::TodayModel(QObject *parent)
    : QObject(parent),
      m_rows({{"itemId", [](const TodayRow &row) { return QVariant(uuidText(row.id)); }},
              {"section", [](const TodayRow &row) { return QVariant(row.isToDo ? toDoSection : scheduleSection); }},
              {"title", [](const TodayRow &row) { return QVariant(row.title); }},
              {"timeText", [](const TodayRow &row) { return QVariant(row.timeText); }},
              {"colorKey", [](const TodayRow &row) { return QVariant(row.colorKey); }},
              {"isToDo", [](const TodayRow &row) { return QVariant(row.isToDo); }},
              {"isOverdue", [](const TodayRow &row) { return QVariant(row.isOverdue); }}})
{
}

TodayModel::~TodayModel() = default;

void TodayModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    m_alarm = store->clock().makeAlarm([this] { refresh(); });
    connect(store, &PlannerStore::remindersChanged, this, &TodayModel::refresh);
    connect(store, &PlannerStore::schedulesChanged, this, &TodayModel::refresh);
    connect(store, &PlannerStore::calendarFeedsChanged, this, &TodayModel::refresh);
    connect(store, &PlannerStore::timeZoneChanged, this, &TodayModel::refresh);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &TodayModel::refresh);
    emit storeChanged();
    refresh();
}

int TodayModel::toggle(int row)
{
    const qsizetype storeRow = rowOf(m_store->reminders(), m_rows.rows().value(row).id);
    if (storeRow < 0)
        return row;
    const ReminderItem before = m_store->reminders().at(storeRow);
    const ReminderItem after = toggled(before, m_store->clock().now());
    // The row vanishes. The next one of a repeating to-do says that it was ticked.
    if (before.recurrenceRule)
        m_store->updateReminder(after);
    else
        m_store->perform({.reminders = {editOf(before, after, storeRow)}}, TextPair{u"完成待办"_s, u"Complete to-do"_s},
                         {u"已完成“%1”"_s.arg(before.title), u"Completed “%1”"_s.arg(before.title)});
    return std::min(row, count() - 1);
}

void TodayModel::refresh()
{
    const UserCalendar &calendar = m_store->calendar();
    const Instant now = m_store->clock().now();
    const RemainingDay remaining = remainingDay(m_store->schedules(), calendar, now);
    const LinkColors colors = linkColors(m_store->calendarFeeds());
    QList<TodayRow> rows;
    for (const TodayEntry &entry :
         todayEntries(remaining, m_store->schedules(), m_store->reminders(), calendar, now, mostRows)) {
        if (entry.kind == TodayEntry::Kind::ToDo) {
            const ReminderItem &item = m_store->reminders().at(entry.row);
            const QString time = timeRangeText(entry.moment, std::nullopt, calendar);
            rows.append({.id = item.id,
                         .title = item.title,
                         .timeText = m_store->text(u"截止 %1"_s, u"due %1"_s).arg(time),
                         .isToDo = true,
                         .isOverdue = isOverdue(item, now)});
        } else {
            const ScheduleItem &item = m_store->schedules().at(entry.row);
            rows.append({.id = item.id,
                         .title = displayTitle(item),
                         .timeText = timeRangeText(item.date, item.endDate, calendar),
                         .colorKey = scheduleColor(item, colors)});
        }
    }
    m_rows.setRows(rows);
    m_alarm->set(std::min(remaining.validUntil, nextDueDate(m_store->reminders(), now).value_or(remaining.validUntil)));
    emit countChanged();
}

} // namespace tessaly
