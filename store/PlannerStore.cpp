#include "store/PlannerStore.h"

#include "platform/LoginItem.h"
#include "platform/NotificationCenter.h"
#include "platform/Preferences.h"
#include "store/PreferenceKeys.h"

#include <algorithm>

namespace tessaly {

PlannerStore::PlannerStore(const PlannerPorts &ports, QObject *parent) : QObject(parent), m_ports(ports)
{
    const Preferences &preferences = m_ports.preferences;
    m_displayStartHour = static_cast<int>(preferences.get<qint64>(keys::displayStartHour).value_or(0));
    m_displayEndHour = static_cast<int>(preferences.get<qint64>(keys::displayEndHour).value_or(24));
    m_interfaceLanguage =
        appLanguageFromRawValue(preferences.get<QString>(keys::interfaceLanguage).value_or(QString()));
    m_preferredName = preferences.get<QString>(keys::preferredName).value_or(QString());
    m_launchAtLogin = m_ports.loginItem.isEnabled();
}

PlannerStore::~PlannerStore() = default;

void PlannerStore::setInterfaceLanguage(AppLanguage language)
{
    if (m_interfaceLanguage == language)
        return;
    m_interfaceLanguage = language;
    store(keys::interfaceLanguage, rawValue(language));
    emit interfaceLanguageChanged();
}

void PlannerStore::setPreferredName(const QString &name)
{
    if (m_preferredName == name)
        return;
    m_preferredName = name;
    store(keys::preferredName, name);
    emit preferredNameChanged();
}

void PlannerStore::setDisplayStartHour(int hour)
{
    m_displayStartHour = std::min(hour, m_displayEndHour - 1);
    store(keys::displayStartHour, static_cast<qint64>(m_displayStartHour));
    emit displayHoursChanged();
}

void PlannerStore::setDisplayEndHour(int hour)
{
    m_displayEndHour = std::max(hour, m_displayStartHour + 1);
    store(keys::displayEndHour, static_cast<qint64>(m_displayEndHour));
    emit displayHoursChanged();
}

void PlannerStore::setLaunchAtLogin(bool isEnabled)
{
    const Result<void> done = m_ports.loginItem.setEnabled(isEnabled);
    m_launchAtLogin = done ? isEnabled : m_ports.loginItem.isEnabled();
    store(keys::launchAtLogin, m_launchAtLogin);
    if (!done)
        setCalendarSyncMessage(text(QStringLiteral("无法更新开机启动设置："),
                                    QStringLiteral("Unable to update launch-at-login: "))
                               + done.error().detail);
    emit launchAtLoginChanged();
}

void PlannerStore::requestNotificationPermission()
{
    m_ports.notificationCenter.requestAuthorization();
}

void PlannerStore::setCalendarSyncMessage(const QString &message)
{
    m_calendarSyncMessage = message;
    emit calendarSyncMessageChanged();
}

void PlannerStore::store(const QString &key, const PreferenceValue &value)
{
    (void)m_ports.preferences.setValue(key, value);
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
