#include "views/todos/ReminderListModel.h"

#include "model/Uuid.h"
#include "platform/Clock.h"
#include "store/PlannerStore.h"

#include <algorithm>

namespace tessaly {
namespace {

/// Larger changes are taken over as a whole.
constexpr qsizetype mostSingleChanges = 32;

bool isNested(ReminderListModel::Kind kind)
{
    return kind == ReminderListModel::Kind::Week || kind == ReminderListModel::Kind::Month;
}

/// The value of a text that a row does not have.
QVariant absentText(int role)
{
    return role >= Qt::UserRole ? QVariant(QString()) : QVariant();
}

} // namespace

int ReminderListModel::Block::height() const
{
    return 1 + (isExpanded && group ? static_cast<int>(group->rows.size()) : 0);
}

ReminderListModel::ReminderListModel(const PlannerStore &store, QObject *parent)
    : QAbstractListModel(parent), m_store(store), m_labels(std::make_unique<DateLabels>(store.calendar())),
      m_nextMonth(store.clock().makeAlarm([this] { placeUndated(); }))
{
    connect(&store, &PlannerStore::remindersChanged, this, &ReminderListModel::onChanged);
    connect(&store, &PlannerStore::timeZoneChanged, this, &ReminderListModel::onTimeZoneChanged);
    reset();
    placeUndated();
}

ReminderListModel::~ReminderListModel() = default;

int ReminderListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_blocks.last().firstRow + m_blocks.last().height();
}

QHash<int, QByteArray> ReminderListModel::roleNames() const
{
    return {{KindRole, "kind"},
            {LabelRole, "label"},
            {IsExpandedRole, "isExpanded"},
            {IsEmptyRole, "isEmpty"},
            {IsNestedRole, "isNested"},
            {IsLastRole, "isLast"},
            {ReminderIdRole, "reminderId"},
            {TitleRole, "title"},
            {RequirementRole, "requirement"},
            {DueTextRole, "dueText"},
            {IsCompleteRole, "isComplete"}};
}

QVariant ReminderListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == IsLastRole)
        return isLast(index.row());
    const qsizetype storeRow = storeRowOf(index.row());
    const Block &block = blockOf(index.row());
    if (role == IsNestedRole)
        return isNested(block.kind);
    if (storeRow < 0)
        return headerData(block, role);
    if (storeRow == m_goneStoreRow)
        return itemData(ReminderItem{.id = {}}, role);
    const bool isAfterGone = m_goneStoreRow >= 0 && storeRow > m_goneStoreRow;
    return itemData(m_store.reminders().at(isAfterGone ? storeRow - 1 : storeRow), role);
}

QVariant ReminderListModel::headerData(const Block &block, int role) const
{
    switch (role) {
    case KindRole:
        return QVariant::fromValue(block.kind);
    case LabelRole:
        return isNested(block.kind) ? block.group->label : QString();
    case IsExpandedRole:
        return block.isExpanded;
    case IsEmptyRole:
        return (block.kind == Kind::NoDueDate && !block.group) ||
               (block.kind == Kind::DueDates && m_weeks.groups().isEmpty()) ||
               (block.kind == Kind::Completed && m_months.groups().isEmpty());
    case IsCompleteRole:
        return false;
    default:
        return absentText(role);
    }
}

QVariant ReminderListModel::itemData(const ReminderItem &item, int role) const
{
    switch (role) {
    case KindRole:
        return QVariant::fromValue(Kind::Reminder);
    case ReminderIdRole:
        return uuidText(item.id);
    case TitleRole:
        return item.title;
    case RequirementRole:
        return item.requirement.value_or(QString());
    case DueTextRole:
        return item.dueDate ? m_labels->dayAndTime(*item.dueDate) : QString();
    case IsCompleteRole:
        return item.isComplete;
    case IsExpandedRole:
    case IsEmptyRole:
        return false;
    default:
        return absentText(role);
    }
}

void ReminderListModel::setExpanded(int row, bool isExpanded)
{
    if (row < 0 || row >= rowCount() || storeRowOf(row) >= 0 || data(index(row), IsEmptyRole).toBool())
        return;
    const Block block = blockOf(row);
    if (block.isExpanded == isExpanded)
        return;
    const auto remember = [&](QSet<QString> &labels) {
        if (isExpanded)
            labels.insert(block.group->label);
        else
            labels.remove(block.group->label);
    };
    switch (block.kind) {
    case Kind::NoDueDate:
        m_isNoDueDateExpanded = isExpanded;
        break;
    case Kind::DueDates:
        m_isDueDatesExpanded = isExpanded;
        break;
    case Kind::Completed:
        m_isCompletedExpanded = isExpanded;
        break;
    case Kind::Week:
        remember(m_expandedWeeks);
        break;
    case Kind::Month:
        remember(m_expandedMonths);
        break;
    case Kind::Reminder:
        break;
    }
    const QList<Block> next = blocks();
    const int difference = next.last().firstRow + next.last().height() - rowCount();
    if (difference > 0)
        beginInsertRows({}, row + 1, row + difference);
    else
        beginRemoveRows({}, row + 1, row - difference);
    m_blocks = next;
    if (difference > 0)
        endInsertRows();
    else
        endRemoveRows();
    emit dataChanged(index(row), index(row), {IsExpandedRole});
    tellSurroundings(row + 1);
}

QUuid ReminderListModel::reminderAt(int row) const
{
    const qsizetype storeRow = row < 0 || row >= rowCount() ? -1 : storeRowOf(row);
    return storeRow < 0 ? QUuid() : m_store.reminders().at(storeRow).id;
}

RowLevel ReminderListModel::levelOf(int row) const
{
    if (storeRowOf(row) >= 0)
        return RowLevel::Item;
    return isNested(blockOf(row).kind) ? RowLevel::Group : RowLevel::Section;
}

int ReminderListModel::rowOf(const QUuid &id) const
{
    const auto found = std::ranges::find(m_store.reminders(), id, &ReminderItem::id);
    return found == m_store.reminders().cend() ? -1 : rowOfStoreRow(found - m_store.reminders().cbegin());
}

void ReminderListModel::onChanged(const RowsChange &change)
{
    const qsizetype end = change.first + change.count;
    if (change.kind == RowsChange::Kind::Reset || change.count > mostSingleChanges ||
        (change.kind == RowsChange::Kind::Removed && change.count > 1)) {
        beginResetModel();
        reset();
        endResetModel();
        return;
    }
    switch (change.kind) {
    case RowsChange::Kind::Inserted:
        shift(change.first, change.count);
        m_placements.insert(change.first, change.count, {});
        for (qsizetype row = change.first; row < end; ++row) {
            m_placements[row] = placement(m_store.reminders().at(row));
            insertItem(row);
        }
        break;
    case RowsChange::Kind::Removed:
        removeItem(change.first, StoreRow::IsGone);
        break;
    case RowsChange::Kind::Updated:
        for (qsizetype row = change.first; row < end; ++row)
            updateRow(row);
        break;
    case RowsChange::Kind::Reset:
        break;
    }
}

void ReminderListModel::reset()
{
    m_placements.clear();
    m_placements.reserve(m_store.reminders().size());
    for (const ReminderItem &item : m_store.reminders())
        m_placements.append(placement(item));
    m_noDueDate.assign(m_placements);
    m_weeks.assign(m_placements);
    m_months.assign(m_placements);
    m_blocks = blocks();
}

void ReminderListModel::onTimeZoneChanged()
{
    beginResetModel();
    m_labels = std::make_unique<DateLabels>(m_store.calendar());
    reset();
    endResetModel();
    placeUndated();
}

void ReminderListModel::placeUndated()
{
    for (qsizetype row = 0; row < m_placements.size(); ++row) {
        const ReminderItem &item = m_store.reminders().at(row);
        if (item.isComplete && !item.completedAt)
            updateRow(row);
    }
    const QDate today = m_store.calendar().day(m_store.clock().now());
    m_nextMonth->set(m_store.calendar().startOfDay(QDate(today.year(), today.month(), 1).addMonths(1)));
}

void ReminderListModel::updateRow(qsizetype storeRow)
{
    const ReminderPlacement next = placement(m_store.reminders().at(storeRow));
    if (next != m_placements.at(storeRow)) {
        removeItem(storeRow, StoreRow::Stays);
        m_placements[storeRow] = next;
        insertItem(storeRow);
        return;
    }
    const int row = rowOfStoreRow(storeRow);
    if (row >= 0)
        emit dataChanged(index(row), index(row));
}

void ReminderListModel::insertItem(qsizetype storeRow)
{
    const ReminderPlacement &placement = m_placements.at(storeRow);
    ReminderGroups &groups = section(placement.section);
    const ReminderGroups::Position position = groups.positionFor(storeRow, m_placements);
    const Extent rows = position.isWholeGroup ? extentOfNewGroup(placement, position.group)
                                              : extentOf(&groups.groups().at(position.group), position);
    if (rows.count > 0)
        beginInsertRows({}, rows.first, rows.first + rows.count - 1);
    groups.insert(position, storeRow, placement.label);
    m_blocks = blocks();
    if (rows.count > 0)
        endInsertRows();
    tellSurroundings(rows.first);
}

void ReminderListModel::removeItem(qsizetype storeRow, StoreRow fate)
{
    ReminderGroups &groups = section(m_placements.at(storeRow).section);
    const ReminderGroups::Position position = groups.positionOf(storeRow, m_placements);
    const Extent rows = extentOf(&groups.groups().at(position.group), position);
    if (fate == StoreRow::IsGone)
        m_goneStoreRow = storeRow;
    if (rows.count > 0)
        beginRemoveRows({}, rows.first, rows.first + rows.count - 1);
    groups.remove(position);
    if (fate == StoreRow::IsGone) {
        m_placements.removeAt(storeRow);
        shift(storeRow, -1);
        m_goneStoreRow = -1;
    }
    m_blocks = blocks();
    if (rows.count > 0)
        endRemoveRows();
    tellSurroundings(rows.first);
}

void ReminderListModel::shift(qsizetype first, qsizetype by)
{
    for (ReminderGroups *groups : {&m_noDueDate, &m_weeks, &m_months})
        groups->shift(first, by);
}

ReminderPlacement ReminderListModel::placement(const ReminderItem &item) const
{
    return reminderPlacement(item, m_store.calendar(), *m_labels, m_store.clock().now());
}

ReminderGroups &ReminderListModel::section(ReminderSection section)
{
    switch (section) {
    case ReminderSection::Due:
        return m_weeks;
    case ReminderSection::Completed:
        return m_months;
    case ReminderSection::NoDueDate:
        break;
    }
    return m_noDueDate;
}

QList<ReminderListModel::Block> ReminderListModel::blocks() const
{
    QList<Block> blocks;
    const auto append = [&blocks](Kind kind, const ReminderGroup *group, bool isExpanded) {
        const int row = blocks.isEmpty() ? 0 : blocks.last().firstRow + blocks.last().height();
        blocks.append({kind, group, isExpanded, row});
    };
    const ReminderGroup *noDueDate = m_noDueDate.groups().isEmpty() ? nullptr : &m_noDueDate.groups().first();
    append(Kind::NoDueDate, noDueDate, noDueDate && m_isNoDueDateExpanded);
    append(Kind::DueDates, nullptr, !m_weeks.groups().isEmpty() && m_isDueDatesExpanded);
    if (m_isDueDatesExpanded) {
        for (const ReminderGroup &week : m_weeks.groups())
            append(Kind::Week, &week, m_expandedWeeks.contains(week.label));
    }
    append(Kind::Completed, nullptr, !m_months.groups().isEmpty() && m_isCompletedExpanded);
    if (m_isCompletedExpanded) {
        for (const ReminderGroup &month : m_months.groups())
            append(Kind::Month, &month, m_expandedMonths.contains(month.label));
    }
    return blocks;
}

ReminderListModel::Extent ReminderListModel::extentOf(const ReminderGroup *group,
                                                      const ReminderGroups::Position &position) const
{
    const auto block = std::ranges::find(m_blocks, group, &Block::group);
    if (block == m_blocks.cend())
        return {};
    if (position.isWholeGroup && isNested(block->kind))
        return {block->firstRow, block->height()};
    return {block->firstRow + 1 + static_cast<int>(position.row), block->isExpanded ? 1 : 0};
}

ReminderListModel::Extent ReminderListModel::extentOfNewGroup(const ReminderPlacement &placement, qsizetype place) const
{
    if (placement.section == ReminderSection::NoDueDate)
        return {1, m_isNoDueDateExpanded ? 1 : 0};
    const bool isDue = placement.section == ReminderSection::Due;
    if (!(isDue ? m_isDueDatesExpanded : m_isCompletedExpanded))
        return {};
    const Kind parent = isDue ? Kind::DueDates : Kind::Completed;
    const auto header = std::ranges::find(m_blocks, parent, &Block::kind);
    const Block &before = *(header + place);
    const bool isExpanded = (isDue ? m_expandedWeeks : m_expandedMonths).contains(placement.label);
    return {before.firstRow + before.height(), isExpanded ? 2 : 1};
}

const ReminderListModel::Block &ReminderListModel::blockOf(int row) const
{
    const auto after = std::ranges::upper_bound(m_blocks, row, {}, &Block::firstRow);
    return *(after - 1);
}

qsizetype ReminderListModel::storeRowOf(int row) const
{
    const Block &block = blockOf(row);
    return row == block.firstRow ? -1 : block.group->rows.at(row - block.firstRow - 1);
}

int ReminderListModel::rowOfStoreRow(qsizetype storeRow) const
{
    const ReminderGroups &groups = const_cast<ReminderListModel *>(this)->section(m_placements.at(storeRow).section);
    const ReminderGroups::Position position = groups.positionOf(storeRow, m_placements);
    const auto block = std::ranges::find(m_blocks, &groups.groups().at(position.group), &Block::group);
    return block != m_blocks.cend() && block->isExpanded ? block->firstRow + 1 + static_cast<int>(position.row) : -1;
}

void ReminderListModel::tellSurroundings(int row)
{
    for (const Block &block : std::as_const(m_blocks)) {
        if (!isNested(block.kind))
            emit dataChanged(index(block.firstRow), index(block.firstRow), {IsExpandedRole, IsEmptyRole, IsLastRole});
    }
    for (const int changed : {row - 1, row}) {
        if (changed >= 0 && changed < rowCount())
            emit dataChanged(index(changed), index(changed), {IsLastRole});
    }
}

bool ReminderListModel::isLast(int row) const
{
    return row == rowCount() - 1 || blockOf(row + 1).kind == Kind::Completed;
}

} // namespace tessaly
