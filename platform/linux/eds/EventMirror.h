#pragma once

#include "platform/linux/eds/EventText.h"
#include "platform/linux/eds/GLibThread.h"

#include <libecal/libecal.h>

#include <QHash>

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace tessaly {

using Components = std::vector<GObjectPtr<ICalComponent>>;

/// The time zones of one calendar. From any thread.
class ZoneTable
{
public:
    explicit ZoneTable(const QByteArray &localZone)
        : m_local(i_cal_timezone_get_builtin_timezone(localZone.constData()))
    {
    }

    /// The connection that is asked for the zones defined in the calendar; null when there is none.
    void setClient(ECalClient *client);
    /// Null if the zone is unknown. May ask the service, which takes a moment.
    [[nodiscard]] ICalTimezone *find(const char *tzid);
    /// The user's; null where it has no name that libical knows.
    [[nodiscard]] ICalTimezone *local() const { return m_local; }

private:
    std::mutex m_mutex;
    ICalTimezone *m_local;
    GObjectPtr<ECalClient> m_client;
    QHash<QByteArray, ICalTimezone *> m_zones;
};

[[nodiscard]] inline icaltimezone *nativeZone(ICalTimezone *zone)
{
    return zone ? static_cast<icaltimezone *>(i_cal_object_get_native(I_CAL_OBJECT(zone))) : nullptr;
}

[[nodiscard]] inline icalcomponent *nativeComponent(ICalComponent *component)
{
    return static_cast<icalcomponent *>(i_cal_object_get_native(I_CAL_OBJECT(component)));
}

/// How an event is named to the planner. `occurrence` is empty for an event that does not recur.
struct EventName
{
    QString uid = {};
    QString occurrence = {};

    [[nodiscard]] QString identifier(const QString &calendarIdentifier) const;
    /// Nothing where it is not an event of that calendar.
    [[nodiscard]] static std::optional<EventName> parse(QStringView identifier, const QString &calendarIdentifier);
};

/// The events of one calendar in memory. Only recurring events are kept as components.
class EventMirror
{
public:
    EventMirror(QString calendarIdentifier, std::shared_ptr<ZoneTable> zones, std::shared_ptr<const EventText> text);

    void clear();
    /// An event, or an override of one occurrence, beside what is there.
    void put(ICalComponent *component);
    /// The event with all its overrides; empty when it is gone.
    void replace(const QString &uid, const Components &components);
    /// More than one component may belong to it.
    [[nodiscard]] bool isSeries(const QString &uid) const { return m_series.contains(uid); }

    /// UIDs of events with an override of an occurrence that the event itself leaves out. The service reports changes
    /// late, so such an override may be gone.
    [[nodiscard]] QStringList doubtfulSeries() const;

    /// The event of the UID; of a recurring one some occurrence.
    [[nodiscard]] std::optional<CalendarEvent> eventOf(const QString &uid) const;
    [[nodiscard]] std::optional<CalendarEvent> event(const EventName &name) const;
    /// The start that the rule gives to an occurrence without override, as DTSTART has it.
    [[nodiscard]] std::optional<icaltimetype> startByRule(const EventName &name) const;
    /// The events that overlap [from, to); endless ones up to `horizon`.
    void appendEvents(QList<CalendarEvent> &events, Instant from, Instant to, Instant horizon) const;

private:
    struct Series
    {
        GObjectPtr<ICalComponent> master;
        std::map<QString, GObjectPtr<ICalComponent>> overrides;
    };
    struct Occurrence
    {
        QString key = {};
        icaltimetype start = {};
        CalendarEvent event = {};
    };

    struct Expansion;
    static int addOccurrence(ICalComponent *component, ICalTime *start, ICalTime *end, gpointer data,
                             GCancellable *cancellable, GError **error);
    [[nodiscard]] CalendarEvent named(CalendarEvent event, const QString &occurrence) const;
    /// By the rule, without those overridden.
    [[nodiscard]] std::optional<Occurrence> occurrence(const EventName &name) const;
    [[nodiscard]] QList<Occurrence> expanded(const Series &series, Instant from, Instant to) const;

    QString m_calendarIdentifier;
    std::shared_ptr<ZoneTable> m_zones;
    std::shared_ptr<const EventText> m_text;
    QHash<QString, CalendarEvent> m_single;
    std::map<QString, Series> m_series;
};

} // namespace tessaly
