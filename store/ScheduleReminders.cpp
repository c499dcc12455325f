#include "store/ScheduleReminders.h"

#include "model/Uuid.h"
#include "platform/Clock.h"
#include "platform/Preferences.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "store/RecordRows.h"
#include "store/StoredValues.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <limits>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

const QString prefix = u"schedule:"_s;

/// The start that the identifier of a reminder names.
Instant startOf(const QString &identifier)
{
    return {identifier.section(u'@', 1).toDouble()};
}

/// What is stored of the reminders that were given.
struct Given
{
    std::optional<Instant> until = {};
    QStringList identifiers = {};
};

std::optional<Given> decodeGiven(QByteArrayView json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json.toByteArray());
    if (!document.isObject())
        return std::nullopt;
    Given given;
    if (document["until"_L1].isDouble())
        given.until = Instant{document["until"_L1].toDouble()};
    for (const QJsonValue &identifier : document["given"_L1].toArray())
        given.identifiers.append(identifier.toString());
    return given;
}

QMap<QString, int> decodeLeads(const Preferences &preferences)
{
    QMap<QString, int> result;
    // Such as "15 calendar-identifier".
    const QStringList leads = preferences.get<QStringList>(keys::leadMinutes).value_or(QStringList());
    for (const QString &lead : leads) {
        bool isNumber = false;
        const int minutes = lead.section(u' ', 0, 0).toInt(&isNumber);
        if (isNumber && minutes >= 0)
            result.insert(lead.section(u' ', 1), minutes);
    }
    return result;
}

} // namespace

ScheduleReminders::ScheduleReminders(const PlannerStore &store, StoredValues &values) : m_store(store), m_values(values)
{
    load();
    connect(&store, &PlannerStore::schedulesChanged, this, &ScheduleReminders::follow);
}

void ScheduleReminders::load()
{
    m_leads = decodeLeads(m_values.preferences());
    const Given given = m_values.decoded(keys::givenReminders, decodeGiven).value_or(Given());
    m_givenUntil = given.until;
    m_given = given.identifiers;
}

std::optional<int> ScheduleReminders::leadMinutes(const QString &calendarIdentifier) const
{
    const auto lead = m_leads.constFind(calendarIdentifier);
    return lead == m_leads.cend() ? std::nullopt : std::optional(*lead);
}

void ScheduleReminders::setLeadMinutes(const QString &calendarIdentifier, std::optional<int> minutes)
{
    if (leadMinutes(calendarIdentifier) == minutes)
        return;
    if (minutes)
        m_leads.insert(calendarIdentifier, *minutes);
    else
        m_leads.remove(calendarIdentifier);
    QStringList leads;
    for (auto lead = m_leads.cbegin(); lead != m_leads.cend(); ++lead)
        leads.append(QString::number(*lead) + u' ' + lead.key());
    m_values.save(keys::leadMinutes, leads);
    leadsHaveChanged();
}

void ScheduleReminders::readLeadMinutes()
{
    QMap<QString, int> leads = decodeLeads(m_values.preferences());
    if (m_leads == leads)
        return;
    m_leads = std::move(leads);
    leadsHaveChanged();
}

void ScheduleReminders::leadsHaveChanged()
{
    m_next.reset();
    if (m_hasLooked) {
        m_givenUntil = m_store.clock().now();
        save();
    }
    emit leadMinutesChanged();
    emit changed();
}

std::optional<double> ScheduleReminders::leadSeconds(const ScheduleItem &item) const
{
    if (item.leadMinutes)
        return *item.leadMinutes < 0 ? std::nullopt : std::optional(*item.leadMinutes * 60);
    const auto minutes = leadMinutes(item.calendarIdentifier.value_or(QString()));
    return minutes ? std::optional(*minutes * 60.0) : std::nullopt;
}

double ScheduleReminders::longestLead() const
{
    if (!m_isOwnLeadKnown) {
        for (const ScheduleItem &item : m_store.schedules())
            m_longestOwnLead = std::max(m_longestOwnLead, item.leadMinutes.value_or(-1) * 60);
        m_isOwnLeadKnown = true;
    }
    double longest = m_longestOwnLead;
    for (const int minutes : m_leads)
        longest = std::max(longest, minutes * 60.0);
    return longest;
}

const ScheduleIndex &ScheduleReminders::index() const
{
    if (!m_index) {
        m_index.emplace();
        m_index->apply(RowsChange(), m_store.schedules());
    }
    return *m_index;
}

std::optional<Instant> ScheduleReminders::next() const
{
    if (m_next)
        return *m_next;
    m_next.emplace();
    const double longest = longestLead();
    if (longest < 0 || !m_givenUntil)
        return std::nullopt;
    const Instant endOfTime{std::numeric_limits<double>::max()};
    for (const auto &[start, row] : index().startingIn(*m_givenUntil, endOfTime)) {
        if (*m_next && **m_next <= start.plus(-longest))
            break;
        const ScheduleItem &item = m_store.schedules().at(row);
        const auto lead = leadSeconds(item);
        if (lead && !m_given.contains(identifier(item)))
            *m_next = std::min(m_next->value_or(start), start.plus(-*lead));
    }
    return *m_next;
}

QList<WaitingReminder> ScheduleReminders::takeDue(Instant now)
{
    QList<WaitingReminder> due;
    const double longest = longestLead();
    const Instant from = std::min(m_givenUntil.value_or(now), now);
    m_givenUntil = now;
    m_hasLooked = true;
    m_next.reset();
    if (longest < 0)
        return due;
    const UserCalendar &calendar = m_store.calendar();
    // A little more, because instants are fractions of seconds.
    for (const auto &[start, row] : index().startingIn(from, now.plus(longest + 1))) {
        const ScheduleItem &item = m_store.schedules().at(row);
        const auto lead = leadSeconds(item);
        if (!lead || start.plus(-*lead) > now || m_given.contains(identifier(item)))
            continue;
        const QDateTime minute = calendar.dateTime(start.plus(-*lead));
        due.append({.identifier = identifier(item),
                    .title = m_store.text(u"日程提醒"_s, u"Schedule reminder"_s),
                    .body = item.title,
                    .day = minute.date(),
                    .minute = QTime(minute.time().hour(), minute.time().minute()),
                    .state = ReminderState::Due});
        m_given.append(due.constLast().identifier);
    }
    // Those whose schedule is still to come would be given again.
    while (m_given.size() > mostRemembered && startOf(m_given.constFirst()) < now)
        m_given.removeFirst();
    return due;
}

void ScheduleReminders::save()
{
    if (!m_givenUntil)
        return;
    const QJsonObject given{{u"until"_s, m_givenUntil->seconds}, {u"given"_s, QJsonArray::fromStringList(m_given)}};
    const QByteArray json = QJsonDocument(given).toJson(QJsonDocument::Compact);
    m_values.saveBlob(keys::givenReminders,
                      [&values = m_values, json] { return values.preferences().setValue(keys::givenReminders, json); });
}

void ScheduleReminders::follow(const RowsChange &rows)
{
    const Instant now = m_store.clock().now();
    // Unless an alarm is about to ring, whatever was to come so far has been given.
    const bool isBehind = m_next && *m_next && **m_next <= now;
    const bool hadReminders = longestLead() >= 0;
    if (rows.kind == RowsChange::Kind::Reset)
        m_isOwnLeadKnown = false;
    for (qsizetype row = rows.first; rows.kind != RowsChange::Kind::Removed && row < rows.first + rows.count; ++row)
        m_longestOwnLead = std::max(m_longestOwnLead, m_store.schedules().at(row).leadMinutes.value_or(-1) * 60);
    if (m_index)
        m_index->apply(rows, m_store.schedules());
    m_next.reset();
    if (!hadReminders && longestLead() < 0)
        return;
    // What the last run of the planner has missed comes first.
    if (m_hasLooked && !isBehind) {
        m_givenUntil = now;
        save();
    }
    emit changed();
}

bool ScheduleReminders::isOfSchedule(const WaitingReminder &reminder)
{
    return reminder.identifier.startsWith(prefix);
}

QString ScheduleReminders::identifier(const ScheduleItem &item)
{
    return prefix + uuidText(item.id) + u'@' + QString::number(item.date.seconds, 'f', 3);
}

const ScheduleItem *ScheduleReminders::schedule(const WaitingReminder &reminder, const QList<ScheduleItem> &schedules)
{
    if (!isOfSchedule(reminder))
        return nullptr;
    const qsizetype row =
        rowOf(schedules, QUuid::fromString(reminder.identifier.sliced(prefix.size()).section(u'@', 0, 0)));
    return row >= 0 && identifier(schedules.at(row)) == reminder.identifier ? &schedules.at(row) : nullptr;
}

} // namespace tessaly
