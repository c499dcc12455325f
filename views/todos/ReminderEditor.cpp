#include "views/todos/ReminderEditor.h"

#include "model/ReminderRules.h"
#include "platform/Clock.h"
#include "store/RecordRows.h"
#include "views/todos/RepetitionChoices.h"

#include <utility>

namespace tessaly {

ReminderEditor::ReminderEditor(QObject *parent) : QObject(parent)
{
}

void ReminderEditor::setStore(PlannerStore *store)
{
    m_store = store;
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &ReminderEditor::repetitionsChanged);
    emit repetitionsChanged();
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

QStringList ReminderEditor::repetitions() const
{
    const bool hasOther = formerRepetition() == Repetition::Other;
    return m_store ? repetitionTexts(hasOther, m_store->interfaceLanguage()) : QStringList();
}

int ReminderEditor::repetition() const
{
    return repetitionRow(m_repetition);
}

void ReminderEditor::setRepetition(int row)
{
    if (std::exchange(m_repetition, repetitionInRow(row)) != m_repetition)
        emit changed();
}

void ReminderEditor::setAfterCompletion(bool isAfterCompletion)
{
    if (std::exchange(m_isAfterCompletion, isAfterCompletion) != isAfterCompletion)
        emit changed();
}

QString ReminderEditor::nextDateText() const
{
    if (!m_store || !m_dueDate)
        return {};
    const auto next = m_store->nextRepetition(edited(m_former), *m_dueDate);
    return next ? DateLabels(m_store->calendar()).dayAndTime(*next->dueDate) : QString();
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
    m_repetition = m_dueDate ? formerRepetition() : Repetition::Never;
    m_isAfterCompletion = m_former.recursAfterCompletion.value_or(false);
    emit repetitionsChanged();
    emit changed();
    emit idChanged();
}

ReminderItem ReminderEditor::edited(ReminderItem item) const
{
    const QString title = m_title.trimmed();
    if (m_title != m_former.title && !title.isEmpty())
        item.title = title;
    if (m_requirement != m_former.requirement.value_or(QString()))
        item.requirement = m_requirement.isEmpty() ? std::nullopt : std::optional(m_requirement);
    if (m_dueDate != m_former.dueDate)
        item = withDueDate(item, m_dueDate, m_store->calendar());
    const bool wasAfterCompletion = m_former.recursAfterCompletion.value_or(false);
    if (m_dueDate && (m_repetition != formerRepetition() || m_isAfterCompletion != wasAfterCompletion))
        item = withRepetition(item, m_repetition, m_isAfterCompletion, m_store->calendar());
    return item;
}

void ReminderEditor::save()
{
    const QUuid id = m_former.id;
    if (id.isNull())
        return;
    const qsizetype row = rowOf(m_store->reminders(), id);
    const std::optional<ReminderItem> before = row < 0 ? std::nullopt : std::optional(m_store->reminders().at(row));
    const std::optional<ReminderItem> after = before ? std::optional(edited(*before)) : std::nullopt;
    cancel();
    if (after != before)
        m_store->updateReminder(*after);
}

void ReminderEditor::cancel()
{
    m_former = {.id = {}};
    emit idChanged();
}

} // namespace tessaly
