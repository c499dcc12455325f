#pragma once

#include "tests/features/schedule/ScheduleDriver.h"

#include <QObject>
#include <QQmlEngine>
#include <QQuickItem>

#include <memory>

namespace tessaly {

/// The planner behind the screen under test, with the verbs that the test's QML needs. Week hours are 8 to 20.
class ScheduleViewFixture : public QObject
{
    Q_OBJECT

public slots:
    void qmlEngineAvailable(QQmlEngine *engine);

    /// Removes every schedule, to-do, choice and message, and returns to English.
    void reset();
    /// Times as "9:30"; the day is in September 2026.
    void addSchedule(const QString &title, int day, const QString &start, const QString &end, const QString &tag);
    /// The day as "2026-04-01".
    void addScheduleOn(const QString &title, const QString &day, const QString &start, const QString &end);
    /// Times as "2026-09-09 22:00".
    void addScheduleBetween(const QString &title, const QString &start, const QString &end);
    /// A schedule of a read-only calendar, "Holidays", or else of a linked one. Times as above.
    void addFixedSchedule(const QString &title, bool isReadOnly, const QString &start, const QString &end);
    /// Moves the pointer there with the left button and Shift held, which Qt Quick Test cannot.
    void dragWithShift(QQuickItem *item, QPointF place);
    /// "Club", "Courses" and "Work", which can be written, and "Holidays".
    void offerCalendars();
    /// Heard by a screen that is made afterwards.
    void setServiceAvailable(bool isAvailable) { m_driver.eventStore.setAvailable(isAvailable); }
    /// Answers the download of a linked calendar that waits longest.
    void answerDownload(const QString &body);

    void addToDo(const QString &title);
    void toggleToDo(const QString &title);
    [[nodiscard]] bool isOpen(const QString &title) const;
    /// Whether the schedule of this title is linked with the to-do of the same title.
    [[nodiscard]] bool isLinked(const QString &title) const;

    [[nodiscard]] int scheduleCount() const;
    /// "2026-09-09 09:30 – 2026-09-09 10:30"
    [[nodiscard]] QString timesOf(const QString &title) const;
    [[nodiscard]] QString tagOf(const QString &title) const;
    [[nodiscard]] QString notesOf(const QString &title) const;
    [[nodiscard]] QString colorOf(const QString &title) const;
    [[nodiscard]] QStringList visibleCalendars() const;
    [[nodiscard]] int accessRequests() const;

private:
    [[nodiscard]] Instant at(const QString &text) const;

    ScheduleDriver m_driver{Qt::Sunday};
};

} // namespace tessaly
