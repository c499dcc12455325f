#include "store/PlannerSettings.h"

#include "platform/Clock.h"
#include "platform/LoginItem.h"
#include "platform/NotificationPresenter.h"
#include "store/ErrorText.h"
#include "store/PreferenceKeys.h"

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

QSet<QString> storedIdentifiers(const Preferences &preferences, const QString &key)
{
    const QStringList identifiers = preferences.get<QStringList>(key).value_or(QStringList());
    return {identifiers.cbegin(), identifiers.cend()};
}

} // namespace

PlannerSettings::PlannerSettings(const PlannerPorts &ports, QObject *parent)
    : QObject(parent), m_ports(ports), m_values(m_ports),
      m_displayChoices([this](const QString &key, const PreferenceValue &value) { savePreference(key, value); }),
      m_firstWeekday(ports.calendar.firstWeekday())
{
    m_zoneWatch = m_ports.clock.watchZone([this] {
        m_ports.calendar = m_ports.calendar.inZone(m_ports.clock.zone());
        readDay();
        emit timeZoneChanged();
        emit todayChanged();
    });
    m_midnight = m_ports.clock.makeAlarm([this] {
        if (readDay())
            emit todayChanged();
    });
    readDay();
    load();
    connect(&m_displayChoices, &DisplayChoices::firstWeekdayChanged, this, [this] {
        applyFirstWeekday();
        emit timeZoneChanged();
    });
    connect(&m_values, &StoredValues::failed, this, &PlannerSettings::reportSaveFailed);
    connect(&m_values, &StoredValues::recovered, this, &PlannerSettings::reportSaveRecovered);
}

PlannerSettings::~PlannerSettings() = default;

QDateTime PlannerSettings::now() const
{
    return calendar().dateTime(clock().now());
}

bool PlannerSettings::readDay()
{
    const QDate day = calendar().day(clock().now());
    m_midnight->set(calendar().startOfDay(day.addDays(1)));
    return std::exchange(m_today, day) != day;
}

void PlannerSettings::applyFirstWeekday()
{
    const int chosen = m_displayChoices.firstWeekday();
    m_ports.calendar =
        m_ports.calendar.withFirstWeekday(chosen == 0 ? m_firstWeekday : static_cast<Qt::DayOfWeek>(chosen));
}

void PlannerSettings::load()
{
    const Preferences &preferences = m_ports.preferences;
    m_displayChoices.load(preferences);
    if (m_displayChoices.firstWeekday() != 0)
        applyFirstWeekday();
    m_automaticCalendarSync = preferences.get<bool>(keys::automaticCalendarSync).value_or(true);
    m_displayStartHour = static_cast<int>(preferences.get<qint64>(keys::displayStartHour).value_or(0));
    m_displayEndHour = static_cast<int>(preferences.get<qint64>(keys::displayEndHour).value_or(24));
    m_interfaceLanguage =
        appLanguageFromRawValue(preferences.get<QString>(keys::interfaceLanguage).value_or(QString()));
    m_preferredName = preferences.get<QString>(keys::preferredName).value_or(QString());
    m_isPlanShown = preferences.get<bool>(keys::isPlanShown).value_or(false);
    // The stored flag is never read: the system has the current state.
    m_launchAtLogin = m_ports.loginItem.isEnabled();
    m_selectedCalendarIDs = storedIdentifiers(preferences, keys::selectedCalendarIDs);
    m_visibleCalendarIDs = storedIdentifiers(preferences, keys::visibleCalendarIDs);
}

template <class Value>
void PlannerSettings::assign(Value &member, const Value &value, const QString &key, const PreferenceValue &stored,
                             void (PlannerSettings::*changed)())
{
    if (member == value)
        return;
    member = value;
    savePreference(key, stored);
    emit(this->*changed)();
}

void PlannerSettings::setSelectedCalendarIDs(const QSet<QString> &identifiers)
{
    assign(m_selectedCalendarIDs, identifiers, keys::selectedCalendarIDs, QStringList(identifiers.values()),
           &PlannerSettings::selectedCalendarIDsChanged);
}

void PlannerSettings::setVisibleCalendarIDs(const QSet<QString> &identifiers)
{
    assign(m_visibleCalendarIDs, identifiers, keys::visibleCalendarIDs, QStringList(identifiers.values()),
           &PlannerSettings::visibleCalendarIDsChanged);
}

void PlannerSettings::setAutomaticCalendarSync(bool isOn)
{
    assign(m_automaticCalendarSync, isOn, keys::automaticCalendarSync, isOn,
           &PlannerSettings::automaticCalendarSyncChanged);
}

void PlannerSettings::setInterfaceLanguage(AppLanguage language)
{
    if (m_interfaceLanguage == language)
        return;
    assign(m_interfaceLanguage, language, keys::interfaceLanguage, rawValue(language),
           &PlannerSettings::interfaceLanguageChanged);
    if (m_calendarSyncMessage)
        emit calendarSyncMessageChanged();
}

void PlannerSettings::setPreferredName(const QString &name)
{
    assign(m_preferredName, name, keys::preferredName, name, &PlannerSettings::preferredNameChanged);
}

void PlannerSettings::setDisplayStartHour(int hour)
{
    const int start = std::min(hour, m_displayEndHour - 1);
    assign(m_displayStartHour, start, keys::displayStartHour, qint64{start}, &PlannerSettings::displayHoursChanged);
}

void PlannerSettings::setDisplayEndHour(int hour)
{
    const int end = std::max(hour, m_displayStartHour + 1);
    assign(m_displayEndHour, end, keys::displayEndHour, qint64{end}, &PlannerSettings::displayHoursChanged);
}

void PlannerSettings::setPlanShown(bool isShown)
{
    assign(m_isPlanShown, isShown, keys::isPlanShown, isShown, &PlannerSettings::isPlanShownChanged);
}

void PlannerSettings::setLaunchAtLogin(bool isEnabled)
{
    const Result<void> done = m_ports.loginItem.setEnabled(isEnabled);
    m_launchAtLogin = done ? isEnabled : m_ports.loginItem.isEnabled();
    savePreference(keys::launchAtLogin, m_launchAtLogin);
    if (!done)
        reportFailure(QStringLiteral("无法更新开机启动设置："), QStringLiteral("Unable to update launch-at-login: "),
                      done.error());
    // Even for the same value, so that a switch that was moved on the screen moves back.
    emit launchAtLoginChanged();
}

void PlannerSettings::readLaunchAtLogin()
{
    const bool isEnabled = m_ports.loginItem.isEnabled();
    if (std::exchange(m_launchAtLogin, isEnabled) != isEnabled)
        emit launchAtLoginChanged();
}

void PlannerSettings::requestNotificationPermission()
{
    m_ports.notificationPresenter.requestAuthorization();
}

std::optional<QString> PlannerSettings::calendarSyncMessage() const
{
    return m_calendarSyncMessage ? std::optional(m_calendarSyncMessage->text.in(m_interfaceLanguage)) : std::nullopt;
}

void PlannerSettings::setCalendarSyncMessage(const Message &message)
{
    if (m_calendarSyncMessage != message) {
        m_calendarSyncMessage = message;
        emit calendarSyncMessageChanged();
    }
    emit calendarSyncMessageReported();
}

void PlannerSettings::retractCalendarSyncMessage(const Message &message)
{
    if (m_calendarSyncMessage != message)
        return;
    m_calendarSyncMessage.reset();
    emit calendarSyncMessageChanged();
}

void PlannerSettings::dismissCalendarSyncMessage()
{
    if (std::exchange(m_calendarSyncMessage, std::nullopt))
        emit calendarSyncMessageChanged();
}

void PlannerSettings::reportFailure(const QString &chinese, const QString &english, const Error &error)
{
    setCalendarSyncMessage(failureMessage(chinese, english, error));
}

QString PlannerSettings::text(const QString &chinese, const QString &english) const
{
    return isEnglish() ? english : chinese;
}

QString PlannerSettings::dateText(Instant date, bool dateOnly) const
{
    const QDateTime local = calendar().dateTime(date);
    const QLocale locale = interfaceLocale(isEnglish());
    if (isEnglish())
        return locale.toString(local, dateOnly ? u"MMM d, yyyy" : u"MMM d, yyyy, HH:mm");
    return locale.toString(local, dateOnly ? u"yyyy年M月d日" : u"yyyy年M月d日 HH:mm");
}

QString PlannerSettings::momentText(Instant moment) const
{
    const QDateTime local = calendar().dateTime(moment);
    if (local.date().year() != today().year())
        return dateText(moment, false);
    return interfaceLocale(isEnglish()).toString(local, isEnglish() ? u"MMM d, HH:mm" : u"M月d日 HH:mm");
}

std::optional<PreferenceValue> PlannerSettings::setting(const QString &key) const
{
    // The members hold what could not be saved yet, too.
    if (key == keys::visibleCalendarIDs)
        return QStringList(m_visibleCalendarIDs.values());
    if (key == keys::selectedCalendarIDs)
        return QStringList(m_selectedCalendarIDs.values());
    if (key == keys::automaticCalendarSync)
        return m_automaticCalendarSync;
    if (key == keys::displayStartHour)
        return qint64{m_displayStartHour};
    if (key == keys::displayEndHour)
        return qint64{m_displayEndHour};
    if (key == keys::interfaceLanguage)
        return rawValue(m_interfaceLanguage);
    if (key == keys::preferredName)
        return m_preferredName;
    if (DisplayChoices::storedKeys().contains(key))
        return m_displayChoices.stored(key);
    return m_ports.preferences.value(key);
}

void PlannerSettings::setSetting(const QString &key, const std::optional<PreferenceValue> &value)
{
    const auto get = [&value]<class T>(const T &otherwise) {
        const T *found = value ? std::get_if<T>(&*value) : nullptr;
        return found ? *found : otherwise;
    };
    const auto set = [&get] {
        const QStringList list = get(QStringList());
        return QSet<QString>(list.cbegin(), list.cend());
    };
    if (key == keys::visibleCalendarIDs)
        setVisibleCalendarIDs(set());
    else if (key == keys::selectedCalendarIDs)
        setSelectedCalendarIDs(set());
    else if (key == keys::automaticCalendarSync)
        setAutomaticCalendarSync(get(true));
    else if (key == keys::displayStartHour) // As it is: the other end may change next.
        assign(m_displayStartHour, static_cast<int>(get(qint64{0})), key, get(qint64{0}),
               &PlannerSettings::displayHoursChanged);
    else if (key == keys::displayEndHour)
        assign(m_displayEndHour, static_cast<int>(get(qint64{24})), key, get(qint64{24}),
               &PlannerSettings::displayHoursChanged);
    else if (key == keys::interfaceLanguage)
        setInterfaceLanguage(appLanguageFromRawValue(get(QString())));
    else if (key == keys::preferredName)
        setPreferredName(get(QString()));
    else if (DisplayChoices::storedKeys().contains(key))
        m_displayChoices.setStored(key, value);
    else if (value || key == keys::appearanceMode)
        savePreference(key, value.value_or(QStringLiteral("system")));
}

std::optional<SettingChange> PlannerSettings::applySetting(const QString &key, const SettingChange &change)
{
    const std::optional<PreferenceValue> before = setting(key);
    const auto listIn = [](const std::optional<PreferenceValue> &value) -> const QStringList * {
        return value ? std::get_if<QStringList>(&*value) : nullptr;
    };
    if (!listIn(change.before) && !listIn(change.after)) {
        if ((change.before && before != change.before) || before == change.after)
            return std::nullopt;
        setSetting(key, change.after);
        return SettingChange{before, change.after};
    }
    const QStringList current = listIn(before) ? *listIn(before) : QStringList();
    const QStringList without = listIn(change.before) ? *listIn(change.before) : QStringList();
    const QStringList with = listIn(change.after) ? *listIn(change.after) : QStringList();
    SettingChange done{QStringList(), QStringList()};
    QStringList target;
    for (const QString &each : current) {
        const bool isKept = with.contains(each) || !without.contains(each);
        (isKept ? target : std::get<QStringList>(*done.before)).append(each);
    }
    for (const QString &each : with) {
        if (current.contains(each))
            continue;
        target.append(each);
        std::get<QStringList>(*done.after).append(each);
    }
    if (target == current)
        return std::nullopt;
    setSetting(key, target);
    return done;
}

void PlannerSettings::reportSaveFailed(const Error &error)
{
    const Message message =
        failureMessage(QStringLiteral("无法保存更改："), QStringLiteral("Could not save changes: "), error);
    // Saving is retried every few seconds; the message is shown once, and again when another has replaced it.
    if (m_saveFailureMessage != message || (m_calendarSyncMessage && m_calendarSyncMessage != message))
        setCalendarSyncMessage(message);
    if (!std::exchange(m_saveFailureMessage, message))
        emit hasUnsavedChangesChanged();
}

void PlannerSettings::reportSaveRecovered()
{
    // A later message stays.
    if (m_saveFailureMessage && m_calendarSyncMessage == m_saveFailureMessage)
        setCalendarSyncMessage({{QStringLiteral("更改已全部保存。"), QStringLiteral("All changes are saved now.")}});
    if (std::exchange(m_saveFailureMessage, std::nullopt))
        emit hasUnsavedChangesChanged();
}

} // namespace tessaly
