#include "store/PlannerStore.h"

#include "platform/Clock.h"
#include "platform/LoginItem.h"
#include "store/CalendarFeedReader.h"
#include "store/ErrorText.h"
#include "store/PreferenceKeys.h"

namespace tessaly {

PlannerStore::PlannerStore(const PlannerPorts &ports, QObject *parent)
    : QObject(parent), m_ports(ports), m_documentLibrary(m_ports, m_values), m_values(m_ports),
      m_feedReader(std::make_unique<CalendarFeedReader>())
{
    m_zoneWatch = m_ports.clock.watchZone([this] {
        m_ports.calendar = m_ports.calendar.inZone(m_ports.clock.zone());
        emit timeZoneChanged();
    });
    load();
    connect(&m_values.writer(), &PreferenceWriter::failed, this, &PlannerStore::tellSaveFailed);
    connect(&m_values.writer(), &PreferenceWriter::recovered, this, &PlannerStore::tellSaveRecovered);
}

PlannerStore::~PlannerStore() = default;

void PlannerStore::load()
{
    const Preferences &preferences = m_ports.preferences;
    m_automaticCalendarSync = preferences.get<bool>(keys::automaticCalendarSync).value_or(true);
    m_displayStartHour = static_cast<int>(preferences.get<qint64>(keys::displayStartHour).value_or(0));
    m_displayEndHour = static_cast<int>(preferences.get<qint64>(keys::displayEndHour).value_or(24));
    m_interfaceLanguage =
        appLanguageFromRawValue(preferences.get<QString>(keys::interfaceLanguage).value_or(QString()));
    m_preferredName = preferences.get<QString>(keys::preferredName).value_or(QString());
    // The stored flag is never read: the system knows better.
    m_launchAtLogin = m_ports.loginItem.isEnabled();
    loadCalendarFeeds();
    m_selectedCalendarIDs = loadIdentifiers(keys::selectedCalendarIDs);
    m_visibleCalendarIDs = loadIdentifiers(keys::visibleCalendarIDs);
    loadMainData();
    m_documentLibrary.load();
    m_hadUnreadableData = m_values.hasUnreadable();
}

QSet<QString> PlannerStore::loadIdentifiers(const QString &key) const
{
    const QStringList identifiers = m_ports.preferences.get<QStringList>(key).value_or(QStringList());
    return {identifiers.cbegin(), identifiers.cend()};
}

void PlannerStore::setCalendarSyncMessage(const std::optional<QString> &message)
{
    if (m_calendarSyncMessage == message)
        return;
    m_calendarSyncMessage = message;
    emit calendarSyncMessageChanged();
}

void PlannerStore::tellFailure(const QString &chinese, const QString &english, const Error &error)
{
    setCalendarSyncMessage(text(chinese, english) + errorText(error, m_interfaceLanguage));
}

QString PlannerStore::text(const QString &chinese, const QString &english) const
{
    return isEnglish() ? english : chinese;
}

QString PlannerStore::dateText(Instant date, bool dateOnly) const
{
    const QDateTime local = calendar().dateTime(date);
    if (isEnglish()) {
        const QLocale locale(QLocale::English, QLocale::UnitedStates);
        return locale.toString(local, dateOnly ? u"MMM d, yyyy" : u"MMM d, yyyy, HH:mm");
    }
    const QLocale locale(QLocale::Chinese, QLocale::SimplifiedHanScript, QLocale::China);
    return locale.toString(local, dateOnly ? u"yyyy年M月d日" : u"yyyy年M月d日 HH:mm");
}

} // namespace tessaly
