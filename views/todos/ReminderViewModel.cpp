#include "views/todos/ReminderViewModel.h"

#include "platform/Clock.h"

#include <algorithm>

namespace tessaly {

ReminderViewModel::ReminderViewModel(QObject *parent) : QObject(parent)
{
}

ReminderViewModel::~ReminderViewModel() = default;

void ReminderViewModel::setStore(PlannerStore *store)
{
    constexpr double oneHour = 3600;
    if (m_store || !store)
        return;
    m_store = store;
    m_list = std::make_unique<ReminderListModel>(*store);
    m_dueDate = store->clock().now().plus(oneHour);
    connect(store, &PlannerStore::timeZoneChanged, this, &ReminderViewModel::formChanged);
    emit storeChanged();
    emit formChanged();
}

QDateTime ReminderViewModel::dueDate() const
{
    return m_store ? m_store->calendar().dateTime(m_dueDate) : QDateTime();
}

void ReminderViewModel::setDueDate(const QDateTime &dueDate)
{
    if (!m_store || !dueDate.isValid() || dueDate == this->dueDate())
        return;
    m_dueDate = m_store->calendar().instant(dueDate.date(), dueDate.time());
    emit formChanged();
}

bool ReminderViewModel::add()
{
    const QString title = m_title.trimmed();
    if (title.isEmpty())
        return false;
    ReminderItem item{.title = title};
    if (m_hasDueDate)
        item.dueDate = m_dueDate;
    if (!m_requirement.isEmpty())
        item.requirement = m_requirement;
    m_store->addReminder(item);
    m_title.clear();
    m_requirement.clear();
    emit formChanged();
    const int row = m_list->rowOf(item.id);
    if (row >= 0)
        emit added(row);
    return true;
}

template <class Change>
int ReminderViewModel::leaveRow(int row, Change change)
{
    return focusHeirAfter(
        *m_list, row, [this](int other) { return m_list->levelOf(other); }, change);
}

int ReminderViewModel::toggle(int row)
{
    const QUuid id = m_list->reminderAt(row);
    const auto found = std::ranges::find(m_store->reminders(), id, &ReminderItem::id);
    if (found == m_store->reminders().cend())
        return -1;
    ReminderItem item = *found;
    item.isComplete = !item.isComplete;
    item.completedAt = item.isComplete ? std::optional(m_store->clock().now()) : std::nullopt;
    return leaveRow(row, [&] { m_store->updateReminder(item); });
}

int ReminderViewModel::remove(int row)
{
    const QUuid id = m_list->reminderAt(row);
    return id.isNull() ? -1 : leaveRow(row, [&] { m_store->removeReminder(id); });
}

} // namespace tessaly
