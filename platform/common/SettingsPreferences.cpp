#include "platform/common/SettingsPreferences.h"

namespace tessaly {

namespace {

/// Sets each value; an invalid one removes its key.
void assign(QSettings &settings, const QVariantMap &values)
{
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry) {
        if (entry->isValid())
            settings.setValue(entry.key(), *entry);
        else
            settings.remove(entry.key());
    }
}

} // namespace

SettingsPreferences::SettingsPreferences(Opener opener) : m_opener(std::move(opener)), m_settings(m_opener())
{
}

std::optional<PreferenceValue> SettingsPreferences::value(const QString &key) const
{
    const QVariant stored = m_settings->value(key);
    switch (stored.typeId()) {
    case QMetaType::Bool:
        return stored.toBool();
    case QMetaType::Int:
    case QMetaType::LongLong:
        return stored.toLongLong();
    case QMetaType::QString:
        return stored.toString();
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return stored.toStringList();
    case QMetaType::QByteArray:
        return stored.toByteArray();
    default:
        return std::nullopt;
    }
}

Result<void> SettingsPreferences::setValue(const QString &key, const PreferenceValue &value)
{
    return write({{key, std::visit([](const auto &held) { return QVariant::fromValue(held); }, value)}});
}

Result<void> SettingsPreferences::remove(const QString &key)
{
    return write({{key, QVariant()}});
}

Result<void> SettingsPreferences::rotate(const QString &key, const QString &backupKey, QByteArrayView blob)
{
    QVariantMap values{{key, blob.toByteArray()}};
    if (const QVariant former = m_settings->value(key); former.isValid())
        values.insert(backupKey, former);
    return write(values);
}

Result<void> SettingsPreferences::keepAside(const QString &from, const QString &to)
{
    const QVariant stored = m_settings->value(from);
    return stored.isValid() ? write({{to, stored}}) : Result<void>();
}

Result<void> SettingsPreferences::write(const QVariantMap &values)
{
    QVariantMap former;
    for (const QString &key : values.keys())
        former.insert(key, m_settings->value(key));
    assign(*m_settings, values);
    m_settings->sync();
    if (m_settings->status() == QSettings::NoError)
        return {};

    const ErrorCode code =
        m_settings->status() == QSettings::AccessError ? ErrorCode::StorageUnwritable : ErrorCode::StorageCorrupt;
    const Error error{code, m_settings->fileName()};
    // Objects on one file share what is not written yet, so the failed change has to be taken back.
    assign(*m_settings, former);
    m_settings = m_opener();
    return error;
}

} // namespace tessaly
