#include "model/CalendarGroups.h"

#include "model/CodePointOrder.h"

#include <algorithm>

namespace tessaly {

QList<CalendarGroup> groupCalendars(const QList<CalendarOption> &calendars)
{
    QList<CalendarGroup> groups;
    for (const CalendarOption &calendar : calendars) {
        auto group = std::ranges::find(groups, calendar.sourceTitle, &CalendarGroup::sourceTitle);
        if (group == groups.end())
            group = groups.insert(groups.end(), {calendar.sourceTitle, {}});
        group->calendars.append(calendar);
    }
    std::ranges::sort(groups, precedesByCodePoint, &CalendarGroup::sourceTitle);
    return groups;
}

GroupChoice groupChoice(const CalendarGroup &group, const QSet<QString> &chosen)
{
    const auto count = std::ranges::count_if(
        group.calendars, [&chosen](const CalendarOption &calendar) { return chosen.contains(calendar.id); });
    if (count == 0)
        return GroupChoice::None;
    return count == group.calendars.size() ? GroupChoice::All : GroupChoice::Some;
}

QSet<QString> withChoice(QSet<QString> chosen, const QStringList &identifiers, bool isChosen)
{
    for (const QString &identifier : identifiers) {
        if (isChosen)
            chosen.insert(identifier);
        else
            chosen.remove(identifier);
    }
    return chosen;
}

QList<CalendarOption> sortedCalendars(QList<CalendarOption> calendars)
{
    std::ranges::stable_sort(calendars, [](const CalendarOption &left, const CalendarOption &right) {
        return left.sourceTitle == right.sourceTitle ? precedesByCodePoint(left.title, right.title)
                                                     : precedesByCodePoint(left.sourceTitle, right.sourceTitle);
    });
    return calendars;
}

QList<CalendarOption> writableCalendars(QList<CalendarOption> calendars)
{
    calendars.removeIf([](const CalendarOption &calendar) { return !calendar.isWritable; });
    return calendars;
}

QStringList identifiersOf(const QList<CalendarOption> &calendars)
{
    QStringList identifiers;
    identifiers.reserve(calendars.size());
    for (const CalendarOption &calendar : calendars)
        identifiers.append(calendar.id);
    return identifiers;
}

} // namespace tessaly
