#include "model/ChineseCalendar.h"

#include <ChineseCalendarTable.h>

#include <QStringList>

#include <algorithm>
#include <array>
#include <iterator>

namespace tessaly {

namespace {

struct Name
{
    QStringView chinese;
    QStringView english;
    /// English in at most eight letters, where the name has more.
    QStringView narrow = {};

    [[nodiscard]] QString in(bool isEnglish) const { return (isEnglish ? english : chinese).toString(); }
    [[nodiscard]] QString narrowIn(bool isEnglish) const
    {
        if (isEnglish)
            return (narrow.isEmpty() ? english : narrow).toString();
        const bool endsInFestival = chinese.size() > 2 && chinese.endsWith(u'节');
        return (endsInFestival ? chinese.chopped(1) : chinese).toString();
    }
};

constexpr std::array<Name, 24> terms{{{u"小寒", u"Lesser Cold", u"L. Cold"},
                                      {u"大寒", u"Greater Cold", u"G. Cold"},
                                      {u"立春", u"Spring Begins", u"Spring"},
                                      {u"雨水", u"Rain Water", u"Rain"},
                                      {u"惊蛰", u"Insects Awaken", u"Insects"},
                                      {u"春分", u"Spring Equinox", u"Equinox"},
                                      {u"清明", u"Qingming"},
                                      {u"谷雨", u"Grain Rain", u"Rain"},
                                      {u"立夏", u"Summer Begins", u"Summer"},
                                      {u"小满", u"Grain Buds", u"Buds"},
                                      {u"芒种", u"Grain in Ear", u"Ears"},
                                      {u"夏至", u"Summer Solstice", u"Solstice"},
                                      {u"小暑", u"Lesser Heat", u"L. Heat"},
                                      {u"大暑", u"Greater Heat", u"G. Heat"},
                                      {u"立秋", u"Autumn Begins", u"Autumn"},
                                      {u"处暑", u"End of Heat", u"Heat End"},
                                      {u"白露", u"White Dew", u"W. Dew"},
                                      {u"秋分", u"Autumn Equinox", u"Equinox"},
                                      {u"寒露", u"Cold Dew", u"C. Dew"},
                                      {u"霜降", u"Frost Descends", u"Frost"},
                                      {u"立冬", u"Winter Begins", u"Winter"},
                                      {u"小雪", u"Lesser Snow", u"L. Snow"},
                                      {u"大雪", u"Greater Snow", u"G. Snow"},
                                      {u"冬至", u"Winter Solstice", u"Solstice"}}};

// In the order of the numbers in the table.
constexpr std::array<Name, 9> holidays{{{u"元旦", u"New Year"},
                                        {u"春节", u"Spring Festival", u"CNY"},
                                        {u"清明节", u"Qingming"},
                                        {u"劳动节", u"Labour Day", u"Labour"},
                                        {u"端午节", u"Dragon Boat", u"Dragon"},
                                        {u"中秋节", u"Mid-Autumn", u"Mid-Aut."},
                                        {u"国庆节", u"National Day", u"National"},
                                        {u"国庆节", u"National Day", u"National"},
                                        {u"抗战胜利日", u"Victory Day", u"Victory"}}};

struct Festival
{
    int month;
    int day;
    Name name;
};

constexpr std::array<Festival, 7> festivals{{{1, 1, {u"春节", u"Spring Festival", u"CNY"}},
                                             {1, 15, {u"元宵节", u"Lantern"}},
                                             {5, 5, {u"端午节", u"Dragon Boat", u"Dragon"}},
                                             {7, 7, {u"七夕", u"Qixi"}},
                                             {8, 15, {u"中秋节", u"Mid-Autumn", u"Mid-Aut."}},
                                             {9, 9, {u"重阳节", u"Double Ninth", u"Double 9"}},
                                             {12, 8, {u"腊八节", u"Laba"}}}};
constexpr Name yearEve{u"除夕", u"New Year’s Eve", u"CNY Eve"};

// lint-allow(text): digits of Chinese dates, which English writes as numbers
constexpr QStringView monthDigits = u"正二三四五六七八九十冬腊";
constexpr QStringView digits = u"一二三四五六七八九十";
constexpr QStringView dayTens = u"初十廿";

struct Announcement
{
    int name;
    bool isWorkDay;
    /// Whether the name is that of the day itself.
    bool isItself;
};

std::optional<Announcement> announcement(QDate day)
{
    constexpr std::uint32_t dayBits = 0xffff;
    const qint64 number = QDate(2001, 1, 1).daysTo(day);
    if (number < 0 || number > dayBits)
        return std::nullopt;
    const auto *const found = std::ranges::lower_bound(chinese::dayOffs, static_cast<std::uint32_t>(number), {},
                                                       [](std::uint32_t entry) { return entry & dayBits; });
    if (found == std::end(chinese::dayOffs) || (*found & dayBits) != number)
        return std::nullopt;
    return Announcement{static_cast<int>(*found >> 16 & 0xf), (*found >> 20 & 1) != 0, (*found >> 21 & 1) != 0};
}

QString monthText(const LunarDay &day, bool isEnglish)
{
    if (isEnglish)
        return (day.isLeap ? QStringLiteral("leap month %1") : QStringLiteral("month %1")).arg(day.month);
    return (day.isLeap ? QStringLiteral("闰") : QString()) + monthDigits.at(day.month - 1) + u'月';
}

QString dayText(int day)
{
    // The 20th and 30th are written with the digit, not with the sign for tens.
    const auto tens = (day - 1) / 10;
    const bool isWhole = day % 10 == 0 && day > 10;
    return QString(isWhole ? digits.at(tens) : dayTens.at(tens)) + digits.at((day - 1) % 10);
}

std::optional<Name> festival(const LunarDay &day)
{
    if (day.isYearEnd)
        return yearEve;
    const auto *const found = std::ranges::find_if(festivals, [&day](const Festival &each) {
        return !day.isLeap && each.month == day.month && each.day == day.day;
    });
    return found == festivals.end() ? std::nullopt : std::optional(found->name);
}

QString ordinal(int number)
{
    const int last = number / 10 == 1 ? 0 : number % 10;
    const char16_t *ending = last == 1 ? u"st" : last == 2 ? u"nd" : last == 3 ? u"rd" : u"th";
    return QString::number(number) + QString::fromUtf16(ending);
}

QString shortText(const LunarDay &day, bool isEnglish)
{
    if (isEnglish)
        return day.day == 1 ? (day.isLeap ? QStringLiteral("leap %1") : QStringLiteral("month %1")).arg(day.month)
                            : ordinal(day.day);
    return day.day == 1 ? monthText(day, false) : dayText(day.day);
}

QString longText(const LunarDay &day, bool isEnglish)
{
    if (isEnglish)
        return QStringLiteral("lunar %1, day %2").arg(monthText(day, true)).arg(day.day);
    return QStringLiteral("农历") + monthText(day, false) + dayText(day.day);
}

} // namespace

std::optional<LunarDay> lunarDay(QDate day)
{
    if (!day.isValid() || day.year() < chinese::firstYear || day.year() > chinese::lastYear)
        return std::nullopt;
    const auto startOf = [](int year) {
        return QDate(year, 1, 1).addDays(chinese::lunarYears[year - chinese::firstLunarYear] & 0x3f);
    };
    const int year = day < startOf(day.year()) ? day.year() - 1 : day.year();
    const std::uint32_t table = chinese::lunarYears[year - chinese::firstLunarYear];
    const auto leap = static_cast<int>(table >> 6 & 0xf);
    const int monthCount = leap == 0 ? 12 : 13;
    auto left = static_cast<int>(startOf(year).daysTo(day));
    for (int index = 0; index < monthCount; ++index) {
        const int length = (table >> (10 + index) & 1) != 0 ? 30 : 29;
        if (left < length) {
            const bool isLeap = leap != 0 && index == leap;
            const int month = leap != 0 && index >= leap ? index : index + 1;
            return LunarDay{month, left + 1, isLeap, index == monthCount - 1 && left == length - 1};
        }
        left -= length;
    }
    return std::nullopt;
}

std::optional<int> solarTerm(QDate day)
{
    if (!day.isValid() || day.year() < chinese::firstYear || day.year() > chinese::lastYear)
        return std::nullopt;
    const std::uint64_t year = chinese::termYears[day.year() - chinese::firstYear];
    for (const int term : {2 * day.month() - 2, 2 * day.month() - 1}) {
        if (chinese::firstTermDays[term] + static_cast<int>(year >> (2 * term) & 3) == day.day())
            return term;
    }
    return std::nullopt;
}

ChineseDay chineseDay(QDate day, bool isEnglish)
{
    const std::optional<LunarDay> lunar = lunarDay(day);
    if (!lunar)
        return {};
    const std::optional<int> term = solarTerm(day);
    const std::optional<Announcement> announced = announcement(day);
    const std::optional<Name> feast = festival(*lunar);
    QStringList names;
    QString narrow;
    const auto add = [&](const Name &name) {
        if (names.isEmpty())
            narrow = name.narrowIn(isEnglish);
        if (!names.contains(name.in(isEnglish)))
            names.append(name.in(isEnglish));
    };
    if (announced && announced->isItself)
        add(holidays.at(announced->name));
    if (feast)
        add(*feast);
    if (term)
        add(terms.at(*term));
    const QString lunarText = shortText(*lunar, isEnglish);
    ChineseDay result{.text = names.value(0, lunarText),
                      .narrowText = names.isEmpty() ? lunarText : narrow,
                      .isSpecial = !names.isEmpty()};
    names.prepend(longText(*lunar, isEnglish));
    if (announced) {
        result.dayOff = announced->isWorkDay ? DayOff::WorkDay : DayOff::Holiday;
        const QString off = announced->isWorkDay
                                ? (isEnglish ? QStringLiteral("make-up work day") : QStringLiteral("调休上班"))
                                : (isEnglish ? QStringLiteral("day off") : QStringLiteral("放假"));
        names.append(off + (isEnglish ? QStringLiteral(" for ") : QStringLiteral("：")) +
                     holidays.at(announced->name).in(isEnglish));
    }
    result.spoken = names.join(isEnglish ? QStringLiteral(", ") : QStringLiteral("，"));
    return result;
}

} // namespace tessaly
