#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

namespace tessaly {

void PlannerStore::loadMainData()
{
}

void PlannerStore::schedulesAssigned(const RowsChange &rows)
{
    save();
    emit schedulesChanged(rows);
}

void PlannerStore::remindersAssigned(const RowsChange &rows)
{
    save();
    emit remindersChanged(rows);
}

void PlannerStore::goalsAssigned(const RowsChange &rows)
{
    save();
    emit goalsChanged(rows);
}

void PlannerStore::documentCategoriesAssigned(const RowsChange &rows)
{
    saveDocumentMetadata();
    emit documentCategoriesChanged(rows);
}

void PlannerStore::documentsAssigned(const RowsChange &rows)
{
    saveDocumentMetadata();
    emit documentsChanged(rows);
}

void PlannerStore::calendarFeedsAssigned(const RowsChange &rows)
{
    saveCalendarFeeds();
    emit calendarFeedsChanged(rows);
}

void PlannerStore::save()
{
}

void PlannerStore::saveDocumentMetadata()
{
}

void PlannerStore::saveCalendarFeeds()
{
}

void PlannerStore::savePreference(const QString &key, const PreferenceValue &value)
{
    m_writer.write(key, [this, key, value] { return m_ports.preferences.setValue(key, value); });
}

void PlannerStore::tellSaveFailed(const Error &error)
{
    tellFailure(QStringLiteral("无法保存更改："), QStringLiteral("Could not save changes: "), error);
    m_saveFailureMessage = m_calendarSyncMessage;
}

void PlannerStore::tellSaveRecovered()
{
    // A message that came later is left alone.
    if (m_saveFailureMessage && m_calendarSyncMessage == m_saveFailureMessage)
        setCalendarSyncMessage(text(QStringLiteral("更改已全部保存。"), QStringLiteral("All changes are saved now.")));
    m_saveFailureMessage.reset();
}

} // namespace tessaly
