#include "store/NoteDrafts.h"

#include "model/Uuid.h"
#include "store/PreferenceKeys.h"
#include "store/StoredValues.h"

#include <QJsonDocument>

namespace tessaly {

namespace {

std::optional<QJsonObject> decodeNoteDrafts(QByteArrayView json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json.toByteArray());
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

} // namespace

void NoteDrafts::load()
{
    m_drafts = m_values.decoded(keys::noteDrafts, decodeNoteDrafts).value_or(QJsonObject());
}

QJsonObject NoteDrafts::draft(const QUuid &scheduleID) const
{
    return m_drafts.value(uuidText(scheduleID)).toObject();
}

void NoteDrafts::keep(const QUuid &scheduleID, const QJsonObject &fields)
{
    if (fields == draft(scheduleID))
        return;
    if (fields.isEmpty())
        m_drafts.remove(uuidText(scheduleID));
    else
        m_drafts.insert(uuidText(scheduleID), fields);
    save();
}

void NoteDrafts::dropAll()
{
    if (m_drafts.isEmpty())
        return;
    m_drafts = {};
    save();
}

void NoteDrafts::save()
{
    m_values.saveBlob(keys::noteDrafts, [this] {
        return m_values.preferences().setValue(keys::noteDrafts,
                                               QJsonDocument(m_drafts).toJson(QJsonDocument::Compact));
    });
}

} // namespace tessaly
