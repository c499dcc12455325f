#pragma once

#include "model/CalendarOption.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace tessaly {

/// The calendars of one account.
struct CalendarGroup
{
    QString sourceTitle = {};
    QList<CalendarOption> calendars = {};

    bool operator==(const CalendarGroup &) const = default;
};

/// How many calendars of an account are chosen.
enum class GroupChoice { None, Some, All };

/// The accounts sorted as plain strings, each with its calendars in the order given.
[[nodiscard]] QList<CalendarGroup> groupCalendars(const QList<CalendarOption> &calendars);
[[nodiscard]] GroupChoice groupChoice(const CalendarGroup &group, const QSet<QString> &chosen);
/// The set with the identifiers put in or taken out.
[[nodiscard]] QSet<QString> withChoice(QSet<QString> chosen, const QStringList &identifiers, bool isChosen);
/// By account, then title, both as plain strings; those alike keep their order.
[[nodiscard]] QList<CalendarOption> sortedCalendars(QList<CalendarOption> calendars);
/// Those that events can be added to, in the order given.
[[nodiscard]] QList<CalendarOption> writableCalendars(QList<CalendarOption> calendars);
[[nodiscard]] QStringList identifiersOf(const QList<CalendarOption> &calendars);

} // namespace tessaly
