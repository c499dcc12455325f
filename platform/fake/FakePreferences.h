#pragma once

#include "platform/Preferences.h"

#include <QHash>

namespace tessaly {

/// Preferences in memory. Writes can be made to fail and are counted.
class FakePreferences final : public Preferences
{
public:
    [[nodiscard]] std::optional<PreferenceValue> value(const QString &key) const override;
    [[nodiscard]] Result<void> setValue(const QString &key, const PreferenceValue &value) override;
    [[nodiscard]] Result<void> rotate(const QString &key, const QString &backupKey, QByteArrayView blob,
                                      const std::optional<BlobEdit> &edit = std::nullopt) override;
    [[nodiscard]] Result<void> copyValue(const QString &from, const QString &to) override;
    [[nodiscard]] Result<void> together(const std::function<Result<void>()> &writes) override;

    [[nodiscard]] QStringList keys() const { return m_values.keys(); }
    [[nodiscard]] int writeCount() const { return m_writeCount; }
    /// Until it is called with nothing, every write fails with this error and changes nothing.
    void failWritesWith(std::optional<Error> error) { m_failure = std::move(error); }

private:
    [[nodiscard]] Result<void> write();

    QHash<QString, PreferenceValue> m_values;
    std::optional<Error> m_failure;
    int m_writeCount = 0;
};

} // namespace tessaly
