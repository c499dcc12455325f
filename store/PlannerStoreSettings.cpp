#include "platform/LoginItem.h"
#include "platform/NotificationCenter.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

#include <algorithm>

namespace tessaly {

void PlannerStore::setSelectedCalendarIDs(const QSet<QString> &identifiers)
{
    if (m_selectedCalendarIDs == identifiers)
        return;
    m_selectedCalendarIDs = identifiers;
    savePreference(keys::selectedCalendarIDs, QStringList(identifiers.cbegin(), identifiers.cend()));
    emit selectedCalendarIDsChanged();
}

void PlannerStore::setVisibleCalendarIDs(const QSet<QString> &identifiers)
{
    if (m_visibleCalendarIDs == identifiers)
        return;
    m_visibleCalendarIDs = identifiers;
    savePreference(keys::visibleCalendarIDs, QStringList(identifiers.cbegin(), identifiers.cend()));
    emit visibleCalendarIDsChanged();
}

void PlannerStore::setInterfaceLanguage(AppLanguage language)
{
    if (m_interfaceLanguage == language)
        return;
    m_interfaceLanguage = language;
    savePreference(keys::interfaceLanguage, rawValue(language));
    emit interfaceLanguageChanged();
}

void PlannerStore::setPreferredName(const QString &name)
{
    if (m_preferredName == name)
        return;
    m_preferredName = name;
    savePreference(keys::preferredName, name);
    emit preferredNameChanged();
}

void PlannerStore::setDisplayStartHour(int hour)
{
    const int start = std::min(hour, m_displayEndHour - 1);
    if (m_displayStartHour == start)
        return;
    m_displayStartHour = start;
    savePreference(keys::displayStartHour, qint64{start});
    emit displayHoursChanged();
}

void PlannerStore::setDisplayEndHour(int hour)
{
    const int end = std::max(hour, m_displayStartHour + 1);
    if (m_displayEndHour == end)
        return;
    m_displayEndHour = end;
    savePreference(keys::displayEndHour, qint64{end});
    emit displayHoursChanged();
}

void PlannerStore::setLaunchAtLogin(bool isEnabled)
{
    const Result<void> done = m_ports.loginItem.setEnabled(isEnabled);
    m_launchAtLogin = done ? isEnabled : m_ports.loginItem.isEnabled();
    savePreference(keys::launchAtLogin, m_launchAtLogin);
    if (!done)
        tellFailure(QStringLiteral("无法更新开机启动设置："), QStringLiteral("Unable to update launch-at-login: "),
                    done.error());
    // Told even when the value stands, so that a switch that was moved on the screen goes back.
    emit launchAtLoginChanged();
}

void PlannerStore::requestNotificationPermission()
{
    m_ports.notificationCenter.requestAuthorization();
}

} // namespace tessaly
