#pragma once

#include "store/PlannerPorts.h"
#include "store/PreferenceWriter.h"

#include "platform/Preferences.h"

#include <QStringList>

#include <optional>

namespace tessaly {

/// The values of the store under their keys in the preferences. Nothing is lost by it: a write that fails is kept and
/// tried again, and a blob that could not be read at start is kept aside before it is written over.
class StoredValues
{
public:
    /// The ports must outlive the values.
    explicit StoredValues(const PlannerPorts &ports);

    [[nodiscard]] Preferences &preferences() const { return m_ports.preferences; }
    /// Tells of writes that failed and of their recovery.
    [[nodiscard]] PreferenceWriter &writer() { return m_writer; }
    [[nodiscard]] const PreferenceWriter &writer() const { return m_writer; }

    /// The value of the blob under the key; nothing when it is absent or cannot be decoded, and the latter is noted.
    template <class Value>
    [[nodiscard]] std::optional<Value> decoded(const QString &key, std::optional<Value> (*decode)(QByteArrayView))
    {
        const std::optional<PreferenceValue> stored = preferences().value(key);
        if (!stored)
            return std::nullopt;
        const auto *blob = std::get_if<QByteArray>(&*stored);
        std::optional<Value> value = blob ? decode(*blob) : std::nullopt;
        if (!value)
            m_unreadableKeys.append(key);
        return value;
    }

    /// Whether a blob was there that could not be decoded and is not kept aside yet.
    [[nodiscard]] bool hasUnreadable() const { return !m_unreadableKeys.isEmpty(); }

    /// Writes a blob, after the blobs that could not be read at start were kept aside under keys of their own.
    void saveBlob(const QString &key, const PreferenceWriter::Write &write);
    /// Stores a plain value.
    void save(const QString &key, const PreferenceValue &value);

    /// The end of what is saved here: tries a last time what could not be written.
    void close() { m_writer.close(); }

private:
    [[nodiscard]] Result<void> keepUnreadableAside();

    const PlannerPorts &m_ports;
    QStringList m_unreadableKeys;
    PreferenceWriter m_writer;
};

} // namespace tessaly
