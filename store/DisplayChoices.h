#pragma once

#include "model/WeekOptions.h"
#include "platform/Preferences.h"

#include <QObject>

#include <functional>
#include <optional>

namespace tessaly {

/// The user's choices for the week and the month, all off at first. Every change is saved and raises changed() once.
class DisplayChoices : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int firstWeekday READ firstWeekday WRITE setFirstWeekday NOTIFY changed)
    Q_PROPERTY(bool hidesWeekend READ hidesWeekend WRITE setHidesWeekend NOTIFY changed)
    Q_PROPERTY(bool showsWeekNumbers READ showsWeekNumbers WRITE setShowsWeekNumbers NOTIFY changed)
    Q_PROPERTY(bool hasAllDayRow READ hasAllDayRow WRITE setHasAllDayRow NOTIFY changed)
    Q_PROPERTY(bool marksHiddenTimes READ marksHiddenTimes WRITE setMarksHiddenTimes NOTIFY changed)
    Q_PROPERTY(bool showsChineseCalendar READ showsChineseCalendar WRITE setShowsChineseCalendar NOTIFY changed)
    Q_PROPERTY(bool roundsTaps READ roundsTaps WRITE setRoundsTaps NOTIFY changed)

public:
    using Save = std::function<void(const QString &key, const PreferenceValue &value)>;

    explicit DisplayChoices(Save save, QObject *parent = nullptr);
    void load(const Preferences &preferences);

    [[nodiscard]] const WeekOptions &options() const { return m_options; }
    /// 1 Monday … 7 Sunday; 0 as the system has it.
    [[nodiscard]] int firstWeekday() const { return m_firstWeekday; }
    void setFirstWeekday(int weekday);

    [[nodiscard]] bool hidesWeekend() const { return m_options.hidesWeekend; }
    void setHidesWeekend(bool isOn) { choose(&WeekOptions::hidesWeekend, isOn); }
    [[nodiscard]] bool showsWeekNumbers() const { return m_options.showsWeekNumbers; }
    void setShowsWeekNumbers(bool isOn) { choose(&WeekOptions::showsWeekNumbers, isOn); }
    [[nodiscard]] bool hasAllDayRow() const { return m_options.hasAllDayRow; }
    void setHasAllDayRow(bool isOn) { choose(&WeekOptions::hasAllDayRow, isOn); }
    [[nodiscard]] bool marksHiddenTimes() const { return m_options.marksHiddenTimes; }
    void setMarksHiddenTimes(bool isOn) { choose(&WeekOptions::marksHiddenTimes, isOn); }
    [[nodiscard]] bool showsChineseCalendar() const { return m_options.showsChineseCalendar; }
    void setShowsChineseCalendar(bool isOn) { choose(&WeekOptions::showsChineseCalendar, isOn); }
    [[nodiscard]] bool roundsTaps() const { return m_options.roundsTaps; }
    void setRoundsTaps(bool isOn) { choose(&WeekOptions::roundsTaps, isOn); }

    /// The keys under which the choices are stored.
    [[nodiscard]] static const QStringList &storedKeys();
    /// The choice in its stored form.
    [[nodiscard]] PreferenceValue stored(const QString &key) const;
    /// Without a value, or with one of another type, the choice is off.
    void setStored(const QString &key, const std::optional<PreferenceValue> &value);

signals:
    void firstWeekdayChanged();
    /// After firstWeekdayChanged().
    void changed();

private:
    void choose(bool WeekOptions::*choice, bool isOn);

    Save m_save;
    WeekOptions m_options;
    int m_firstWeekday = 0;
};

} // namespace tessaly
