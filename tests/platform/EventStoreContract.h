#pragma once

#include "platform/EventStore.h"

#include <QByteArray>
#include <QDate>
#include <QObject>
#include <QTimeZone>

#include <memory>

namespace tessaly {

/// An event as another program writes it.
struct OutsideEvent
{
    QString uid = {};
    QString title = {};
    Instant startDate = {};
    Instant endDate = {};
    QString notes = {};
    /// All days of [startDate, endDate) in the driver's zone; both are midnights there.
    bool isAllDay = false;
    /// Repeats every day at the same wall time; 0 without end.
    int dailyCount = 1;
};

/// A property of other programs' events that the planner does not know.
inline constexpr const char *foreignProperty = "X-FOREIGN:kept";

/// A service as its other users see it: the calendars "Home" and "Work", which can be written, and their events.
class EventStoreDriver
{
public:
    virtual ~EventStoreDriver() = default;

    /// An event store over the service, as a further start of the planner would make it.
    [[nodiscard]] virtual std::unique_ptr<EventStore> makeStore() = 0;
    /// The time by the clock of the event stores.
    [[nodiscard]] virtual Instant now() const = 0;
    /// The zone of the user.
    [[nodiscard]] virtual QTimeZone zone() const { return QTimeZone("Europe/Vienna"); }

    // What another program does; the service has it when the call returns.
    virtual void putEvent(const QString &calendarTitle, const OutsideEvent &event) = 0;
    virtual void dropEvent(const QString &calendarTitle, const QString &uid) = 0;
    /// The event as the service keeps it; empty where it is not there, or where the service keeps no text.
    [[nodiscard]] virtual QByteArray text(const QString &, const QString &) { return {}; }
    virtual void addCalendar(const QString &title) = 0;
    virtual void dropCalendar(const QString &title) = 0;
    /// Nothing can be written to the calendar any more. False where the service cannot do that.
    virtual bool makeReadOnly(const QString &) { return false; }

protected:
    /// The event as a VEVENT, for services that speak RFC 5545. It has the foreign property.
    [[nodiscard]] QByteArray eventText(const OutsideEvent &event) const;
};

/// What every event store promises. A test class derives from this and makes the driver of one service.
class EventStoreContract : public QObject
{
    Q_OBJECT

protected:
    [[nodiscard]] virtual std::unique_ptr<EventStoreDriver> makeDriver() = 0;

private slots:
    void init();
    void cleanup();

    void calendarsAreKnownOnceAccessIsGranted();
    void completionsRunOnceAndLater();
    void aCompletionIsForgottenWithItsStore();
    void aCreatedEventIsThereForEverybody();
    void titlesStandAsTheyWereWritten_data();
    void titlesStandAsTheyWereWritten();
    void anEventIsCreatedOnce();
    void aChangedEventKeepsItsIdentifier();
    void aRemovedEventIsGone();
    void whatIsMissingIsSaidToBe();
    void eventsThatOverlapTheRangeAreFetched_data();
    void eventsThatOverlapTheRangeAreFetched();
    void onlyCalendarsAskedForAreFetched();
    void anEventOfAnotherProgramArrives();
    void anAllDayEventEndsAtTheMidnightAfter();
    void occurrencesKeepTheWallTimeAndTheirIdentifiers();
    void oneOccurrenceIsChanged();
    void oneOccurrenceIsRemoved();
    void anEndlessEventEndsAfterTenYears();
    void calendarsComeAndGo();
    void aCalendarThatCannotBeWrittenStaysAsItIs();
    void noChangeIsReportedAfterTheHandlerIsTakenAway();
    void twoWritersAgreeInTheEnd_data();
    void twoWritersAgreeInTheEnd();

private:
    void openStore();
    [[nodiscard]] QString identifierOf(const QString &calendarTitle) const;
    /// All events of a calendar from 2020 to 2100, by start.
    [[nodiscard]] QList<CalendarEvent> events(const QString &calendarTitle);
    [[nodiscard]] QStringList titles(const QString &calendarTitle);
    [[nodiscard]] Result<FetchedEvents> fetch(const QStringList &calendarIdentifiers, Instant from, Instant to);
    [[nodiscard]] Result<CalendarEvent> create(const NewEvent &event);
    [[nodiscard]] Result<CalendarEvent> change(const QString &identifier, const EventChange &change);
    [[nodiscard]] Result<void> remove(const QString &identifier);
    [[nodiscard]] Instant at(QDate day, int hour, int minute = 0) const;
    [[nodiscard]] NewEvent lunch() const;

    std::unique_ptr<EventStoreDriver> m_driver;
    std::unique_ptr<EventStore> m_store;
};

} // namespace tessaly
