#pragma once

#include "model/AppLanguage.h"
#include "model/SavedData.h"
#include "model/UserCalendar.h"

#include <QByteArray>
#include <QSet>
#include <QString>

namespace tessaly {

/// What stands on one day.
struct AgendaDay
{
    QDate day = {};
    /// Schedules that start on the day, earliest first.
    QList<ScheduleItem> schedules = {};
    /// Open to-dos that are due on the day, earliest first.
    QList<ReminderItem> reminders = {};

    bool operator==(const AgendaDay &) const = default;
};

/// What is ahead.
struct Agenda
{
    /// Open to-dos that were due before the first day, earliest first.
    QList<ReminderItem> overdue = {};
    /// Today and the days after it, each of them also where nothing stands on it.
    QList<AgendaDay> days = {};
    /// Open to-dos without a due date, in stored order.
    QList<ReminderItem> undated = {};

    bool operator==(const Agenda &) const = default;
};

/// The next `dayCount` days, of which the first is that of `now`. Schedules of calendars that are not visible are left
/// out.
[[nodiscard]] Agenda agenda(const SavedData &data, const QSet<QString> &visibleCalendarIDs,
                            const UserCalendar &calendar, Instant now, int dayCount);

/// For a terminal: a line for each day with something on it, and one for each entry; to-dos without a due date last.
[[nodiscard]] QString agendaText(const Agenda &agenda, const UserCalendar &calendar, AppLanguage language);

/// JSON (RFC 8259): an object with `overdue`, `days` and `undated`; times in the user's zone with their offset (ISO
/// 8601).
[[nodiscard]] QByteArray agendaJson(const Agenda &agenda, const UserCalendar &calendar);

} // namespace tessaly
