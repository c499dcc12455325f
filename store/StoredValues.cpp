#include "store/StoredValues.h"

#include "platform/Clock.h"

#include <utility>

namespace tessaly {

StoredValues::StoredValues(const PlannerPorts &ports, std::chrono::milliseconds retryInterval) : m_ports(ports)
{
    m_timer.setInterval(retryInterval);
    connect(&m_timer, &QTimer::timeout, this, &StoredValues::retry);
}

Result<void> StoredValues::Pending::run() const
{
    Result<void> done = write();
    if (done && written)
        written();
    return done;
}

void StoredValues::saveBlob(const QString &key, const Write &writeBlob, const std::function<void()> &written)
{
    const auto copyAndWrite = [this, writeBlob] {
        Result<void> copied = copyUnreadable();
        return copied ? writeBlob() : copied;
    };
    write(key, {copyAndWrite, written});
}

void StoredValues::save(const QString &key, const PreferenceValue &value)
{
    write(key, {[this, key, value] { return preferences().setValue(key, value); }});
}

void StoredValues::write(const QString &key, const Pending &pending)
{
    if (m_collected)
        m_collected->insert(key, pending);
    else
        writeAll({{key, pending}});
}

void StoredValues::together(const std::function<void()> &changes)
{
    if (m_collected) {
        changes();
        return;
    }
    m_collected.emplace();
    changes();
    const QMap<QString, Pending> writes = *std::exchange(m_collected, std::nullopt);
    if (!writes.isEmpty())
        writeAll(writes);
}

void StoredValues::writeAll(const QMap<QString, Pending> &writes)
{
    bool wasUnsaved = false;
    for (auto write = writes.cbegin(); write != writes.cend(); ++write)
        wasUnsaved = m_unsaved.remove(write.key()) > 0 || wasUnsaved;
    if (const Result<void> written = writes.size() == 1 ? writes.first().run() : writeTogether(writes); !written) {
        m_unsaved.insert(writes);
        m_timer.start();
        emit failed(written.error());
        return;
    }
    emit this->written();
    if (wasUnsaved || hasUnsaved())
        tryUnsaved();
}

Result<void> StoredValues::writeTogether(const QMap<QString, Pending> &writes)
{
    // A copy that a failure of the others rolls back would be taken for made.
    if (Result<void> copied = copyUnreadable(); !copied)
        return copied;
    Result<void> done = preferences().together([&writes] {
        Result<void> written;
        for (auto each = writes.cbegin(); written && each != writes.cend(); ++each)
            written = each->write();
        return written;
    });
    for (const Pending &each : writes) {
        if (done && each.written)
            each.written();
    }
    return done;
}

void StoredValues::retry()
{
    if (hasUnsaved())
        tryUnsaved();
}

void StoredValues::close()
{
    blockSignals(true);
    tryUnsaved();
    m_unsaved.clear();
    m_timer.stop();
}

void StoredValues::tryUnsaved()
{
    // At once, or as much as possible: on a full disk what is small may still be written.
    if (m_unsaved.size() > 1 && writeTogether(m_unsaved))
        m_unsaved.clear();
    for (auto unsaved = m_unsaved.begin(); unsaved != m_unsaved.end();) {
        if (const Result<void> written = unsaved->run(); !written) {
            m_timer.start();
            emit failed(written.error());
            return;
        }
        unsaved = m_unsaved.erase(unsaved);
    }
    m_timer.stop();
    emit written();
    emit recovered();
}

Result<void> StoredValues::copyUnreadable()
{
    while (!m_unreadableKeys.isEmpty()) {
        const QString &key = m_unreadableKeys.constLast();
        const QDateTime now = m_ports.calendar.dateTime(m_ports.clock.now()).toUTC();
        const QString copy =
            key + QStringLiteral("-unreadable-") + now.toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
        if (Result<void> copied = preferences().copyValue(key, copy); !copied)
            return copied;
        m_unreadableKeys.removeLast();
    }
    return {};
}

} // namespace tessaly
