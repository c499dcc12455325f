#pragma once

#include <QString>

/// The keys of the preferences database; docs/DATA.md describes the values.
namespace tessaly::keys {

inline const QString storageKey = QStringLiteral("larkspan-data-v1");
inline const QString backupStorageKey = QStringLiteral("larkspan-data-v1-backup");
inline const QString documentMetadataKey = QStringLiteral("larkspan-markdown-library-v1");
inline const QString documentSaveLocationKey = QStringLiteral("larkspan-markdown-save-location-v1");
inline const QString calendarFeedsKey = QStringLiteral("larkspan-calendar-feeds-v1");
inline const QString linkHealth = QStringLiteral("larkspan-link-health-v1");
inline const QString waitingReminders = QStringLiteral("larkspan-notification-requests-v1");
inline const QString leadMinutes = QStringLiteral("larkspan-lead-minutes");
inline const QString givenReminders = QStringLiteral("larkspan-schedule-reminders-v1");
inline const QString importedFiles = QStringLiteral("larkspan-import-v1");
inline const QString noteDrafts = QStringLiteral("larkspan-note-drafts-v1");
inline const QString selectedCalendarIDs = QStringLiteral("larkspan-selected-calendar-ids");
inline const QString visibleCalendarIDs = QStringLiteral("larkspan-visible-calendar-ids");
inline const QString automaticCalendarSync = QStringLiteral("larkspan-auto-calendar-sync");
inline const QString calendarConsent = QStringLiteral("larkspan-calendar-consent");
inline const QString lastCalendarSync = QStringLiteral("larkspan-last-calendar-sync");
inline const QString displayStartHour = QStringLiteral("larkspan-display-start-hour");
inline const QString displayEndHour = QStringLiteral("larkspan-display-end-hour");
inline const QString firstWeekday = QStringLiteral("larkspan-first-weekday");
inline const QString hidesWeekend = QStringLiteral("larkspan-hide-weekend");
inline const QString showsWeekNumbers = QStringLiteral("larkspan-week-numbers");
inline const QString hasAllDayRow = QStringLiteral("larkspan-all-day-row");
inline const QString marksHiddenTimes = QStringLiteral("larkspan-mark-hidden-times");
inline const QString roundsTaps = QStringLiteral("larkspan-round-chosen-times");
inline const QString showsChineseCalendar = QStringLiteral("larkspan-chinese-calendar");
inline const QString isShortcutGlobal = QStringLiteral("isShortcutGlobal");
inline const QString isPlanShown = QStringLiteral("isPlanShown");
inline const QString interfaceLanguage = QStringLiteral("larkspan-interface-language");
inline const QString preferredName = QStringLiteral("larkspan-preferred-name");
inline const QString launchAtLogin = QStringLiteral("larkspan-launch-at-login");
inline const QString appearanceMode = QStringLiteral("appearanceMode");
inline const QString programVersion = QStringLiteral("programVersion");
inline const QString windowFrame = QStringLiteral("windowFrame");
inline const QString hasReportedResidence = QStringLiteral("hasReportedResidence");
inline const QString hasAskedPreferredName = QStringLiteral("hasAskedPreferredName");

} // namespace tessaly::keys
