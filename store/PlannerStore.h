#pragma once

#include "model/AppLanguage.h"
#include "model/CalendarFeed.h"
#include "model/CalendarOption.h"
#include "model/RowsChange.h"
#include "model/SavedDataEncoder.h"
#include "model/UserCalendar.h"
#include "platform/EventStore.h"
#include "platform/Preferences.h"
#include "store/DocumentLibrary.h"
#include "store/PlannerPorts.h"
#include "store/StoredValues.h"

#include <QObject>
#include <QSet>

#include <memory>
#include <optional>

namespace tessaly {

class CalendarFeedReader;
class ZoneWatch;
struct ReadCalendar;
struct ReadingOptions;

/// The one observable object: owns every record and setting, saves each change at once, restores everything at
/// start. Main thread only. Every assignment to a published property saves itself and raises its signal, once.
class PlannerStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(tessaly::AppLanguage interfaceLanguage READ interfaceLanguage WRITE setInterfaceLanguage NOTIFY
                   interfaceLanguageChanged)
    Q_PROPERTY(bool isEnglish READ isEnglish NOTIFY interfaceLanguageChanged)
    Q_PROPERTY(QString preferredName READ preferredName WRITE setPreferredName NOTIFY preferredNameChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(bool hasCalendarService READ hasCalendarService CONSTANT)
    Q_PROPERTY(QString calendarSyncMessage READ calendarSyncMessageText NOTIFY calendarSyncMessageChanged)
    Q_PROPERTY(bool automaticCalendarSync READ automaticCalendarSync WRITE setAutomaticCalendarSync NOTIFY
                   automaticCalendarSyncChanged)
    Q_PROPERTY(int displayStartHour READ displayStartHour NOTIFY displayHoursChanged)
    Q_PROPERTY(int displayEndHour READ displayEndHour NOTIFY displayHoursChanged)
    Q_PROPERTY(bool hadUnreadableData READ hadUnreadableData CONSTANT)

public:
    /// Loads everything and writes nothing. The ports must outlive the store.
    explicit PlannerStore(const PlannerPorts &ports, QObject *parent = nullptr);
    /// Tries a last time to save what could not be saved.
    ~PlannerStore() override;

    [[nodiscard]] const Clock &clock() const { return m_ports.clock; }
    [[nodiscard]] const UserCalendar &calendar() const { return m_ports.calendar; }

    // Published collections, in stored order. Never keep a copy of a list: it would make the next one-record change
    // copy every record.
    [[nodiscard]] const QList<ScheduleItem> &schedules() const { return m_data.schedules; }
    [[nodiscard]] const QList<ReminderItem> &reminders() const { return m_data.reminders; }
    [[nodiscard]] const QList<Goal> &goals() const { return m_data.goals; }
    [[nodiscard]] const QList<CalendarFeed> &calendarFeeds() const { return m_calendarFeeds; }
    [[nodiscard]] const QList<CalendarOption> &availableCalendars() const { return m_availableCalendars; }

    /// The Markdown documents and their categories.
    [[nodiscard]] DocumentLibrary &documentLibrary() { return m_documentLibrary; }
    [[nodiscard]] const DocumentLibrary &documentLibrary() const { return m_documentLibrary; }

    // Settings
    [[nodiscard]] const std::optional<QString> &calendarSyncMessage() const { return m_calendarSyncMessage; }
    [[nodiscard]] const QSet<QString> &selectedCalendarIDs() const { return m_selectedCalendarIDs; }
    [[nodiscard]] const QSet<QString> &visibleCalendarIDs() const { return m_visibleCalendarIDs; }
    [[nodiscard]] bool automaticCalendarSync() const { return m_automaticCalendarSync; }
    [[nodiscard]] int displayStartHour() const { return m_displayStartHour; }
    [[nodiscard]] int displayEndHour() const { return m_displayEndHour; }
    [[nodiscard]] AppLanguage interfaceLanguage() const { return m_interfaceLanguage; }
    [[nodiscard]] bool isEnglish() const { return m_interfaceLanguage == AppLanguage::English; }
    [[nodiscard]] const QString &preferredName() const { return m_preferredName; }
    [[nodiscard]] bool launchAtLogin() const { return m_launchAtLogin; }

    void setSelectedCalendarIDs(const QSet<QString> &identifiers);
    void setVisibleCalendarIDs(const QSet<QString> &identifiers);
    void setInterfaceLanguage(AppLanguage language);
    void setPreferredName(const QString &name);
    /// Sets the start to at most one hour before the end.
    Q_INVOKABLE void setDisplayStartHour(int hour);
    /// Sets the end to at least one hour after the start.
    Q_INVOKABLE void setDisplayEndHour(int hour);
    /// Registers or unregisters the login item; on failure shows what the system really does and sets the message.
    Q_INVOKABLE void setLaunchAtLogin(bool isEnabled);
    Q_INVOKABLE void requestNotificationPermission();
    /// Empties notes and tasks of every schedule and removes all to-dos and goals; the schedules remain.
    Q_INVOKABLE void clearPersonalContent();

    /// The member of the pair for the interface language.
    [[nodiscard]] QString text(const QString &chinese, const QString &english) const;
    /// "yyyy年M月d日 HH:mm" or "MMM d, yyyy, HH:mm"; without the time when `dateOnly`.
    [[nodiscard]] QString dateText(Instant date, bool dateOnly) const;

    /// Saves a setting that is not one of the planner's own, such as the window's appearance. A write that fails is
    /// told and tried again like any other.
    void savePreference(const QString &key, const PreferenceValue &value) { m_values.save(key, value); }

    /// Whether something that was stored could not be decoded at the start, so that less may be shown than was entered.
    /// It is kept aside under a key of its own before a save can take its place.
    [[nodiscard]] bool hadUnreadableData() const { return m_hadUnreadableData; }

    /// True while a change is held in memory only because it could not be written. It is tried again every few seconds
    /// and with each further change.
    [[nodiscard]] bool hasUnsavedChanges() const { return m_values.writer().hasUnsaved(); }
    Q_INVOKABLE void retryUnsavedChanges() { m_values.writer().retry(); }

    // Records. Each verb that changes a list saves it and emits the list's signal, once. Records are found by their
    // id; a verb on an id that is not there does nothing.

    /// Appends the schedule and, given a calendar, writes it there once access is granted.
    void addSchedule(const ScheduleItem &item, const std::optional<QString> &calendarIdentifier = std::nullopt);
    /// Replaces the schedule with the same id, and changes its calendar event if there is one.
    void updateSchedule(const ScheduleItem &item);
    /// Puts this list in the place of all schedules. The calendar is not touched.
    void replaceSchedules(const QList<ScheduleItem> &schedules);
    /// Removes the schedule and its calendar event.
    void deleteSchedule(const ScheduleItem &item);

    /// Appends the to-do and, given a due date, asks for its notification.
    void addReminder(const ReminderItem &item);
    /// Replaces the to-do with the same id. Its notification is left as it is.
    void updateReminder(const ReminderItem &item);
    /// Removes every to-do with the id. Its notification still fires.
    void removeReminder(const QUuid &id);
    /// Asks for a notification at the start of the due minute; without a due date does nothing.
    void scheduleNotification(const ReminderItem &item);

    void addGoal(const Goal &goal);
    /// Replaces the goal with the same id.
    void updateGoal(const Goal &goal);
    /// Removes every goal with the id.
    void removeGoal(const QUuid &id);

    // Linked calendars
    /// Adds the link, shows its schedules and refreshes it. Anything but an http or https link is refused: the message
    /// is set and false returned.
    Q_INVOKABLE bool addCalendarFeed(const QString &urlString);
    /// Downloads the link and applies what it holds; a failure is told and changes nothing.
    Q_INVOKABLE void refreshCalendarFeed(const QUuid &feedID);
    /// Replaces the schedules of the feed by the events of the file, in one assignment; see mergeFeed(). Does nothing
    /// for a feed that was deleted.
    void applyCalendarFeed(QByteArrayView feedText, const QUuid &feedID);
    void setCalendarFeedError(const Error &error);
    /// Removes the feed and its schedules.
    Q_INVOKABLE void deleteCalendarFeed(const QUuid &feedID);

    // System calendar
    /// Whether calendars can ever be listed.
    [[nodiscard]] bool hasCalendarService() const { return m_ports.eventStore.isAvailable(); }
    /// "#RRGGBB", upper-case, each component rounded to the nearest; nothing for a calendar without a colour.
    [[nodiscard]] static std::optional<QString> colorHex(const EventCalendar &calendar);
    /// Asks for access and lists the calendars; refusal and failure are told.
    Q_INVOKABLE void requestCalendarAccessAndLoad();
    /// Lists the calendars when automatic sync is on and access is granted; refusal is silent.
    Q_INVOKABLE void startAutomaticCalendarSync();
    /// Switching on starts at once.
    Q_INVOKABLE void setAutomaticCalendarSync(bool isOn);

signals:
    /// Days and times are others from now on: calendar() has changed.
    void timeZoneChanged();
    void schedulesChanged(const tessaly::RowsChange &change);
    void remindersChanged(const tessaly::RowsChange &change);
    void goalsChanged(const tessaly::RowsChange &change);
    void calendarFeedsChanged(const tessaly::RowsChange &change);
    void availableCalendarsChanged();
    void calendarSyncMessageChanged();
    void selectedCalendarIDsChanged();
    void visibleCalendarIDsChanged();
    void automaticCalendarSyncChanged();
    void displayHoursChanged();
    void interfaceLanguageChanged();
    void preferredNameChanged();
    void launchAtLoginChanged();

private:
    void load();
    void loadMainData();
    void loadCalendarFeeds();
    [[nodiscard]] QSet<QString> loadIdentifiers(const QString &key) const;

    // What runs after an assignment to a published list: it is saved, then announced. The caller has changed the list
    // already and says what changed.
    void schedulesAssigned(const RowsChange &rows);
    void remindersAssigned(const RowsChange &rows);
    void goalsAssigned(const RowsChange &rows);
    void calendarFeedsAssigned(const RowsChange &rows);

    void encode(SavedDataEncoder::Section section, const RowsChange &rows);
    void save();
    void saveCalendarFeeds();
    void tellSaveFailed(const Error &error);
    void tellSaveRecovered();

    /// Sets the status line; nothing empties it.
    void setCalendarSyncMessage(const std::optional<QString> &message);
    /// Sets the status line to the member of the pair for the interface language and the words of the error.
    void tellFailure(const QString &chinese, const QString &english, const Error &error);
    [[nodiscard]] QString calendarSyncMessageText() const { return m_calendarSyncMessage.value_or(QString()); }

    void readCalendarFeed(const Result<QByteArray> &body, const QUuid &feedID);
    void applyReadCalendar(ReadCalendar calendar, const QUuid &feedID);
    [[nodiscard]] ReadingOptions feedReadingOptions(const QUuid &feedID) const;

    void writeToCalendar(const QUuid &scheduleID, const QString &calendarIdentifier);
    void linkToEvent(const ScheduleItem &written, const EventCalendar &target, const CalendarEvent &saved);
    void changeCalendarEvent(const ScheduleItem &item);
    void removeCalendarEvent(const QString &eventIdentifier);
    void loadCalendars();

    PlannerPorts m_ports;
    std::unique_ptr<ZoneWatch> m_zoneWatch;
    SavedData m_data;
    SavedDataEncoder m_encoder;
    /// Whether the encoder holds the JSON of m_data.
    bool m_isEncoded = false;
    /// Whether the JSON of the encoder is what stands under the key of the main data.
    bool m_isStored = false;
    /// Whether the encoder's last splice leads from what stands there to its JSON.
    bool m_isEditOfStored = false;
    QList<CalendarFeed> m_calendarFeeds;
    QList<CalendarOption> m_availableCalendars;
    std::optional<QString> m_calendarSyncMessage;
    std::optional<QString> m_saveFailureMessage;
    QSet<QString> m_selectedCalendarIDs;
    QSet<QString> m_visibleCalendarIDs;
    QString m_preferredName;
    AppLanguage m_interfaceLanguage = AppLanguage::Chinese;
    int m_displayStartHour = 0;
    int m_displayEndHour = 24;
    bool m_automaticCalendarSync = true;
    bool m_launchAtLogin = false;
    bool m_hadUnreadableData = false;
    DocumentLibrary m_documentLibrary;
    /// Goes before what it saves, when it writes a last time.
    StoredValues m_values;
    std::unique_ptr<CalendarFeedReader> m_feedReader;
};

} // namespace tessaly
