#include "platform/linux/PortalAppearance.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace tessaly {

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");

using Settings = QMap<QString, QVariantMap>;

/// Older portals wrap the value twice.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

bool isPaletteDark()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

PortalAppearance::PortalAppearance(QDBusConnection bus, QObject *parent) : QObject(parent), m_bus(std::move(bus))
{
    qDBusRegisterMetaType<Settings>();
    // The bus looks the types of a slot's parameters up by name, and makes this one known only later.
    qRegisterMetaType<QDBusVariant>();
    qApp->installEventFilter(this);
    // Subscribed before asked: a change in between is then not missed.
    if (!m_bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
                       SLOT(takeSetting(QString, QString, QDBusVariant))) &&
        m_bus.isConnected())
        qWarning("tessaly: changes of the desktop's appearance cannot be followed");
    ask();
}

void PortalAppearance::ask()
{
    if (!m_bus.isConnected()) {
        m_isSettled = true;
        return;
    }
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("ReadAll"));
    question << QStringList{appearance};
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<Settings> reply = *watcher;
        m_isSettled = true;
        if (reply.isValid()) {
            const QVariantMap values = reply.value().value(appearance);
            for (auto it = values.cbegin(); it != values.cend(); ++it)
                take(it.key(), it.value());
        }
        announceChange();
    });
}

void PortalAppearance::takeSetting(const QString &nameSpace, const QString &key, const QDBusVariant &value)
{
    if (nameSpace == appearance && take(key, value.variant()))
        announceChange();
}

bool PortalAppearance::take(const QString &key, const QVariant &value)
{
    const Appearance before = current();
    const uint number = unwrapped(value).toUInt();
    if (key == QLatin1String("color-scheme")) {
        // 1: prefer dark, 2: prefer light; anything else must be read as no preference.
        m_colorScheme = number == 1 ? ColorScheme::Dark : number == 2 ? ColorScheme::Light : ColorScheme::NoPreference;
    } else if (key == QLatin1String("contrast")) {
        m_isHighContrast = number == 1;
    } else if (key == QLatin1String("reduced-motion")) {
        m_hasReducedMotion = number == 1;
    }
    return current() != before;
}

Appearance PortalAppearance::current() const
{
    const bool isDark =
        m_colorScheme == ColorScheme::NoPreference ? isPaletteDark() : m_colorScheme == ColorScheme::Dark;
    return {.isDark = isDark, .isHighContrast = m_isHighContrast, .hasReducedMotion = m_hasReducedMotion};
}

bool PortalAppearance::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp)
        announceChange();
    return QObject::eventFilter(watched, event);
}

} // namespace tessaly
