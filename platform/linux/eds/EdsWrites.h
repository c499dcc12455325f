#pragma once

#include "model/Result.h"
#include "platform/linux/eds/EventMirror.h"

namespace tessaly {

/// What it takes to work on a calendar. Everything here waits for the service: never on a thread that others wait for.
struct EdsAccess
{
    GObjectPtr<ECalClient> client;
    QString calendarIdentifier;
    std::shared_ptr<ZoneTable> zones;
    std::shared_ptr<const EventText> text;
    GObjectPtr<GCancellable> cancellable;
};

/// The event with all its overrides, empty where there is none.
[[nodiscard]] Result<std::shared_ptr<Components>> readEvent(const EdsAccess &access, const QString &uid);
/// Creates those that are not there yet; one result for each.
[[nodiscard]] QList<Result<void>> createEvents(const EdsAccess &access, const QList<NewEvent> &events);
[[nodiscard]] Result<void> changeEvent(const EdsAccess &access, const EventName &name, const EventChange &change);
[[nodiscard]] Result<void> removeEvent(const EdsAccess &access, const EventName &name);

} // namespace tessaly
