#include "platform/common/NullEventStore.h"

#include <QTimer>

namespace tessaly {

void NullEventStore::requestAccess(AccessCompletion completion)
{
    QTimer::singleShot(0, &m_alive,
                       [completion = std::move(completion)] { completion(Error{ErrorCode::CalendarAccessFailed}); });
}

void NullEventStore::save(const CalendarEvent &, SaveCompletion completion)
{
    QTimer::singleShot(0, &m_alive,
                       [completion = std::move(completion)] { completion(Error{ErrorCode::CalendarAccessFailed}); });
}

void NullEventStore::remove(const QString &, RemoveCompletion completion)
{
    QTimer::singleShot(0, &m_alive,
                       [completion = std::move(completion)] { completion(Error{ErrorCode::CalendarAccessFailed}); });
}

} // namespace tessaly
