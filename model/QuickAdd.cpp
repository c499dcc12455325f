#include "model/QuickAdd.h"

#include "model/QuickAddPieces.h"

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr int dayMinutes = 24 * 60;

Instant atMinute(QDate day, int minutes, const UserCalendar &calendar)
{
    return calendar.instant(day.addDays(minutes / dayMinutes), QTime(0, 0).addSecs(minutes % dayMinutes * 60));
}

/// On today: not before now, and still today.
Instant laterToday(Instant now, const UserCalendar &calendar)
{
    const Instant lastMinute = calendar.instant(calendar.day(now), QTime(23, 59));
    return std::max(now, std::min(nextFullHour(now, calendar), lastMinute));
}

struct Times
{
    std::optional<Instant> start = {};
    std::optional<Instant> end = {};
};

Times withLength(Instant start, std::optional<int> minutes)
{
    return {start, minutes ? std::optional(start.plus(*minutes * 60)) : std::nullopt};
}

/// What is said of a day without its time.
Times onDay(const QuickAddPhrase &phrase, Instant now, const UserCalendar &calendar)
{
    const QDate today = calendar.day(now);
    const DayPeriod period = phrase.period != DayPeriod::None ? phrase.period : phrase.day->period;
    const QDate day = notBefore(*phrase.day, today);
    const Instant usual = atMinute(day, defaultMinutes(period), calendar);
    const bool isForenoonOver = period != DayPeriod::None && period != DayPeriod::LateEvening;
    if (day != today || (isForenoonOver && usual < now && phrase.day->repeats == QuickAddDay::Repeats::Said))
        return withLength(usual, phrase.length);
    const bool isUsual = period != DayPeriod::None && usual >= now;
    return withLength(isUsual ? usual : laterToday(now, calendar), phrase.length);
}

Times atTime(const QuickAddPhrase &phrase, Instant now, const UserCalendar &calendar)
{
    const DayPeriod dayPeriod = phrase.day ? phrase.day->period : DayPeriod::None;
    const QuickAddMinutes minutes =
        minutesOf(*phrase.time, phrase.period != DayPeriod::None ? phrase.period : dayPeriod);
    const QDate today = calendar.day(now);
    // A time alone is that of today, or of tomorrow where it is over.
    const bool isRolling = !phrase.day || phrase.day->repeats != QuickAddDay::Repeats::Said;
    const auto meant = [&](QDate earliest) { return phrase.day ? notBefore(*phrase.day, earliest) : earliest; };
    QDate day = meant(today);
    if (isRolling && atMinute(day, minutes.start, calendar) < now)
        day = meant(day.addDays(1));
    const Instant start = atMinute(day, minutes.start, calendar);
    if (!minutes.end)
        return withLength(start, phrase.length);
    const Instant end = atMinute(day, *minutes.end, calendar);
    // The clocks may skip or repeat what lies between.
    return {start, end > start ? end : start.plus((*minutes.end - minutes.start) * 60)};
}

Times timesOf(const QuickAddPhrase &phrase, Instant now, const UserCalendar &calendar)
{
    if (phrase.minutesFromNow) {
        const double wholeMinute = std::floor(now.seconds / 60) * 60;
        return withLength(Instant{wholeMinute + *phrase.minutesFromNow * 60.0}, phrase.length);
    }
    if (phrase.time)
        return atTime(phrase, now, calendar);
    return phrase.day ? onDay(phrase, now, calendar) : Times{};
}

bool isSeparator(QChar character)
{
    // lint-allow(text): signs around a title
    return character.isSpace() || QStringView(u",，、;；:：-–—。()（）").contains(character);
}

/// The text outside the spans, without the signs that the rest began or ended with.
QString titleOf(const QString &phrase, const QList<TextSpan> &understood)
{
    QString title;
    qsizetype from = 0;
    for (const TextSpan &span : understood) {
        title += QStringView(phrase).sliced(from, span.start - from);
        from = span.start + span.length;
        const bool isHanBefore = !title.isEmpty() && title.back().script() == QChar::Script_Han;
        const bool isHanBehind = from < phrase.size() && phrase[from].script() == QChar::Script_Han;
        if (!isHanBefore || !isHanBehind)
            title += u' ';
    }
    title += QStringView(phrase).sliced(from);
    qsizetype start = 0;
    qsizetype end = title.size();
    while (!understood.isEmpty() && start < end && isSeparator(title[start]))
        ++start;
    while (!understood.isEmpty() && end > start && isSeparator(title[end - 1]))
        --end;
    return title.sliced(start, end - start).simplified();
}

} // namespace

QuickEntry quickEntry(const QString &phrase, Instant now, const UserCalendar &calendar)
{
    const QString format = calendar.locale().dateFormat(QLocale::ShortFormat);
    const bool isDayFirst = format.indexOf(u'd') < format.indexOf(u'M') && calendar.locale() != QLocale::c();
    const QuickAddPhrase said = quickAddPhrase(phrase, {calendar.day(now), calendar.firstWeekday(), isDayFirst});
    const Times times = timesOf(said, now, calendar);
    const QString title = titleOf(phrase, said.understood);
    if (!times.start || title.isEmpty())
        return {.title = phrase.simplified()};
    QuickEntry entry{.title = title, .start = times.start, .end = times.end, .understood = said.understood};
    if (said.isDeadline)
        entry.kind = QuickEntry::Kind::ToDo;
    else if (times.end)
        entry.kind = QuickEntry::Kind::Schedule;
    return entry;
}

Instant nextFullHour(Instant now, const UserCalendar &calendar)
{
    const double past = calendar.minuteOfDay(now) % 60 * 60 + (now.seconds - std::floor(now.seconds / 60) * 60);
    return now.plus(3600 - past);
}

ScheduleItem scheduleOf(const QuickEntry &entry, Instant now, const UserCalendar &calendar)
{
    const Instant start = entry.start.value_or(nextFullHour(now, calendar));
    const Instant end = entry.end.value_or(start.plus(defaultScheduleSeconds));
    // A colour of its own, which it also keeps in a calendar.
    return {.title = entry.title,
            .date = start,
            .endDate = std::max(end, start.plus(leastScheduleSeconds)),
            .colorName = QStringLiteral("blue")};
}

ReminderItem toDoOf(const QuickEntry &entry)
{
    return {.title = entry.title, .dueDate = entry.start};
}

QString timeLabel(Instant start, std::optional<Instant> end, Instant now, const UserCalendar &calendar,
                  AppLanguage language)
{
    const bool isEnglish = language == AppLanguage::English;
    const QDateTime from = calendar.dateTime(start);
    const QDate today = calendar.day(now);
    QString day;
    if (from.date() == today)
        day = isEnglish ? u"today"_s : u"今天"_s;
    else if (from.date() == today.addDays(1))
        day = isEnglish ? u"tomorrow"_s : u"明天"_s;
    else if (from.date().year() == today.year())
        day = interfaceLocale(isEnglish).toString(from.date(), isEnglish ? u"ddd, MMM d" : u"M月d日 ddd");
    else
        day = interfaceLocale(isEnglish).toString(from.date(), isEnglish ? u"ddd, MMM d, yyyy" : u"yyyy年M月d日 ddd");
    const QString time = from.toString(u"HH:mm");
    const QString until = end ? u'–' + calendar.dateTime(*end).toString(u"HH:mm") : QString();
    return day + u' ' + time + until;
}

} // namespace tessaly
