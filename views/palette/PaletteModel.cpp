#include "views/palette/PaletteModel.h"

#include "model/Uuid.h"
#include "platform/Clock.h"

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;
using Kind = PaletteRow::Kind;

static_assert(PaletteModel::NothingRow == static_cast<int>(Kind::Nothing));

namespace {

/// Of one area, once all of it is asked for.
constexpr qsizetype mostShown = 200;

} // namespace

PaletteModel::PaletteModel(QObject *parent) : QObject(parent), m_rows(paletteRoles())
{
}

PaletteModel::~PaletteModel()
{
    if (m_search)
        m_search->documents().cancel();
}

void PaletteModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    m_search = &PlannerSearch::of(*store);
    connect(m_search, &PlannerSearch::prepared, this, &PaletteModel::search);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, &PaletteModel::refresh);
    emit storeChanged();
}

void PaletteModel::begin()
{
    setText({});
    m_search->prepare(PlannerSearch::Pace::Soon);
}

void PaletteModel::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    m_isMoved = false;
    emit textChanged();
    search();
}

void PaletteModel::search()
{
    m_entry = quickEntry(m_text, m_store->clock().now(), m_store->calendar());
    // What is understood as a time is not what is looked for.
    const SearchQuery query = SearchQuery::of(m_entry.title);
    m_results = std::make_unique<PaletteResults>(*m_store, m_search->records(), query);
    m_search->documents().cancel();
    refresh();
    if (query.isEmpty())
        return;
    m_search->documents().find(m_search->documentFiles(), query, [this](const QList<DocumentHit> &hits) {
        m_results->setTexts(hits);
        refresh();
    });
}

void PaletteModel::refresh()
{
    QList<PaletteRow> rows;
    if (m_results && !m_entry.title.isEmpty()) {
        rows = addRows(m_entry, *m_store);
        rows.append(m_results->rows());
        if (m_results->count() == 0)
            rows.append({.kind = Kind::Nothing, .title = {m_store->text(u"没有结果。"_s, u"No results."_s)}});
    }
    m_rows.setRows(rows);
    if (!m_isMoved)
        chooseFirst();
    setCurrent(std::min(m_current, static_cast<int>(rows.size()) - 1));
    emit countChanged();
}

void PaletteModel::chooseFirst()
{
    const bool hasResults = m_results && m_results->count() > 0;
    // What names no time is a to-do, as it is for the shell's command.
    const bool isToDo = m_entry.kind == QuickEntry::Kind::ToDo || !m_entry.start;
    const int addRow = isToDo ? 1 : 0;
    m_isMoved = false;
    m_current = m_rows.rows().isEmpty() ? -1 : m_entry.start || !hasResults ? addRow : 2;
    emit currentChanged();
}

void PaletteModel::setCurrent(int row)
{
    if (m_current == row)
        return;
    m_current = row;
    emit currentChanged();
}

void PaletteModel::move(int by)
{
    const auto isFree = [this](int row) { return m_rows.rows().at(row).kind != Kind::Nothing; };
    int last = static_cast<int>(m_rows.rows().size()) - 1;
    while (last >= 0 && !isFree(last))
        --last;
    if (last < 0)
        return;
    m_isMoved = true;
    setCurrent(std::clamp(m_current + by, 0, last));
}

QString PaletteModel::countText() const
{
    if (!m_store || !m_results || m_rows.rows().isEmpty())
        return {};
    const qsizetype count = m_results->count();
    return m_store->text(u"%1 个结果"_s, count == 1 ? u"%1 result"_s : u"%1 results"_s).arg(count);
}

void PaletteModel::choose(int row)
{
    if (row < 0 || row >= m_rows.rows().size())
        return;
    const PaletteRow chosen = m_rows.rows().at(row);
    switch (chosen.kind) {
    case Kind::AddSchedule:
        addSchedule();
        return;
    case Kind::AddReminder:
        addReminder();
        return;
    case Kind::More:
        m_results->setMost(chosen.area, mostShown);
        m_isMoved = true;
        refresh();
        return;
    case Kind::Nothing:
        return;
    case Kind::Result:
        if (chosen.area == PaletteArea::Commands)
            emit commandChosen(static_cast<int>(chosen.command));
        else
            emit recordChosen(static_cast<int>(chosen.area) + 1,
                              uuidText(chosen.partId.isNull() ? chosen.id : chosen.partId));
        return;
    }
}

void PaletteModel::addSchedule()
{
    if (m_entry.title.isEmpty())
        return;
    const ScheduleItem item = scheduleOf(m_entry, m_store->clock().now(), m_store->calendar());
    m_store->addSchedule(item);
    emit recordChosen(static_cast<int>(PaletteArea::Schedules) + 1, uuidText(item.id));
}

void PaletteModel::addReminder()
{
    if (m_entry.title.isEmpty())
        return;
    const ReminderItem item = toDoOf(m_entry);
    m_store->addReminder(item);
    emit recordChosen(static_cast<int>(PaletteArea::Reminders) + 1, uuidText(item.id));
}

} // namespace tessaly
