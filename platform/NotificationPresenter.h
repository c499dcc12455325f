#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace tessaly {

/// A button of a notification.
struct NotificationAction
{
    QString key = {};
    QString label = {};

    bool operator==(const NotificationAction &) const = default;
};

/// A notification as the user sees it. Plain text, no markup.
struct Notification
{
    /// Identifies the notification that was clicked. A later one takes the place of one that is still shown.
    QString identifier = {};
    QString title = {};
    QString body = {};
    /// Left out where the desktop has no buttons.
    QList<NotificationAction> actions = {};
    /// Whether it stays until the user does something about it, where the desktop allows that.
    bool isLasting = false;

    bool operator==(const Notification &) const = default;
};

/// What happened to a notification that was handed over.
enum class Presentation {
    Shown,       ///< the desktop took it
    Unavailable, ///< no service can show it now
};

/// Puts notifications on the desktop at once; the store decides when.
class NotificationPresenter
{
public:
    using Completion = std::function<void(Presentation)>;

    virtual ~NotificationPresenter() = default;

    /// Asks the user or the system for permission to notify, where there is such a thing.
    virtual void requestAuthorization() = 0;
    /// The completion is called once, never from within present() and never after the presenter's end.
    virtual void present(const Notification &notification, Completion completion) = 0;
    /// Takes the notification off the desktop, also one whose completion has not been called yet. Nothing happens to
    /// one that is not shown.
    virtual void withdraw(const QString &identifier) = 0;
    /// Called with the identifier of a notification that the user clicked.
    virtual void setActivationHandler(std::function<void(const QString &identifier)> handler) = 0;
    /// Called with the identifier of a notification and the key of the button that the user pressed.
    virtual void setActionHandler(std::function<void(const QString &identifier, const QString &key)> handler) = 0;
    /// Called when a notification service has appeared.
    virtual void setAvailabilityHandler(std::function<void()> handler) = 0;
};

} // namespace tessaly
