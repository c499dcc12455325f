#pragma once

#include "model/AppLanguage.h"
#include "model/Instant.h"
#include "model/StateChange.h"
#include "platform/Preferences.h"
#include "store/DisplayChoices.h"
#include "store/Message.h"
#include "store/PlannerPorts.h"
#include "store/StoredValues.h"

#include <QObject>
#include <QSet>

#include <memory>
#include <optional>

namespace tessaly {

class Alarm;
class ZoneWatch;
struct Error;

/// The settings, texts in the chosen language, and the status line. Main thread only. Every change is saved and raises
/// its signal once.
class PlannerSettings : public QObject
{
    Q_OBJECT
    Q_PROPERTY(tessaly::AppLanguage interfaceLanguage READ interfaceLanguage WRITE setInterfaceLanguage NOTIFY
                   interfaceLanguageChanged)
    Q_PROPERTY(bool isEnglish READ isEnglish NOTIFY interfaceLanguageChanged)
    Q_PROPERTY(QString preferredName READ preferredName WRITE setPreferredName NOTIFY preferredNameChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(QString calendarSyncMessage READ calendarSyncMessageText NOTIFY calendarSyncMessageChanged)
    Q_PROPERTY(bool isSyncMessagePassing READ isSyncMessagePassing NOTIFY calendarSyncMessageChanged)
    Q_PROPERTY(bool isSyncMessageFailure READ isSyncMessageFailure NOTIFY calendarSyncMessageChanged)
    Q_PROPERTY(bool automaticCalendarSync READ automaticCalendarSync WRITE setAutomaticCalendarSync NOTIFY
                   automaticCalendarSyncChanged)
    Q_PROPERTY(bool hasUnsavedChanges READ hasUnsavedChanges NOTIFY hasUnsavedChangesChanged)
    Q_PROPERTY(QDateTime now READ now NOTIFY todayChanged)
    Q_PROPERTY(int firstWeekday READ firstWeekday NOTIFY timeZoneChanged)
    Q_PROPERTY(int displayStartHour READ displayStartHour NOTIFY displayHoursChanged)
    Q_PROPERTY(int displayEndHour READ displayEndHour NOTIFY displayHoursChanged)
    Q_PROPERTY(tessaly::DisplayChoices *displayChoices READ displayChoices CONSTANT)
    Q_PROPERTY(bool isPlanShown READ isPlanShown WRITE setPlanShown NOTIFY isPlanShownChanged)

public:
    ~PlannerSettings() override;

    [[nodiscard]] const Clock &clock() const { return m_ports.clock; }
    [[nodiscard]] const UserCalendar &calendar() const { return m_ports.calendar; }
    /// The current local time. The property notifies only of a new day.
    [[nodiscard]] QDateTime now() const;
    [[nodiscard]] QDate today() const { return m_today; }
    /// 1 Monday … 7 Sunday
    [[nodiscard]] int firstWeekday() const { return calendar().firstWeekday(); }

    /// In the interface language.
    [[nodiscard]] std::optional<QString> calendarSyncMessage() const;
    /// Whether the message reports a success; whoever shows it dismisses it after a while.
    [[nodiscard]] bool isSyncMessagePassing() const { return hasSyncMessage(MessageKind::Success); }
    [[nodiscard]] bool isSyncMessageFailure() const { return hasSyncMessage(MessageKind::Failure); }
    /// Empties the status line.
    Q_INVOKABLE void dismissCalendarSyncMessage();
    [[nodiscard]] const QSet<QString> &selectedCalendarIDs() const { return m_selectedCalendarIDs; }
    [[nodiscard]] const QSet<QString> &visibleCalendarIDs() const { return m_visibleCalendarIDs; }
    [[nodiscard]] bool automaticCalendarSync() const { return m_automaticCalendarSync; }
    [[nodiscard]] int displayStartHour() const { return m_displayStartHour; }
    [[nodiscard]] int displayEndHour() const { return m_displayEndHour; }
    [[nodiscard]] DisplayChoices *displayChoices() { return &m_displayChoices; }
    [[nodiscard]] const WeekOptions &weekOptions() const { return m_displayChoices.options(); }
    /// Whether the panel that plans the day is open beside the week.
    [[nodiscard]] bool isPlanShown() const { return m_isPlanShown; }
    [[nodiscard]] AppLanguage interfaceLanguage() const { return m_interfaceLanguage; }
    [[nodiscard]] bool isEnglish() const { return m_interfaceLanguage == AppLanguage::English; }
    [[nodiscard]] const QString &preferredName() const { return m_preferredName; }
    [[nodiscard]] bool launchAtLogin() const { return m_launchAtLogin; }

    void setSelectedCalendarIDs(const QSet<QString> &identifiers);
    void setVisibleCalendarIDs(const QSet<QString> &identifiers);
    void setAutomaticCalendarSync(bool isOn);
    void setPlanShown(bool isShown);
    void setInterfaceLanguage(AppLanguage language);
    void setPreferredName(const QString &name);
    /// Sets the start to at most one hour before the end.
    Q_INVOKABLE void setDisplayStartHour(int hour);
    /// Sets the end to at least one hour after the start.
    Q_INVOKABLE void setDisplayEndHour(int hour);
    /// Registers or unregisters the login item. On failure the property follows the system and the message says why.
    Q_INVOKABLE void setLaunchAtLogin(bool isEnabled);
    /// Reads whether the system starts the program at login, which may have been changed outside the program.
    void readLaunchAtLogin();
    Q_INVOKABLE void requestNotificationPermission();

    /// The member of the pair for the interface language.
    [[nodiscard]] QString text(const QString &chinese, const QString &english) const;
    /// "yyyy年M月d日 HH:mm" or "MMM d, yyyy, HH:mm"; without the time when `dateOnly`.
    [[nodiscard]] QString dateText(Instant date, bool dateOnly) const;

    /// "M月d日 HH:mm" or "MMM d, HH:mm"; dateText() in other years than the present one.
    [[nodiscard]] QString momentText(Instant moment) const;

    /// Saves a setting that has no property here, such as the window's appearance. A write that fails is reported and
    /// retried like any other.
    void savePreference(const QString &key, const PreferenceValue &value) { m_values.save(key, value); }

    void setCalendarSyncMessage(const Message &message);
    /// Empties the status line if it shows this message.
    void retractCalendarSyncMessage(const Message &message);
    /// Sets the status line to the pair, each text followed by that of the error.
    void reportFailure(const QString &chinese, const QString &english, const Error &error);

    /// True while a change that could not be written is only in memory. It is retried every few seconds and with each
    /// further change.
    [[nodiscard]] bool hasUnsavedChanges() const { return m_values.hasUnsaved(); }
    /// Retries now.
    void retryUnsavedChanges() { m_values.retry(); }

signals:
    /// calendar() has changed, and with it all days and times.
    void timeZoneChanged();
    /// today() may have changed; after timeZoneChanged().
    void todayChanged();
    /// The message, or its language, has changed.
    void calendarSyncMessageChanged();
    /// A message was set, even the same as before; after calendarSyncMessageChanged().
    void calendarSyncMessageReported();
    void hasUnsavedChangesChanged();
    void selectedCalendarIDsChanged();
    void visibleCalendarIDsChanged();
    void automaticCalendarSyncChanged();
    void displayHoursChanged();
    void isPlanShownChanged();
    void interfaceLanguageChanged();
    void preferredNameChanged();
    void launchAtLoginChanged();

protected:
    /// Loads the settings. The ports must outlive the object.
    PlannerSettings(const PlannerPorts &ports, QObject *parent);

    [[nodiscard]] const PlannerPorts &ports() const { return m_ports; }
    [[nodiscard]] StoredValues &values() { return m_values; }

    /// Sets the setting unless it has been changed from `before` meanwhile; of a list, adds and removes what differs.
    /// What actually changed.
    std::optional<SettingChange> applySetting(const QString &key, const SettingChange &change);

private:
    void load();
    void applyFirstWeekday();
    [[nodiscard]] std::optional<PreferenceValue> setting(const QString &key) const;
    void setSetting(const QString &key, const std::optional<PreferenceValue> &value);
    /// Sets the member, saves it in its stored form and raises the signal; nothing for the same value.
    template <class Value>
    void assign(Value &member, const Value &value, const QString &key, const PreferenceValue &stored,
                void (PlannerSettings::*changed)());
    /// True when the day has changed; waits for the next one.
    bool readDay();
    void reportSaveFailed(const Error &error);
    void reportSaveRecovered();
    [[nodiscard]] bool hasSyncMessage(MessageKind kind) const
    {
        return m_calendarSyncMessage && m_calendarSyncMessage->kind == kind;
    }
    [[nodiscard]] QString calendarSyncMessageText() const { return calendarSyncMessage().value_or(QString()); }

    PlannerPorts m_ports;
    StoredValues m_values;
    DisplayChoices m_displayChoices;
    /// The system's.
    Qt::DayOfWeek m_firstWeekday;
    std::unique_ptr<ZoneWatch> m_zoneWatch;
    /// Rings at midnight; until then nothing runs.
    std::unique_ptr<Alarm> m_midnight;
    QDate m_today;
    std::optional<Message> m_calendarSyncMessage;
    std::optional<Message> m_saveFailureMessage;
    QSet<QString> m_selectedCalendarIDs;
    QSet<QString> m_visibleCalendarIDs;
    QString m_preferredName;
    AppLanguage m_interfaceLanguage = AppLanguage::Chinese;
    int m_displayStartHour = 0;
    int m_displayEndHour = 24;
    bool m_automaticCalendarSync = true;
    bool m_launchAtLogin = false;
    bool m_isPlanShown = false;
};

} // namespace tessaly
