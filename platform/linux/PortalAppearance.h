#pragma once

#include "platform/SystemAppearance.h"

#include <QDBusConnection>
#include <QObject>
#include <QVariant>

#include <optional>

class QDBusVariant;

namespace tessaly {

/// The appearance as the desktop portal reports it (org.freedesktop.portal.Settings, namespace
/// org.freedesktop.appearance), followed live. Where there is no portal or it has no opinion on dark or light, the
/// lightness of the application's palette decides.
class PortalAppearance final : public QObject, public SystemAppearance
{
    Q_OBJECT

public:
    explicit PortalAppearance(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    [[nodiscard]] Appearance current() const override;
    [[nodiscard]] bool isSettled() const override { return m_isSettled; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void takeSetting(const QString &nameSpace, const QString &key, const QDBusVariant &value);

private:
    enum class ColorScheme { NoPreference, Dark, Light };

    void ask();
    bool take(const QString &key, const QVariant &value);

    QDBusConnection m_bus;
    ColorScheme m_colorScheme = ColorScheme::NoPreference;
    bool m_isHighContrast = false;
    bool m_hasReducedMotion = false;
    bool m_isSettled = false;
};

} // namespace tessaly
