#pragma once

#include "model/AppLanguage.h"
#include "platform/LoginItem.h"

#include <QString>
#include <QStringList>

namespace tessaly {

/// The file in the autostart directory, and how the session settings call it.
struct AutostartEntry
{
    enum class SetBy {
        User,    ///< enabling it also undoes what switched it off
        Program, ///< automatically: an entry that the user switched off is left as it is
    };

    QString fileName = QStringLiteral("tessaly.desktop");
    TextPair name = {QStringLiteral("Tessaly"), QStringLiteral("Tessaly")};
    SetBy setBy = SetBy::User;
};

/// An entry in the user's autostart directory (Desktop Application Autostart Specification 0.5).
class XdgLoginItem final : public LoginItem
{
public:
    /// `command` is the program's absolute path and its arguments. `directory` is by default the autostart directory
    /// of the user's configuration home.
    explicit XdgLoginItem(QStringList command, QString directory = userAutostartDirectory(), AutostartEntry entry = {});

    /// False also where the entry exists but was switched off (hidden, or disabled in the desktop's session settings)
    /// or starts a program that does not exist.
    [[nodiscard]] bool isEnabled() const override;
    /// Fails with LoginItemFailed or StorageFull, and the entry's path.
    [[nodiscard]] Result<void> setEnabled(bool isEnabled) override;

    [[nodiscard]] QString filePath() const;
    /// $XDG_CONFIG_HOME/autostart
    [[nodiscard]] static QString userAutostartDirectory();

private:
    [[nodiscard]] Error failure() const;

    QStringList m_command;
    QString m_directory;
    AutostartEntry m_entry;
};

/// The arguments as the value of an Exec key: quoted and escaped as the Desktop Entry Specification 1.5 says.
[[nodiscard]] QString desktopEntryExec(const QStringList &command);
/// The program that the value of an Exec key starts; empty when it starts none.
[[nodiscard]] QString desktopEntryProgram(const QString &exec);

} // namespace tessaly
