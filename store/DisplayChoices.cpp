#include "store/DisplayChoices.h"

#include "store/PreferenceKeys.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tessaly {

namespace {

struct Choice
{
    QString key;
    bool WeekOptions::*member;
};

const std::array<Choice, 6> choices{{{keys::hidesWeekend, &WeekOptions::hidesWeekend},
                                     {keys::showsWeekNumbers, &WeekOptions::showsWeekNumbers},
                                     {keys::hasAllDayRow, &WeekOptions::hasAllDayRow},
                                     {keys::marksHiddenTimes, &WeekOptions::marksHiddenTimes},
                                     {keys::showsChineseCalendar, &WeekOptions::showsChineseCalendar},
                                     {keys::roundsTaps, &WeekOptions::roundsTaps}}};

int knownWeekday(qint64 weekday)
{
    return weekday == Qt::Monday || weekday == Qt::Sunday ? static_cast<int>(weekday) : 0;
}

} // namespace

DisplayChoices::DisplayChoices(Save save, QObject *parent) : QObject(parent), m_save(std::move(save))
{
}

void DisplayChoices::load(const Preferences &preferences)
{
    m_firstWeekday = knownWeekday(preferences.get<qint64>(keys::firstWeekday).value_or(0));
    for (const Choice &choice : choices)
        m_options.*choice.member = preferences.get<bool>(choice.key).value_or(false);
}

const QStringList &DisplayChoices::storedKeys()
{
    static const QStringList names = [] {
        QStringList all{keys::firstWeekday};
        for (const Choice &choice : choices)
            all.append(choice.key);
        return all;
    }();
    return names;
}

PreferenceValue DisplayChoices::stored(const QString &key) const
{
    const auto choice = std::ranges::find(choices, key, &Choice::key);
    if (choice == choices.end())
        return qint64{m_firstWeekday};
    return m_options.*choice->member;
}

void DisplayChoices::setStored(const QString &key, const std::optional<PreferenceValue> &value)
{
    const auto choice = std::ranges::find(choices, key, &Choice::key);
    if (choice != choices.end()) {
        const bool *isOn = value ? std::get_if<bool>(&*value) : nullptr;
        choose(choice->member, isOn && *isOn);
        return;
    }
    const qint64 *weekday = value ? std::get_if<qint64>(&*value) : nullptr;
    setFirstWeekday(weekday ? knownWeekday(*weekday) : 0);
}

void DisplayChoices::setFirstWeekday(int weekday)
{
    if (std::exchange(m_firstWeekday, weekday) == weekday)
        return;
    m_save(keys::firstWeekday, qint64{weekday});
    emit firstWeekdayChanged();
    emit changed();
}

void DisplayChoices::choose(bool WeekOptions::*choice, bool isOn)
{
    if (std::exchange(m_options.*choice, isOn) == isOn)
        return;
    m_save(std::ranges::find(choices, choice, &Choice::member)->key, isOn);
    emit changed();
}

} // namespace tessaly
