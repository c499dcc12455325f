#pragma once

#include "store/PlannerPorts.h"

#include "platform/Preferences.h"

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

namespace tessaly {

/// The values of the store under their keys in the preferences. A write that fails is kept and tried again after each
/// interval, and as soon as another write succeeds. A blob that could not be read at start is copied to another key
/// before it is overwritten.
class StoredValues : public QObject
{
    Q_OBJECT

public:
    /// Reads the state of the moment when it runs, which may be later than when it was made.
    using Write = std::function<Result<void>()>;

    /// The ports must outlive the values.
    explicit StoredValues(const PlannerPorts &ports, std::chrono::milliseconds retryInterval = std::chrono::seconds(5));

    [[nodiscard]] Preferences &preferences() const { return m_ports.preferences; }

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

    /// Whether there is a blob that could not be decoded and was not copied to another key yet.
    [[nodiscard]] bool hasUnreadable() const { return !m_unreadableKeys.isEmpty(); }

    /// Runs the write of a blob now, after copying the blobs that could not be read at start, and `written` once it is
    /// committed. It replaces an unsaved one for the same key.
    void saveBlob(const QString &key, const Write &write, const std::function<void()> &written = {});
    /// Stores a plain value.
    void save(const QString &key, const PreferenceValue &value);

    /// Runs `changes`, and then all that it saves in one transaction. Within another call it joins
    /// that one.
    void together(const std::function<void()> &changes);

    [[nodiscard]] bool hasUnsaved() const { return !m_unsaved.isEmpty(); }
    /// Tries everything that is unsaved.
    void retry();
    /// Tries what is unsaved a last time, then drops it and emits nothing more.
    void close();

signals:
    /// A write, or a further try, failed.
    void failed(const tessaly::Error &error);
    /// Everything that failed before is written now.
    void recovered();
    /// Something was written.
    void written();

private:
    struct Pending
    {
        Write write = {};
        std::function<void()> written = {};

        [[nodiscard]] Result<void> run() const;
    };

    void write(const QString &key, const Pending &pending);
    void writeAll(const QMap<QString, Pending> &writes);
    [[nodiscard]] Result<void> writeTogether(const QMap<QString, Pending> &writes);
    void tryUnsaved();
    [[nodiscard]] Result<void> copyUnreadable();

    const PlannerPorts &m_ports;
    QStringList m_unreadableKeys;
    QMap<QString, Pending> m_unsaved;
    /// What together() collects.
    std::optional<QMap<QString, Pending>> m_collected;
    QTimer m_timer;
};

} // namespace tessaly
