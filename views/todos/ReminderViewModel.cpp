#include "views/todos/ReminderViewModel.h"

#include "model/ReminderRules.h"
#include "store/FormDrafts.h"
#include "store/RecordRows.h"
#include "views/FocusHeir.h"
#include "views/todos/RepetitionChoices.h"

#include <algorithm>

namespace tessaly {

using Kind = ReminderRowKind::Kind;

ReminderViewModel::ReminderViewModel(QObject *parent) : QObject(parent), m_rows(reminderListRoles())
{
}

ReminderViewModel::~ReminderViewModel()
{
    m_editor.save();
    if (!m_store)
        return;
    FormDrafts &drafts = FormDrafts::of(*m_store);
    drafts.toDoTitle = m_title;
    drafts.toDoRequirement = m_requirement;
}

void ReminderViewModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    m_title = FormDrafts::of(*store).toDoTitle;
    m_requirement = FormDrafts::of(*store).toDoRequirement;
    m_editor.setStore(store);
    m_nextMonth = store->clock().makeAlarm([this] { onMonthBegun(); });
    m_nextDue = store->clock().makeAlarm([this] {
        refreshRows();
        waitForNextDue();
    });
    connect(store, &PlannerStore::remindersChanged, this, [this] {
        refreshRows();
        waitForNextDue();
    });
    connect(&m_editor, &ReminderEditor::idChanged, this, &ReminderViewModel::refreshRows);
    connect(store, &PlannerStore::timeZoneChanged, this, &ReminderViewModel::onTimeZoneChanged);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &ReminderViewModel::refreshRows);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &ReminderViewModel::repetitionsChanged);
    const auto show = [this](const UndoStep &step) { showChanged(step.change); };
    connect(&store->history(), &UndoHistory::undone, this, show);
    connect(&store->history(), &UndoHistory::redone, this, show);
    onTimeZoneChanged();
    emit storeChanged();
    emit repetitionsChanged();
    useForm();
}

void ReminderViewModel::useForm()
{
    constexpr double oneHour = 3600;
    if (m_store && !m_isDueDateChosen)
        m_dueDate = m_store->clock().now().plus(oneHour);
    emit formChanged();
}

void ReminderViewModel::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    useForm();
}

void ReminderViewModel::setHasDueDate(bool hasDueDate)
{
    if (m_hasDueDate == hasDueDate)
        return;
    m_hasDueDate = hasDueDate;
    useForm();
}

QDateTime ReminderViewModel::dueDate() const
{
    return m_store ? m_store->calendar().dateTime(m_dueDate) : QDateTime();
}

void ReminderViewModel::setDueDate(const QDateTime &dueDate)
{
    if (!m_store || !dueDate.isValid() || dueDate == this->dueDate())
        return;
    m_isDueDateChosen = true;
    m_dueDate = m_store->calendar().instant(dueDate.date(), dueDate.time());
    emit formChanged();
}

void ReminderViewModel::setRepetition(int row)
{
    if (m_repetition == row || row < 0 || row >= repetitionRow(Repetition::Other))
        return;
    m_repetition = row;
    useForm();
}

QStringList ReminderViewModel::repetitions() const
{
    return m_store ? repetitionTexts(false, m_store->interfaceLanguage()) : QStringList();
}

void ReminderViewModel::setAfterCompletion(bool isAfterCompletion)
{
    if (m_isAfterCompletion == isAfterCompletion)
        return;
    m_isAfterCompletion = isAfterCompletion;
    useForm();
}

QString ReminderViewModel::nextDateText() const
{
    const auto next = m_store ? m_store->nextRepetition(draft(), m_dueDate) : std::nullopt;
    return next ? m_labels->dayAndTime(*next->dueDate) : QString();
}

ReminderItem ReminderViewModel::draft() const
{
    ReminderItem item{.title = m_title.trimmed()};
    if (!m_requirement.isEmpty())
        item.requirement = m_requirement;
    if (!m_hasDueDate)
        return item;
    item.dueDate = m_dueDate;
    return withRepetition(item, repetitionInRow(m_repetition), m_isAfterCompletion, m_store->calendar());
}

bool ReminderViewModel::add()
{
    const ReminderItem item = draft();
    if (item.title.isEmpty())
        return false;
    m_store->addReminder(item);
    m_title.clear();
    m_requirement.clear();
    m_repetition = 0;
    m_isAfterCompletion = false;
    emit formChanged();
    if (const int row = rowShowing(m_rows.rows(), item, m_store->calendar(), *m_labels); row >= 0)
        emit added(row);
    return true;
}

void ReminderViewModel::showChanged(const StateChange &change)
{
    for (const RecordChange<ReminderItem> &each : change.reminders) {
        const int row = each.after ? rowShowing(m_rows.rows(), *each.after, m_store->calendar(), *m_labels) : -1;
        if (row >= 0)
            emit restored(row);
    }
}

template <class Change>
int ReminderViewModel::leaveRow(int row, Change change)
{
    const auto levelOf = [this](int other) {
        const ReminderListRow &shown = m_rows.rows().at(other);
        if (shown.kind == Kind::Reminder)
            return RowLevel::Item;
        return shown.isNested() ? RowLevel::Group : RowLevel::Section;
    };
    return focusHeirAfter(m_rows, row, levelOf, change);
}

int ReminderViewModel::toggle(int row)
{
    const QUuid id = m_rows.rows().value(row).id;
    if (m_editor.id() == id)
        m_editor.save();
    const qsizetype storeRow = rowOf(m_store->reminders(), id);
    if (storeRow < 0)
        return -1;
    const ReminderItem item = toggled(m_store->reminders().at(storeRow), m_store->clock().now());
    const int shownRow = rowOfItem(id);
    if (shownRow < 0) {
        m_store->updateReminder(item);
        return -1;
    }
    return leaveRow(shownRow, [&] { m_store->updateReminder(item); });
}

int ReminderViewModel::remove(int row)
{
    const QUuid id = m_rows.rows().value(row).id;
    if (id.isNull())
        return -1;
    if (m_editor.id() == id)
        m_editor.cancel();
    return leaveRow(row, [&] { m_store->removeReminder(id); });
}

int ReminderViewModel::reveal(const QString &reminderId)
{
    const QUuid id(reminderId);
    const qsizetype storeRow = rowOf(m_store->reminders(), id);
    if (storeRow < 0)
        return -1;
    const ReminderItem &item = m_store->reminders().at(storeRow);
    if (item.isComplete) {
        m_groups.isCompletedExpanded = true;
        m_groups.expandedMonths.insert(completedByMonth({item}, *m_labels, m_store->clock().now()).constFirst().label);
    } else if (item.dueDate) {
        m_groups.isDueDatesExpanded = true;
        m_groups.expandedWeeks.insert(dueDateItemsByWeek({item}, m_store->calendar(), *m_labels).constFirst().label);
    } else {
        m_groups.isNoDueDateExpanded = true;
    }
    refreshRows();
    return rowOfItem(id);
}

void ReminderViewModel::setExpanded(int row, bool isExpanded)
{
    const ReminderListRow header = m_rows.rows().value(row);
    const auto remember = [&](QSet<QString> &labels) {
        if (isExpanded)
            labels.insert(header.label);
        else
            labels.remove(header.label);
    };
    if (header.isEmpty)
        return;
    switch (header.kind) {
    case Kind::NoDueDate:
        m_groups.isNoDueDateExpanded = isExpanded;
        break;
    case Kind::DueDates:
        m_groups.isDueDatesExpanded = isExpanded;
        break;
    case Kind::Completed:
        m_groups.isCompletedExpanded = isExpanded;
        break;
    case Kind::Week:
        remember(m_groups.expandedWeeks);
        break;
    case Kind::Month:
        remember(m_groups.expandedMonths);
        break;
    case Kind::Reminder:
        return;
    }
    refreshRows();
}

void ReminderViewModel::onTimeZoneChanged()
{
    m_labels = std::make_unique<DateLabels>(m_store->calendar());
    onMonthBegun();
    emit formChanged();
}

void ReminderViewModel::onMonthBegun()
{
    refreshRows();
    waitForNextDue();
    const UserCalendar &calendar = m_store->calendar();
    const QDate today = calendar.day(m_store->clock().now());
    m_nextMonth->set(calendar.startOfDay(UserCalendar::monthStart(today).addMonths(1)));
}

void ReminderViewModel::refreshRows()
{
    const PlannerStore &store = *m_store;
    m_groups.edited = m_editor.id();
    m_rows.setRows(reminderListRows(store.reminders(), store.calendar(), *m_labels, store.clock().now(), m_groups,
                                    store.interfaceLanguage()));
}

} // namespace tessaly
