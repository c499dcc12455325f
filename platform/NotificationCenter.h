#pragma once

#include <QDateTime>
#include <QString>

namespace tessaly {

/// A notification to be shown at a later minute.
struct NotificationRequest
{
    /// A later request with the same identifier replaces this one.
    QString identifier = {};
    QString title = {};
    QString body = {};
    /// Local wall-clock time; the notification fires at the start of this minute, once.
    QDateTime minute = {};

    bool operator==(const NotificationRequest &) const = default;
};

/// The notifications of the desktop. Failures are not reported to the caller.
class NotificationCenter
{
public:
    virtual ~NotificationCenter() = default;

    /// Asks the user or the system for permission to notify, where there is such a thing.
    virtual void requestAuthorization() = 0;
    virtual void add(const NotificationRequest &request) = 0;
};

} // namespace tessaly
