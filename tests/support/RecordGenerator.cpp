#include "tests/support/RecordGenerator.h"

#include <array>

namespace tessaly {

namespace {

constexpr std::array<const char *, 40> plainWords = {
    "meeting", "review",  "with",  "the",   "team",  "about",     "budget",  "and",   "plan",   "draft",
    "call",    "dentist", "lunch", "train", "to",    "Vienna",    "prepare", "notes", "for",    "seminar",
    "read",    "chapter", "five",  "write", "essay", "garden",    "buy",     "milk",  "coffee", "send",
    "invoice", "fix",     "bike",  "visit", "a",     "neighbour", "print",   "form",  "at",     "noon"};
constexpr std::array<const char *, 8> otherWords = {"会议", "復習", "Ärztin", "café", "项目计划", "naïve", "🚲", "план"};
constexpr std::array<const char *, 5> colorNames = {"blue", "purple", "green", "orange", "pink"};
constexpr std::array<const char *, 4> colors = {"#3A7BD5", "#FF9500", "#34C759", "#AF52DE"};
constexpr std::array<const char *, 4> tags = {"work", "family", "study", "health"};

} // namespace

qsizetype RecordGenerator::below(qsizetype bound)
{
    return qsizetype(m_random() % quint64(bound));
}

bool RecordGenerator::happens(double probability)
{
    return double(m_random() >> 11) * 0x1p-53 < probability;
}

QString RecordGenerator::words(qsizetype count)
{
    QString text;
    for (qsizetype i = 0; i < count; ++i) {
        if (i > 0)
            text += happens(0.04) ? QLatin1Char('\n') : QLatin1Char(' ');
        const bool isQuoted = happens(0.02);
        if (isQuoted)
            text += QLatin1Char('"');
        text += QString::fromUtf8(happens(0.04) ? otherWords[size_t(below(otherWords.size()))]
                                                : plainWords[size_t(below(plainWords.size()))]);
        if (isQuoted)
            text += QLatin1Char('"');
    }
    return text;
}

QUuid RecordGenerator::id()
{
    std::array<quint64, 2> bits = {m_random(), m_random()};
    return QUuid::fromRfc4122(QByteArrayView(reinterpret_cast<const char *>(bits.data()), sizeof bits));
}

Instant RecordGenerator::instant()
{
    constexpr qsizetype minutesOfTenYears = 5'259'600;
    constexpr double year2020 = 599'616'000;
    const double fraction = happens(0.05) ? double(m_random() >> 11) * 0x1p-53 : 0;
    return {year2020 + double(below(minutesOfTenYears)) * 60 + fraction};
}

ScheduleItem RecordGenerator::schedule()
{
    ScheduleItem item{.id = id(), .title = words(2 + below(4)), .date = instant()};
    if (happens(0.9))
        item.endDate = item.date.plus(double(900 * (1 + below(12))));
    item.notes = words(below(38));
    if (happens(0.05)) {
        item.taskTitle = words(3);
        item.isTaskComplete = happens(0.5);
    }
    for (qsizetype count = happens(0.3) ? 1 + below(2) : 0; count > 0; --count)
        item.tasks->append({.id = id(), .title = words(1 + below(4)), .isComplete = happens(0.5)});
    if (happens(0.4))
        item.tag = QLatin1String(tags[size_t(below(tags.size()))]);
    if (happens(0.5))
        item.colorName = QLatin1String(colorNames[size_t(below(colorNames.size()))]);
    else if (happens(0.2))
        item.customColorHex = QLatin1String(colors[size_t(below(colors.size()))]);
    if (happens(0.1))
        item.calendarExportRequested = happens(0.8);
    if (happens(0.4)) {
        item.calendarEventIdentifier = id().toString(QUuid::WithoutBraces).toUpper();
        item.calendarIdentifier = QStringLiteral("feed:") + id().toString(QUuid::WithoutBraces).toUpper();
        item.calendarColorHex = QLatin1String(colors[size_t(below(colors.size()))]);
    }
    return item;
}

ReminderItem RecordGenerator::reminder()
{
    ReminderItem item{.id = id(), .title = words(2 + below(5))};
    if (happens(0.7))
        item.dueDate = instant();
    if (happens(0.3))
        item.requirement = words(3 + below(10));
    item.isComplete = happens(0.5);
    if (item.isComplete)
        item.completedAt = instant();
    return item;
}

Goal RecordGenerator::goal()
{
    Goal goal{.id = id(), .title = words(2 + below(3))};
    if (happens(0.6))
        goal.summary = words(5 + below(12));
    if (happens(0.5))
        goal.category = QLatin1String(tags[size_t(below(tags.size()))]);
    if (happens(0.5))
        goal.targetDate = instant();
    goal.progress = double(below(101)) / 100;
    goal.colorName = QLatin1String(colorNames[size_t(below(colorNames.size()))]);
    for (qsizetype count = below(4); count > 0; --count) {
        Subgoal subgoal{.id = id(), .title = words(2 + below(3)), .isComplete = happens(0.2)};
        for (qsizetype tasks = below(5); tasks > 0; --tasks)
            subgoal.tasks->append(
                {.id = id(), .title = words(3), .weight = double(1 + below(20)) / 4, .isComplete = happens(0.4)});
        goal.subgoals->append(subgoal);
    }
    return goal;
}

SavedData RecordGenerator::savedData(qsizetype schedules, qsizetype reminders, qsizetype goals)
{
    SavedData data;
    data.schedules.reserve(schedules);
    for (; schedules > 0; --schedules)
        data.schedules.append(schedule());
    for (; reminders > 0; --reminders)
        data.reminders.append(reminder());
    for (; goals > 0; --goals)
        data.goals.append(goal());
    return data;
}

} // namespace tessaly
