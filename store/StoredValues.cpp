#include "store/StoredValues.h"

#include "platform/Clock.h"

namespace tessaly {

StoredValues::StoredValues(const PlannerPorts &ports, std::chrono::milliseconds retryInterval) : m_ports(ports)
{
    m_timer.setInterval(retryInterval);
    connect(&m_timer, &QTimer::timeout, this, &StoredValues::retry);
}

void StoredValues::saveBlob(const QString &key, const Write &writeBlob)
{
    write(key, [this, writeBlob] {
        Result<void> copied = copyUnreadable();
        return copied ? writeBlob() : copied;
    });
}

void StoredValues::save(const QString &key, const PreferenceValue &value)
{
    write(key, [this, key, value] { return preferences().setValue(key, value); });
}

void StoredValues::write(const QString &key, const Write &write)
{
    const bool wasUnsaved = m_unsaved.remove(key) > 0;
    if (const Result<void> written = write(); !written) {
        m_unsaved.insert(key, write);
        m_timer.start();
        emit failed(written.error());
    } else if (wasUnsaved || hasUnsaved()) {
        tryUnsaved();
    }
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
    for (auto unsaved = m_unsaved.begin(); unsaved != m_unsaved.end();) {
        if (const Result<void> written = (*unsaved)(); !written) {
            m_timer.start();
            emit failed(written.error());
            return;
        }
        unsaved = m_unsaved.erase(unsaved);
    }
    m_timer.stop();
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
