#include "views/palette/PaletteRows.h"

#include "model/DisplayTitle.h"
#include "model/GoalRules.h"
#include "model/ScheduleColors.h"
#include "model/ScheduleRules.h"
#include "model/Uuid.h"
#include "platform/Clock.h"

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

QString areaTitle(PaletteArea area, const PlannerStore &store)
{
    switch (area) {
    case PaletteArea::Schedules:
        return store.text(u"日程"_s, u"Schedule"_s);
    case PaletteArea::Reminders:
        return store.text(u"待办"_s, u"To-dos"_s);
    case PaletteArea::Goals:
        return store.text(u"目标"_s, u"Goals"_s);
    case PaletteArea::Documents:
        return store.text(u"文档"_s, u"Documents"_s);
    case PaletteArea::Commands:
        return store.text(u"命令"_s, u"Commands"_s);
    }
    Q_UNREACHABLE();
}

FoundText found(const QString &title, const SearchMatch &match)
{
    return {.text = title, .start = match.start, .length = match.length};
}

FoundText titleFound(const QString &title, const RecordSearch::Hit &hit)
{
    return hit.part.isEmpty() ? found(title, hit.match) : FoundText{title};
}

FoundText partFound(const RecordSearch::Hit &hit)
{
    return hit.part.isEmpty() ? FoundText{} : found(hit.part, hit.match);
}

/// "11月25日 周三" or "Wed, Nov 25"; with the year in other years than the present one.
QString dayText(Instant moment, const PlannerStore &store)
{
    const QDate day = store.calendar().day(moment);
    const bool isThisYear = day.year() == store.today().year();
    const QString chinese = isThisYear ? u"M月d日 ddd"_s : u"yyyy年M月d日 ddd"_s;
    const QString english = isThisYear ? u"ddd, MMM d"_s : u"ddd, MMM d, yyyy"_s;
    return interfaceLocale(store.isEnglish()).toString(day, store.text(chinese, english));
}

} // namespace

TextPair commandTitle(PaletteCommand command)
{
    switch (command) {
    case PaletteCommand::ShowOverview:
        return {u"前往概览"_s, u"Go to Overview"_s};
    case PaletteCommand::ShowSchedule:
        return {u"前往日程"_s, u"Go to Schedule"_s};
    case PaletteCommand::ShowReminders:
        return {u"前往待办"_s, u"Go to To-dos"_s};
    case PaletteCommand::ShowGoals:
        return {u"前往目标"_s, u"Go to Goals"_s};
    case PaletteCommand::ShowDocuments:
        return {u"前往文档"_s, u"Go to Documents"_s};
    case PaletteCommand::Undo:
        return {u"撤销"_s, u"Undo"_s};
    case PaletteCommand::Redo:
        return {u"重做"_s, u"Redo"_s};
    case PaletteCommand::Versions:
        return {u"历史版本"_s, u"Earlier versions"_s};
    case PaletteCommand::Shortcuts:
        return {u"键盘快捷键"_s, u"Keyboard shortcuts"_s};
    case PaletteCommand::Export:
        return {u"导出"_s, u"Export"_s};
    case PaletteCommand::Import:
        return {u"导入"_s, u"Import"_s};
    case PaletteCommand::Settings:
        return {u"设置"_s, u"Settings"_s};
    case PaletteCommand::Today:
        return {u"今天"_s, u"Today"_s};
    case PaletteCommand::Week:
        return {u"周视图"_s, u"Week"_s};
    case PaletteCommand::Month:
        return {u"月视图"_s, u"Month"_s};
    case PaletteCommand::Plan:
        return {u"计划"_s, u"Plan"_s};
    }
    Q_UNREACHABLE();
}

QString PaletteRow::key() const
{
    const int which = area == PaletteArea::Commands && kind == Kind::Result ? static_cast<int>(command) : 0;
    return QString::number(static_cast<int>(kind)) + u'/' + QString::number(static_cast<int>(area)) + u'/' +
           QString::number(which) + uuidText(id);
}

QList<RowListModel<PaletteRow>::Role> paletteRoles()
{
    return {
        {"kind", [](const PaletteRow &row) -> QVariant { return static_cast<int>(row.kind); }},
        {"heading", [](const PaletteRow &row) -> QVariant { return row.heading; }},
        {"icon", [](const PaletteRow &row) -> QVariant { return row.icon; }},
        {"colorKey", [](const PaletteRow &row) -> QVariant { return row.colorKey; }},
        {"title", [](const PaletteRow &row) -> QVariant { return row.title.text; }},
        {"titleStart", [](const PaletteRow &row) -> QVariant { return int(row.title.start); }},
        {"titleLength", [](const PaletteRow &row) -> QVariant { return int(row.title.length); }},
        {"part", [](const PaletteRow &row) -> QVariant { return row.part.text; }},
        {"partStart", [](const PaletteRow &row) -> QVariant { return int(row.part.start); }},
        {"partLength", [](const PaletteRow &row) -> QVariant { return int(row.part.length); }},
        {"detail", [](const PaletteRow &row) -> QVariant { return row.detail; }},
    };
}

QList<PaletteRow> addRows(const QuickEntry &entry, const PlannerStore &store)
{
    const Instant now = store.clock().now();
    const auto label = [&](Instant start, std::optional<Instant> end) {
        return timeLabel(start, end, now, store.calendar(), store.interfaceLanguage());
    };
    const ScheduleItem schedule = scheduleOf(entry, now, store.calendar());
    const QString due = entry.start ? store.text(u"截止 %1"_s, u"due %1"_s).arg(label(*entry.start, {}))
                                    : store.text(u"无截止时间"_s, u"no due date"_s);
    return {{.kind = PaletteRow::Kind::AddSchedule,
             .icon = u"calendar-plus"_s,
             .title = {store.text(u"添加日程“%1”"_s, u"Add schedule “%1”"_s).arg(entry.title)},
             .detail = label(schedule.date, schedule.endDate)},
            {.kind = PaletteRow::Kind::AddReminder,
             .icon = u"list-plus"_s,
             .title = {store.text(u"添加待办“%1”"_s, u"Add to-do “%1”"_s).arg(entry.title)},
             .detail = due}};
}

PaletteResults::PaletteResults(const PlannerStore &store, const RecordSearch &search, SearchQuery query)
    : m_store(store), m_search(search), m_query(std::move(query))
{
    constexpr qsizetype shownAtFirst = 5;
    m_most.fill(shownAtFirst);
}

QList<PaletteRow> PaletteResults::rows()
{
    m_rows.clear();
    m_count = 0;
    addSchedules();
    addReminders();
    addGoals();
    addDocuments();
    addCommands();
    return m_rows;
}

void PaletteResults::append(PaletteArea area, const QList<PaletteRow> &rows, qsizetype count)
{
    if (rows.isEmpty())
        return;
    const qsizetype first = m_rows.size();
    m_rows.append(rows);
    m_rows[first].heading = areaTitle(area, m_store);
    for (qsizetype row = first; row < m_rows.size(); ++row) {
        m_rows[row].kind = PaletteRow::Kind::Result;
        m_rows[row].area = area;
    }
    m_count += count;
    const qsizetype more = count - rows.size();
    if (more > 0)
        m_rows.append({.kind = PaletteRow::Kind::More,
                       .area = area,
                       .icon = u"ellipsis"_s,
                       .title = {m_store.text(u"还有 %1 个"_s, u"%1 more"_s).arg(more)}});
}

void PaletteResults::addSchedules()
{
    const RecordSearch::Hits hits = m_search.schedules(m_query, most(PaletteArea::Schedules));
    const LinkColors colors = linkColors(m_store.calendarFeeds());
    QList<PaletteRow> rows;
    for (const RecordSearch::Hit &hit : hits.best) {
        const ScheduleItem &item = m_store.schedules().at(hit.row);
        rows.append({.id = item.id,
                     .colorKey = scheduleColor(item, colors),
                     .title = titleFound(displayTitle(item), hit),
                     .part = partFound(hit),
                     .detail = dayText(item.date, m_store) + u' ' +
                               timeRangeText(item.date, item.endDate, m_store.calendar())});
    }
    append(PaletteArea::Schedules, rows, hits.count);
}

void PaletteResults::addReminders()
{
    const RecordSearch::Hits hits = m_search.reminders(m_query, most(PaletteArea::Reminders));
    QList<PaletteRow> rows;
    for (const RecordSearch::Hit &hit : hits.best) {
        const ReminderItem &item = m_store.reminders().at(hit.row);
        rows.append({.id = item.id,
                     .icon = item.isComplete ? u"circle-check"_s : u"circle"_s,
                     .title = titleFound(item.title, hit),
                     .part = partFound(hit),
                     .detail = item.dueDate ? m_store.momentText(*item.dueDate) : QString()});
    }
    append(PaletteArea::Reminders, rows, hits.count);
}

void PaletteResults::addGoals()
{
    const RecordSearch::Hits hits = m_search.goals(m_query, most(PaletteArea::Goals));
    QList<PaletteRow> rows;
    for (const RecordSearch::Hit &hit : hits.best) {
        const Goal &goal = m_store.goals().at(hit.row);
        rows.append({.id = goal.id,
                     .partId = hit.partId,
                     .icon = u"target"_s,
                     .title = titleFound(goal.title, hit),
                     .part = partFound(hit),
                     .detail = QString::number(percentage(goal.calculatedProgress())) + u'%'});
    }
    append(PaletteArea::Goals, rows, hits.count);
}

QString PaletteResults::categoryName(const MarkdownDocument &document) const
{
    const QList<MarkdownCategory> &categories = m_store.documentLibrary().documentCategories();
    const auto own = std::ranges::find_if(
        categories, [&](const MarkdownCategory &category) { return category.id == document.categoryID; });
    return own == categories.cend() ? QString() : own->name;
}

void PaletteResults::addDocuments()
{
    const QList<MarkdownDocument> &documents = m_store.documentLibrary().documents();
    // All of them, for those that are found by their text are listed once.
    const RecordSearch::Hits titles = m_search.documents(m_query, documents.size());
    QList<PaletteRow> rows;
    QSet<QUuid> listed;
    const auto row = [&](const MarkdownDocument &document) -> PaletteRow & {
        rows.append(
            {.id = document.id, .icon = u"file-text"_s, .title = {document.title}, .detail = categoryName(document)});
        return rows.last();
    };
    for (const RecordSearch::Hit &hit : titles.best) {
        const MarkdownDocument &document = documents.at(hit.row);
        listed.insert(document.id);
        if (rows.size() < most(PaletteArea::Documents))
            row(document).title = found(document.title, hit.match);
    }
    qsizetype count = titles.count;
    for (const DocumentHit &hit : m_texts) {
        const auto document = std::ranges::find(documents, hit.id, &MarkdownDocument::id);
        if (listed.contains(hit.id) || document == documents.cend())
            continue;
        ++count;
        if (rows.size() < most(PaletteArea::Documents))
            row(*document).part = {hit.excerpt.text, hit.excerpt.start, hit.excerpt.length};
    }
    append(PaletteArea::Documents, rows, count);
}

void PaletteResults::addCommands()
{
    QList<PaletteRow> rows;
    for (int index = 0; index < paletteCommandCount && !m_query.isEmpty(); ++index) {
        const auto command = static_cast<PaletteCommand>(index);
        const TextPair names = commandTitle(command);
        const QString title = names.in(m_store.interfaceLanguage());
        const std::optional<SearchMatch> own = match(SearchKey::of(title), m_query);
        const QString other = m_store.isEnglish() ? names.chinese : names.english;
        if (own || match(SearchKey::of(other), m_query))
            rows.append(
                {.command = command, .icon = u"chevron-right"_s, .title = own ? found(title, *own) : FoundText{title}});
    }
    append(PaletteArea::Commands, rows, rows.size());
}

} // namespace tessaly
