#pragma once

#include "platform/LoginItem.h"

#include <QString>
#include <QStringList>

namespace tessaly {

/// An entry in the user's autostart directory (Desktop Application Autostart Specification 0.5).
class XdgLoginItem final : public LoginItem
{
public:
    /// `command` is the program's absolute path and its arguments. `directory` is by default the autostart directory
    /// of the user's configuration home.
    explicit XdgLoginItem(QStringList command, QString directory = userAutostartDirectory());

    /// False also where the entry exists but is hidden or switched off by the desktop's session settings.
    [[nodiscard]] bool isEnabled() const override;
    /// Fails with LoginItemFailed and the system's message.
    [[nodiscard]] Result<void> setEnabled(bool isEnabled) override;

    [[nodiscard]] QString filePath() const;
    /// $XDG_CONFIG_HOME/autostart
    [[nodiscard]] static QString userAutostartDirectory();

private:
    QStringList m_command;
    QString m_directory;
};

/// The arguments as the value of an Exec key: quoted and escaped as the Desktop Entry Specification 1.5 says.
[[nodiscard]] QString desktopEntryExec(const QStringList &command);

} // namespace tessaly
