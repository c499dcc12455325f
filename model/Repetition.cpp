#include "model/Repetition.h"

#include <QStringList>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

/// Every month has the days before.
constexpr int firstRareDay = 29;

/// Of the days from the 28th to that day, the last one that the month has.
QString lastOfDays(int day)
{
    QStringList days;
    for (int each = firstRareDay - 1; each <= day; ++each)
        days.append(QString::number(each));
    return u";BYMONTHDAY="_s + days.join(u',') + u";BYSETPOS=-1"_s;
}

} // namespace

QString repetitionRule(Repetition repetition, QDate firstDay)
{
    const bool isRareDay = firstDay.day() >= firstRareDay;
    switch (repetition) {
    case Repetition::Never:
    case Repetition::Other:
        return {};
    case Repetition::Daily:
        return u"FREQ=DAILY"_s;
    case Repetition::Workdays:
        return u"FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR"_s;
    case Repetition::Weekly:
        return u"FREQ=WEEKLY"_s;
    case Repetition::Monthly:
        return u"FREQ=MONTHLY"_s + (isRareDay ? lastOfDays(firstDay.day()) : QString());
    case Repetition::Yearly:
        break;
    }
    return u"FREQ=YEARLY"_s +
           (isRareDay && firstDay.month() == 2 ? u";BYMONTH=2"_s + lastOfDays(firstDay.day()) : QString());
}

Repetition repetitionOf(const QString &rule)
{
    if (rule.isEmpty())
        return Repetition::Never;
    // The 29th of February is the rarest of all days: the rules of any day are among those of these.
    for (const QDate &day :
         {QDate(2024, 1, 28), QDate(2024, 1, 29), QDate(2024, 1, 30), QDate(2024, 1, 31), QDate(2024, 2, 29)}) {
        using enum Repetition;
        for (const Repetition each : {Daily, Workdays, Weekly, Monthly, Yearly}) {
            if (repetitionRule(each, day) == rule)
                return each;
        }
    }
    return Repetition::Other;
}

TextPair repetitionText(Repetition repetition, bool isAfterCompletion)
{
    switch (repetition) {
    case Repetition::Never:
        return {u"不重复"_s, u"Never"_s};
    case Repetition::Daily:
        return isAfterCompletion ? TextPair{u"完成一天后"_s, u"A day after it is done"_s}
                                 : TextPair{u"每天"_s, u"Every day"_s};
    case Repetition::Workdays:
        return isAfterCompletion ? TextPair{u"完成后的下一个工作日"_s, u"On the next workday after it is done"_s}
                                 : TextPair{u"每个工作日"_s, u"Every workday"_s};
    case Repetition::Weekly:
        return isAfterCompletion ? TextPair{u"完成一周后"_s, u"A week after it is done"_s}
                                 : TextPair{u"每周"_s, u"Every week"_s};
    case Repetition::Monthly:
        return isAfterCompletion ? TextPair{u"完成一个月后"_s, u"A month after it is done"_s}
                                 : TextPair{u"每月"_s, u"Every month"_s};
    case Repetition::Yearly:
        return isAfterCompletion ? TextPair{u"完成一年后"_s, u"A year after it is done"_s}
                                 : TextPair{u"每年"_s, u"Every year"_s};
    case Repetition::Other:
        break;
    }
    return {u"重复"_s, u"Repeats"_s};
}

} // namespace tessaly
