#pragma once

#include "store/PlannerStore.h"
#include "tests/store/FakePorts.h"
#include "views/schedule/ScheduleViewModel.h"

#include <memory>

namespace tessaly {

/// The schedule screen over a planner in memory, in Vienna on Wednesday, September 9, 2026, 10:20:30. Weeks begin on
/// Monday unless told otherwise.
class ScheduleDriver : public FakePorts
{
public:
    explicit ScheduleDriver(Qt::DayOfWeek firstWeekday = Qt::Monday);

    // Given
    ScheduleItem has(const QString &title, QDate day, QTime start, QTime end, const QString &tag = {});
    void hasOfCalendar(const QString &calendar, const QString &title, QDate day, QTime start);
    void hasCalendars(const QList<EventCalendar> &calendars);
    void inEnglish() { store->setInterfaceLanguage(AppLanguage::English); }
    /// The screen opens, as each time the sidebar selects it.
    void opensScreen();

    /// The note that is open or was last.
    [[nodiscard]] ScheduleNoteModel &note() const { return *screen->sheets()->note(); }

    // Then
    /// Titles of the week's blocks, each with its place: "2 Lecture".
    [[nodiscard]] QStringList blocks() const;
    /// Lines of the month, each with cell and slot: "9.0 Lecture".
    [[nodiscard]] QStringList monthLines() const;
    [[nodiscard]] QStringList listed() const;
    [[nodiscard]] QDate focusDay() const;
    [[nodiscard]] int todayPlace() const;
    [[nodiscard]] const ScheduleItem &stored(const QString &title) const;
    [[nodiscard]] Instant at(QDate day, QTime time) const { return calendar.instant(day, time); }

    std::unique_ptr<PlannerStore> store;
    std::unique_ptr<ScheduleViewModel> screen;
};

} // namespace tessaly
