#pragma once

#include "platform/Preferences.h"
#include "store/PreferenceKeys.h"

#include <QCryptographicHash>

namespace tessaly {

/// Names the state of everything that a step can change.
inline QByteArray savedStateName(const Preferences &preferences)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &key :
         {keys::storageKey, keys::calendarFeedsKey, keys::documentMetadataKey, keys::waitingReminders}) {
        hash.addData(preferences.get<QByteArray>(key).value_or(QByteArray()));
        hash.addData(QByteArrayView("|"));
    }
    hash.addData(preferences.get<QStringList>(keys::visibleCalendarIDs).value_or(QStringList()).join(u' ').toUtf8());
    return hash.result().toHex();
}

} // namespace tessaly
