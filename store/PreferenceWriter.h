#pragma once

#include "model/Result.h"

#include <QMap>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

namespace tessaly {

/// Writes preferences and forgets none: a write that fails is kept and tried again after each interval, and as soon as
/// another write succeeds. A kept write is to read the state of its moment, not of the moment it was made.
class PreferenceWriter : public QObject
{
    Q_OBJECT

public:
    using Write = std::function<Result<void>()>;

    explicit PreferenceWriter(std::chrono::milliseconds retryInterval, QObject *parent = nullptr);

    /// Runs the write at once. It replaces one that is kept under the same name.
    void write(const QString &name, const Write &write);
    /// Tries everything that is unsaved.
    void retry();
    /// Tries what is unsaved a last time, then forgets it and tells nothing more. For the end of what the writes read.
    void close();
    [[nodiscard]] bool hasUnsaved() const { return !m_unsaved.isEmpty(); }

signals:
    /// A write, or a further try, failed.
    void failed(const tessaly::Error &error);
    /// Everything that failed before is written now.
    void recovered();

private:
    void tryUnsaved();

    QMap<QString, Write> m_unsaved;
    QTimer m_timer;
};

} // namespace tessaly
