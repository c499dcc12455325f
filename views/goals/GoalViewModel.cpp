#include "views/goals/GoalViewModel.h"

#include "model/GoalRules.h"
#include "model/Uuid.h"
#include "platform/Clock.h"
#include "store/RecordRows.h"
#include "views/FocusHeir.h"

#include <algorithm>
#include <utility>

namespace tessaly {
namespace {

/// The heading of goals without a category: Chinese, English.
const std::pair uncategorizedTexts{QStringLiteral("未分类"), QStringLiteral("Uncategorized")};

RowLevel goalRowLevel(GoalRow::Kind kind)
{
    switch (kind) {
    case GoalRow::Kind::Completed:
        return RowLevel::Section;
    case GoalRow::Kind::Category:
        return RowLevel::Group;
    case GoalRow::Kind::ActiveGoal:
    case GoalRow::Kind::CompletedGoal:
        break;
    }
    return RowLevel::Item;
}

/// Absent when nothing was typed.
std::optional<QString> optionalText(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

} // namespace

GoalViewModel::GoalViewModel(QObject *parent) : QObject(parent), m_rows(goalListRoles())
{
}

void GoalViewModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    const Instant now = store->clock().now();
    m_targetDate = store->calendar().addingMonths(now, 1).value_or(now);
    connect(store, &PlannerStore::goalsChanged, this, &GoalViewModel::onChanged);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &GoalViewModel::translateUncategorized);
    const auto show = [this](const UndoStep &step) { showChanged(step.change); };
    connect(&store->history(), &UndoHistory::undone, this, show);
    connect(&store->history(), &UndoHistory::redone, this, show);
    connect(store, &PlannerStore::timeZoneChanged, this, &GoalViewModel::formChanged);
    refreshRows();
    emit storeChanged();
    emit formChanged();
}

void GoalViewModel::showChanged(const StateChange &change)
{
    for (const RecordChange<Goal> &each : change.goals) {
        for (qsizetype row = 0; row < m_rows.rows().size(); ++row) {
            if (m_rows.rows().at(row).goalID == each.id)
                emit restored(int(row));
        }
    }
}

QDateTime GoalViewModel::targetDate() const
{
    return m_store ? m_store->calendar().dateTime(m_targetDate) : QDateTime();
}

void GoalViewModel::setTargetDate(const QDateTime &date)
{
    if (!m_store || !date.isValid() || date == targetDate())
        return;
    m_targetDate = m_store->calendar().instant(date.date(), date.time());
    emit formChanged();
}

bool GoalViewModel::add()
{
    if (trimmedBlanks(m_title).isEmpty())
        return false;
    Goal goal{.title = m_title, .summary = optionalText(m_summary), .category = optionalText(m_category)};
    if (m_hasDueDate)
        goal.targetDate = m_targetDate;
    m_store->addGoal(goal);
    m_title.clear();
    m_summary.clear();
    m_category.clear();
    emit formChanged();
    return true;
}

GoalCardModel *GoalViewModel::card(const QString &goalId)
{
    const QUuid id = QUuid::fromString(goalId);
    GoalCardModel *known = m_cards.value(id);
    if (known || !m_store || std::ranges::find(m_store->goals(), id, &Goal::id) == m_store->goals().cend())
        return known;
    return *m_cards.insert(id, new GoalCardModel(*m_store, id, this));
}

template <class Change>
int GoalViewModel::leaveRow(const QUuid &goalID, Change change)
{
    const auto row = std::ranges::find(m_rows.rows(), goalID, &GoalListRow::goalID);
    if (goalID.isNull() || row == m_rows.rows().cend())
        return -1;
    const auto levelOf = [this](int other) { return goalRowLevel(m_rows.rows().at(other).kind); };
    return focusHeirAfter(m_rows, static_cast<int>(row - m_rows.rows().cbegin()), levelOf, change);
}

int GoalViewModel::toggle(const QString &goalId)
{
    return leaveRow(QUuid::fromString(goalId), [&] { card(goalId)->toggle(); });
}

int GoalViewModel::remove(const QString &goalId)
{
    const QUuid id = QUuid::fromString(goalId);
    return leaveRow(id, [&] { m_store->removeGoal(id); });
}

int GoalViewModel::reveal(const QString &itemId)
{
    const auto holder = std::ranges::find_if(m_store->goals(), [part = QUuid(itemId)](const Goal &goal) {
        const QList<Subgoal> subgoals = goal.subgoals.value_or(QList<Subgoal>());
        return goal.id == part || std::ranges::any_of(subgoals, [&part](const Subgoal &subgoal) {
                   return subgoal.id == part || rowOf(subgoal.tasks.value_or(QList<GoalTask>()), part) >= 0;
               });
    });
    if (holder == m_store->goals().cend())
        return -1;
    const Goal &goal = *holder;
    if (goal.isComplete) {
        m_isCompletedExpanded = true;
        m_expandedCategories.insert(
            categoryName(goal, m_store->text(uncategorizedTexts.first, uncategorizedTexts.second)));
        refreshRows();
    }
    const auto found = std::ranges::find(m_rows.rows(), goal.id, &GoalListRow::goalID);
    return found == m_rows.rows().cend() ? -1 : static_cast<int>(found - m_rows.rows().cbegin());
}

void GoalViewModel::setExpanded(int row, bool isExpanded)
{
    const GoalListRow header = m_rows.rows().value(row);
    if (header.isEmpty)
        return;
    if (header.kind == GoalRow::Kind::Completed)
        m_isCompletedExpanded = isExpanded;
    else if (header.kind == GoalRow::Kind::Category && isExpanded)
        m_expandedCategories.insert(header.label);
    else if (header.kind == GoalRow::Kind::Category)
        m_expandedCategories.remove(header.label);
    refreshRows();
}

void GoalViewModel::onChanged(const RowsChange &change)
{
    if (change.kind == RowsChange::Kind::Updated && change.count == 1) {
        if (GoalCardModel *card = m_cards.value(m_store->goals().at(change.first).id))
            card->refresh();
        refreshRows();
        return;
    }
    QSet<QUuid> present;
    for (const Goal &goal : m_store->goals())
        present.insert(goal.id);
    for (GoalCardModel *card : std::as_const(m_cards))
        card->refresh();
    refreshRows();
    // The view releases a card a little later than its row.
    for (GoalCardModel *card : std::exchange(m_goneCards, {}))
        card->deleteLater();
    m_cards.removeIf([&](const auto &entry) {
        const bool isGone = !present.contains(entry.key());
        if (isGone)
            m_goneCards.append(entry.value());
        return isGone;
    });
}

void GoalViewModel::translateUncategorized()
{
    // An open group stays open in the other language.
    if (m_expandedCategories.remove(m_store->text(uncategorizedTexts.second, uncategorizedTexts.first)))
        m_expandedCategories.insert(m_store->text(uncategorizedTexts.first, uncategorizedTexts.second));
    refreshRows();
}

void GoalViewModel::refreshRows()
{
    const QList<Goal> &goals = m_store->goals();
    QList<GoalListRow> rows;
    for (const qsizetype row : activeGoals(goals))
        rows.append({.kind = GoalRow::Kind::ActiveGoal, .goalID = goals.at(row).id});
    const QString uncategorized = m_store->text(uncategorizedTexts.first, uncategorizedTexts.second);
    const QList<GoalCategory> categories = completedGoalsByCategory(goals, uncategorized);
    const bool isCompletedExpanded = m_isCompletedExpanded && !categories.isEmpty();
    rows.append({.kind = GoalRow::Kind::Completed, .isExpanded = isCompletedExpanded, .isEmpty = categories.isEmpty()});
    for (const GoalCategory &category : isCompletedExpanded ? categories : QList<GoalCategory>()) {
        const bool isExpanded = m_expandedCategories.contains(category.name);
        rows.append({.kind = GoalRow::Kind::Category, .label = category.name, .isExpanded = isExpanded});
        for (const qsizetype row : isExpanded ? category.rows : QList<qsizetype>())
            rows.append({.kind = GoalRow::Kind::CompletedGoal, .goalID = goals.at(row).id});
    }
    rows.last().isLast = true;
    m_rows.setRows(rows);
}

} // namespace tessaly
