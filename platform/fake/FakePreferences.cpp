#include "platform/fake/FakePreferences.h"

namespace tessaly {

Result<void> FakePreferences::write()
{
    if (m_failure)
        return *m_failure;
    ++m_writeCount;
    return {};
}

std::optional<PreferenceValue> FakePreferences::value(const QString &key) const
{
    const auto found = m_values.constFind(key);
    return found == m_values.cend() ? std::nullopt : std::optional(*found);
}

Result<void> FakePreferences::setValue(const QString &key, const PreferenceValue &value)
{
    Result<void> written = write();
    if (written)
        m_values.insert(key, value);
    return written;
}

Result<void> FakePreferences::rotate(const QString &key, const QString &backupKey, QByteArrayView blob,
                                     const std::optional<BlobEdit> &)
{
    Result<void> written = write();
    if (written) {
        if (m_values.contains(key))
            m_values.insert(backupKey, m_values.value(key));
        m_values.insert(key, blob.toByteArray());
    }
    return written;
}

Result<void> FakePreferences::together(const std::function<Result<void>()> &writes)
{
    const QHash<QString, PreferenceValue> former = m_values;
    Result<void> written = writes();
    if (!written)
        m_values = former;
    return written;
}

Result<void> FakePreferences::copyValue(const QString &from, const QString &to)
{
    Result<void> written = write();
    if (written && m_values.contains(from))
        m_values.insert(to, m_values.value(from));
    return written;
}

} // namespace tessaly
