#pragma once

#include "model/PreferenceValue.h"
#include "model/Result.h"

#include <functional>
#include <optional>

namespace tessaly {

/// How a blob came from the one before it: `removed` bytes at `offset` gave way to the `inserted` bytes that stand
/// there now.
struct BlobEdit
{
    qsizetype offset = 0;
    qsizetype removed = 0;
    qsizetype inserted = 0;
};

/// The user's preferences database: a key-value store whose every write is durable when the call returns.
/// Used from the main thread only.
class Preferences
{
public:
    virtual ~Preferences() = default;

    /// Nothing when the key is absent.
    [[nodiscard]] virtual std::optional<PreferenceValue> value(const QString &key) const = 0;
    [[nodiscard]] virtual Result<void> setValue(const QString &key, const PreferenceValue &value) = 0;

    /// Stores `blob` under `key` and what stood there before under `backupKey`, both or neither. The former value is
    /// not copied. With no former value the backup is left as it is. Where `blob` came from the value now under `key`
    /// by `edit`, an adapter may write that edit alone.
    [[nodiscard]] virtual Result<void> rotate(const QString &key, const QString &backupKey, QByteArrayView blob,
                                              const std::optional<BlobEdit> &edit = std::nullopt) = 0;

    /// Stores a copy of the value under `from` also under `to`. Does nothing when `from` is absent.
    [[nodiscard]] virtual Result<void> copyValue(const QString &from, const QString &to) = 0;

    /// Commits the writes made by `writes` all at once; none of them when it fails. Within another
    /// call it joins the writes of that one.
    [[nodiscard]] virtual Result<void> together(const std::function<Result<void>()> &writes) = 0;

    /// The value when it is present and of type T.
    template <class T>
    [[nodiscard]] std::optional<T> get(const QString &key) const
    {
        std::optional<PreferenceValue> found = value(key);
        if (found && std::holds_alternative<T>(*found))
            return std::get<T>(std::move(*found));
        return std::nullopt;
    }
};

} // namespace tessaly
