#pragma once

#include "platform/Preferences.h"

#include <QSettings>

#include <functional>
#include <memory>

namespace tessaly {

/// The preferences in the platform's own database, for platforms where QSettings reaches it and keeps the types of the
/// values (macOS). Elsewhere its text files lose them, and SqlitePreferences serves.
class SettingsPreferences final : public Preferences
{
public:
    using Opener = std::function<std::unique_ptr<QSettings>()>;

    /// `opener` is called at once, and again after a failure: an error stays with a QSettings object for ever.
    explicit SettingsPreferences(Opener opener);

    [[nodiscard]] std::optional<PreferenceValue> value(const QString &key) const override;
    [[nodiscard]] Result<void> setValue(const QString &key, const PreferenceValue &value) override;
    [[nodiscard]] Result<void> remove(const QString &key) override;
    /// Both keys are handed to the platform together; whether a crash can part them is the platform's matter.
    [[nodiscard]] Result<void> rotate(const QString &key, const QString &backupKey, QByteArrayView blob) override;
    [[nodiscard]] Result<void> keepAside(const QString &from, const QString &to) override;
    /// One after the other: QSettings knows no transactions.
    [[nodiscard]] Result<void> together(const std::function<Result<void>()> &writes) override { return writes(); }

private:
    [[nodiscard]] Result<void> write(const QVariantMap &values);

    Opener m_opener;
    std::unique_ptr<QSettings> m_settings;
};

} // namespace tessaly
