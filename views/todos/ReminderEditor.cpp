#include "views/todos/ReminderEditor.h"

#include "model/ReminderRules.h"
#include "platform/Clock.h"
#include "store/RecordRows.h"

#include <utility>

namespace tessaly {

ReminderEditor::ReminderEditor(QObject *parent) : QObject(parent)
{
}

void ReminderEditor::setTitle(const QString &title)
{
    if (std::exchange(m_title, title) != title)
        emit changed();
}

void ReminderEditor::setRequirement(const QString &requirement)
{
    if (std::exchange(m_requirement, requirement) != requirement)
        emit changed();
}

void ReminderEditor::setHasDueDate(bool hasDueDate)
{
    constexpr double oneHour = 3600;
    if (hasDueDate == this->hasDueDate() || !m_store)
        return;
    m_dueDate.reset();
    if (hasDueDate)
        m_dueDate = m_former.dueDate.value_or(m_store->clock().now().plus(oneHour));
    emit changed();
}

QDateTime ReminderEditor::dueDate() const
{
    return m_store && m_dueDate ? m_store->calendar().dateTime(*m_dueDate) : QDateTime();
}

void ReminderEditor::setDueDate(const QDateTime &dueDate)
{
    if (!m_store || !dueDate.isValid() || dueDate == this->dueDate())
        return;
    m_dueDate = m_store->calendar().instant(dueDate.date(), dueDate.time());
    emit changed();
}

void ReminderEditor::begin(const QUuid &id)
{
    const qsizetype row = rowOf(m_store->reminders(), id);
    if (row < 0)
        return;
    m_former = m_store->reminders().at(row);
    m_title = m_former.title;
    m_requirement = m_former.requirement.value_or(QString());
    m_dueDate = m_former.dueDate;
    emit changed();
    emit idChanged();
}

void ReminderEditor::save()
{
    const ReminderItem former = std::exchange(m_former, {.id = {}});
    if (former.id.isNull())
        return;
    emit idChanged();
    const qsizetype row = rowOf(m_store->reminders(), former.id);
    if (row < 0)
        return;
    ReminderItem item = m_store->reminders().at(row);
    const QString title = m_title.trimmed();
    if (m_title != former.title && !title.isEmpty())
        item.title = title;
    if (m_requirement != former.requirement.value_or(QString()))
        item.requirement = m_requirement.isEmpty() ? std::nullopt : std::optional(m_requirement);
    if (m_dueDate != former.dueDate)
        item = withDueDate(item, m_dueDate, m_store->calendar());
    if (item != m_store->reminders().at(row))
        m_store->updateReminder(item);
}

void ReminderEditor::cancel()
{
    m_former = {.id = {}};
    emit idChanged();
}

} // namespace tessaly
