#include "platform/linux/eds/EdsWrites.h"

#include <algorithm>

namespace tessaly {

namespace {

/// Takes hold of the error that a call leaves behind.
class Failure
{
public:
    Failure() = default;
    ~Failure() { g_clear_error(&m_error); }
    Failure(const Failure &) = delete;
    Failure &operator=(const Failure &) = delete;

    [[nodiscard]] GError **out()
    {
        g_clear_error(&m_error);
        return &m_error;
    }
    [[nodiscard]] bool isMissing() const
    {
        return g_error_matches(m_error, E_CAL_CLIENT_ERROR, E_CAL_CLIENT_ERROR_OBJECT_NOT_FOUND);
    }
    [[nodiscard]] Error error() const
    {
        return {isMissing() ? ErrorCode::CalendarEventMissing : ErrorCode::CalendarWriteFailed,
                m_error ? QString::fromUtf8(m_error->message) : QString()};
    }

private:
    GError *m_error = nullptr;
};

GObjectPtr<ICalComponent> wrapped(icalcomponent *component)
{
    // libical-glib wraps no component made elsewhere, so it reads its text.
    const std::unique_ptr<char, decltype(&free)> text(icalcomponent_as_ical_string_r(component), &free);
    return GObjectPtr<ICalComponent>(i_cal_component_new_from_string(text.get()));
}

/// The calendar has to know a zone before an event refers to it: without it the service takes the times for UTC.
Result<void> addLocalZone(const EdsAccess &access)
{
    Failure failure;
    if (access.zones->local() && !e_cal_client_add_timezone_sync(access.client.get(), access.zones->local(),
                                                                 access.cancellable.get(), failure.out()))
        return failure.error();
    return {};
}

Result<void> refuseWhereReadOnly(const EdsAccess &access)
{
    if (e_client_is_readonly(E_CLIENT(access.client.get())))
        return Error{ErrorCode::CalendarWriteFailed, QStringLiteral("read-only")};
    return {};
}

Result<void> save(const EdsAccess &access, icalcomponent *component, ECalObjModType mode)
{
    if (Result<void> zone = addLocalZone(access); !zone)
        return zone;
    Failure failure;
    if (!e_cal_client_modify_object_sync(access.client.get(), wrapped(component).get(), mode, E_CAL_OPERATION_FLAG_NONE,
                                         access.cancellable.get(), failure.out()))
        return failure.error();
    return {};
}

QString occurrenceOf(const EdsAccess &access, icalcomponent *event)
{
    const icaltimetype recurrenceId = access.text->time(event, ICAL_RECURRENCEID_PROPERTY);
    return icaltime_is_null_time(recurrenceId) ? QString() : access.text->occurrenceKey(recurrenceId);
}

/// Where an event, or one occurrence, stands.
struct Place
{
    /// The event itself, or the override of the occurrence.
    icalcomponent *component = nullptr;
    /// The recurring event, if there is one.
    icalcomponent *master = nullptr;
    /// The start of an occurrence by the rule, where it has no override.
    std::optional<icaltimetype> start = {};
};

std::optional<Place> find(const EdsAccess &access, const EventName &name, const Components &components)
{
    Place place;
    for (const auto &candidate : components) {
        icalcomponent *component = nativeComponent(candidate.get());
        const QString occurrence = occurrenceOf(access, component);
        if (occurrence.isEmpty() && isRecurring(component))
            place.master = component;
        else if (occurrence == name.occurrence)
            place.component = component;
    }
    if (place.component)
        return place;
    EventMirror mirror(access.calendarIdentifier, access.zones, access.text);
    mirror.replace(name.uid, components);
    place.start = mirror.startByRule(name);
    return place.start ? std::optional(place) : std::nullopt;
}

QByteArray bareTime(icalcomponent *event, icalproperty_kind kind)
{
    icalproperty *property = icalcomponent_get_first_property(event, kind);
    return property ? QByteArray(icalproperty_get_value_as_string(property)) : QByteArray();
}

bool createOne(const EdsAccess &access, ICalComponent *component, GError **error)
{
    gchar *uid = nullptr;
    const bool isDone = e_cal_client_create_object_sync(access.client.get(), component, E_CAL_OPERATION_FLAG_NONE, &uid,
                                                        access.cancellable.get(), error);
    g_free(uid);
    return isDone;
}

} // namespace

Result<std::shared_ptr<Components>> readEvent(const EdsAccess &access, const QString &uid)
{
    auto result = std::make_shared<Components>();
    GSList *list = nullptr;
    Failure failure;
    const QByteArray name = uid.toUtf8();
    if (!e_cal_client_get_objects_for_uid_sync(access.client.get(), name.constData(), &list, access.cancellable.get(),
                                               failure.out()))
        return failure.isMissing() ? Result(result) : Result<std::shared_ptr<Components>>(failure.error());
    for (GSList *entry = list; entry; entry = entry->next)
        result->push_back(referenceTo(e_cal_component_get_icalcomponent(E_CAL_COMPONENT(entry->data))));
    e_client_util_free_object_slist(list);
    return result;
}

QList<Result<void>> createEvents(const EdsAccess &access, const QList<NewEvent> &events)
{
    QList<Result<void>> results(events.size());
    Result<void> ready = refuseWhereReadOnly(access);
    if (ready)
        ready = addLocalZone(access);
    if (!ready) {
        std::ranges::fill(results, ready);
        return results;
    }
    std::vector<std::pair<qsizetype, GObjectPtr<ICalComponent>>> missing;
    for (qsizetype i = 0; i < events.size(); ++i) {
        const auto present = readEvent(access, events.at(i).uid);
        if (!present)
            results[i] = present.error();
        else if (present.value()->empty())
            missing.emplace_back(i, wrapped(access.text->create(events.at(i)).get()));
    }
    if (missing.empty())
        return results;
    GSList *list = nullptr;
    for (const auto &[index, component] : missing)
        list = g_slist_append(list, component.get());
    GSList *uids = nullptr;
    Failure failure;
    // A local calendar writes its whole file each time, so all go together; where one is refused, each goes alone.
    const bool isDone = e_cal_client_create_objects_sync(access.client.get(), list, E_CAL_OPERATION_FLAG_NONE, &uids,
                                                         access.cancellable.get(), failure.out());
    g_slist_free(list);
    e_client_util_free_string_slist(uids);
    for (const auto &[index, component] : missing) {
        if (isDone)
            continue;
        const auto present = readEvent(access, events.at(index).uid);
        if (present && !present.value()->empty())
            continue;
        if (!createOne(access, component.get(), failure.out()))
            results[index] = failure.error();
    }
    return results;
}

Result<void> changeEvent(const EdsAccess &access, const EventName &name, const EventChange &change)
{
    const auto components = readEvent(access, name.uid);
    if (!components)
        return components.error();
    const std::optional<Place> place = find(access, name, *components.value());
    if (!place)
        return Error{ErrorCode::CalendarEventMissing};
    if (Result<void> allowed = refuseWhereReadOnly(access); !allowed)
        return allowed;
    IcalComponentPtr changed(place->component ? icalcomponent_new_clone(place->component)
                                              : access.text->detach(place->master, *place->start).release());
    if (!access.text->change(changed.get(), change))
        return {};
    return save(access, changed.get(), name.occurrence.isEmpty() ? E_CAL_OBJ_MOD_ALL : E_CAL_OBJ_MOD_THIS);
}

Result<void> removeEvent(const EdsAccess &access, const EventName &name)
{
    auto components = readEvent(access, name.uid);
    if (!components)
        return components.error();
    std::optional<Place> place = find(access, name, *components.value());
    if (!place)
        return Error{ErrorCode::CalendarEventMissing};
    if (Result<void> allowed = refuseWhereReadOnly(access); !allowed)
        return allowed;
    const QByteArray uid = name.uid.toUtf8();
    Failure failure;
    if (!place->component) {
        const IcalComponentPtr master(icalcomponent_new_clone(place->master));
        access.text->exclude(master.get(), *place->start);
        return save(access, master.get(), E_CAL_OBJ_MOD_ALL);
    }
    const bool isAlone = components.value()->size() == 1;
    const QByteArray recurrenceId = bareTime(place->component, ICAL_RECURRENCEID_PROPERTY);
    const icaltimetype start = access.text->time(place->component, ICAL_RECURRENCEID_PROPERTY);
    if (!e_cal_client_remove_object_sync(access.client.get(), uid.constData(),
                                         isAlone ? nullptr : recurrenceId.constData(),
                                         isAlone ? E_CAL_OBJ_MOD_ALL : E_CAL_OBJ_MOD_THIS, E_CAL_OPERATION_FLAG_NONE,
                                         access.cancellable.get(), failure.out()))
        return failure.error();
    if (isAlone || name.occurrence.isEmpty())
        return {};
    // A local calendar leaves the exception without its zone.
    components = readEvent(access, name.uid);
    if (!components)
        return components.error();
    for (const auto &component : *components.value()) {
        icalcomponent *master = nativeComponent(component.get());
        if (!isRecurring(master))
            continue;
        const IcalComponentPtr mended(icalcomponent_new_clone(master));
        if (access.text->exclude(mended.get(), start))
            return save(access, mended.get(), E_CAL_OBJ_MOD_ALL);
    }
    return {};
}

} // namespace tessaly
