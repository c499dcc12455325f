#include "store/StoredValues.h"

#include "platform/Clock.h"

namespace tessaly {

namespace {

constexpr std::chrono::seconds saveRetryInterval(5);

} // namespace

StoredValues::StoredValues(const PlannerPorts &ports) : m_ports(ports), m_writer(saveRetryInterval)
{
}

void StoredValues::saveBlob(const QString &key, const PreferenceWriter::Write &write)
{
    m_writer.write(key, [this, write] {
        Result<void> kept = keepUnreadableAside();
        return kept ? write() : kept;
    });
}

void StoredValues::save(const QString &key, const PreferenceValue &value)
{
    m_writer.write(key, [this, key, value] { return preferences().setValue(key, value); });
}

Result<void> StoredValues::keepUnreadableAside()
{
    while (!m_unreadableKeys.isEmpty()) {
        const QString &key = m_unreadableKeys.constLast();
        const QDateTime now = m_ports.calendar.dateTime(m_ports.clock.now()).toUTC();
        const QString aside =
            key + QStringLiteral("-unreadable-") + now.toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
        if (Result<void> kept = preferences().keepAside(key, aside); !kept)
            return kept;
        m_unreadableKeys.removeLast();
    }
    return {};
}

} // namespace tessaly
