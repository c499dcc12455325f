#include "views/versions/DifferenceRows.h"

#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

#include <algorithm>
#include <iterator>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype rowsShown = 3;

struct Counts
{
    qsizetype back = 0;
    qsizetype changed = 0;
    qsizetype removed = 0;
};

TextPair areaTitle(StateArea area)
{
    switch (area) {
    case StateArea::Schedules:
        return {u"日程"_s, u"Schedules"_s};
    case StateArea::ToDos:
        return {u"待办"_s, u"To-dos"_s};
    case StateArea::Goals:
        return {u"目标"_s, u"Goals"_s};
    case StateArea::Links:
        return {u"链接日历"_s, u"Linked calendars"_s};
    case StateArea::Documents:
        return {u"文档"_s, u"Documents"_s};
    case StateArea::Settings:
        return {u"设置"_s, u"Settings"_s};
    }
    Q_UNREACHABLE();
}

TextPair settingTitle(const QString &key)
{
    static const QHash<QString, TextPair> titles{
        {keys::preferredName, {u"称呼"_s, u"Name"_s}},
        {keys::interfaceLanguage, {u"语言"_s, u"Language"_s}},
        {keys::appearanceMode, {u"外观"_s, u"Appearance"_s}},
        {keys::displayStartHour, {u"显示的开始时间"_s, u"First hour shown"_s}},
        {keys::displayEndHour, {u"显示的结束时间"_s, u"Last hour shown"_s}},
        {keys::automaticCalendarSync, {u"自动同步"_s, u"Automatic sync"_s}},
        {keys::selectedCalendarIDs, {u"同步的日历"_s, u"Synced calendars"_s}},
        {keys::visibleCalendarIDs, {u"显示的日历"_s, u"Shown calendars"_s}},
        {keys::leadMinutes, {u"日程提醒"_s, u"Reminders of schedules"_s}},
    };
    return titles.value(key, {key, key});
}

TextPair partText(DifferingPart part)
{
    switch (part) {
    case DifferingPart::Nothing:
        return {};
    case DifferingPart::Title:
        return {u"另一个标题"_s, u"another title"_s};
    case DifferingPart::Time:
        return {u"另一个时间"_s, u"another time"_s};
    case DifferingPart::DueDate:
        return {u"另一个截止时间"_s, u"another due date"_s};
    case DifferingPart::Completion:
        return {u"另一个完成状态"_s, u"other progress"_s};
    case DifferingPart::Notes:
        return {u"其他备注"_s, u"other notes"_s};
    case DifferingPart::Tasks:
        return {u"其他任务"_s, u"other tasks"_s};
    case DifferingPart::Category:
        return {u"另一个分类"_s, u"another category"_s};
    case DifferingPart::Color:
        return {u"另一种颜色"_s, u"another color"_s};
    case DifferingPart::Address:
        return {u"另一个地址"_s, u"another address"_s};
    case DifferingPart::Value:
        return {u"另一个值"_s, u"another value"_s};
    }
    Q_UNREACHABLE();
}

QString detail(const DifferenceRow &row, const PlannerStore &store)
{
    if (row.restoration == Restoration::Remove)
        return store.text(u"之后添加"_s, u"added since then"_s);
    if (row.restoration == Restoration::Change)
        return partText(row.part).in(store.interfaceLanguage());
    if (!row.date)
        return row.area == StateArea::ToDos ? store.text(u"无截止时间"_s, u"no due date"_s) : QString();
    if (row.area == StateArea::Goals || row.area == StateArea::Documents)
        return store.dateText(*row.date, true);
    const QString moment = store.momentText(*row.date);
    return row.area == StateArea::ToDos ? store.text(u"截止 %1"_s, u"due %1"_s).arg(moment) : moment;
}

QString countText(const Counts &counts, const PlannerStore &store)
{
    QStringList parts;
    if (counts.back > 0)
        parts.append(store.text(u"找回 %1"_s, u"%1 back"_s).arg(counts.back));
    if (counts.changed > 0)
        parts.append(store.text(u"更改 %1"_s, u"%1 changed"_s).arg(counts.changed));
    if (counts.removed > 0)
        parts.append(store.text(u"移除 %1"_s, u"%1 removed"_s).arg(counts.removed));
    return parts.isEmpty() ? store.text(u"没有差别"_s, u"no difference"_s) : parts.join(u" · ");
}

DifferenceListRow areaRow(StateArea area, const QList<DifferenceRow> &rows, const DifferenceChoice &choice,
                          const PlannerStore &store)
{
    Counts counts;
    qsizetype checked = 0;
    for (const DifferenceRow &row : rows) {
        ++(row.restoration == Restoration::BringBack ? counts.back
           : row.restoration == Restoration::Change  ? counts.changed
                                                     : counts.removed);
        checked += choice.checked.contains(row.key) ? 1 : 0;
    }
    return {.kind = DifferenceListRow::Kind::Area,
            .area = area,
            .title = areaTitle(area).in(store.interfaceLanguage()),
            .detail = countText(counts, store),
            .isChecked = checked > 0 && checked == rows.size(),
            .isPartial = checked > 0 && checked < rows.size(),
            .isOpen = choice.open.contains(area) && !rows.isEmpty(),
            .isVoid = rows.isEmpty()};
}

void appendArea(QList<DifferenceListRow> &list, StateArea area, const QList<DifferenceRow> &rows,
                const DifferenceChoice &choice, const PlannerStore &store)
{
    list.append(areaRow(area, rows, choice, store));
    if (!list.constLast().isOpen)
        return;
    // A row that says that there is one more would take the place of that one.
    const bool isWhole = choice.unfolded.contains(area) || rows.size() <= rowsShown + 1;
    for (const DifferenceRow &row : isWhole ? rows : rows.first(rowsShown)) {
        const bool isSetting = area == StateArea::Settings;
        list.append({.kind = DifferenceListRow::Kind::Record,
                     .area = area,
                     .recordKey = row.key,
                     .title = isSetting ? settingTitle(row.key).in(store.interfaceLanguage()) : row.title,
                     .detail = detail(row, store),
                     .restoration = row.restoration,
                     .isChecked = choice.checked.contains(row.key)});
    }
    if (!isWhole)
        list.append({.kind = DifferenceListRow::Kind::More,
                     .area = area,
                     .title = store.text(u"还有 %1 项"_s, u"%1 more"_s).arg(rows.size() - rowsShown)});
}

} // namespace

DifferenceChoice firstChoice(const QList<DifferenceRow> &differences)
{
    DifferenceChoice choice;
    for (const DifferenceRow &row : differences) {
        if (row.restoration != Restoration::BringBack)
            continue;
        choice.checked.insert(row.key);
        choice.open.insert(row.area);
    }
    return choice;
}

QList<DifferenceListRow> differenceListRows(const QList<DifferenceRow> &differences, const DifferenceChoice &choice,
                                            const PlannerStore &store)
{
    QList<DifferenceListRow> list;
    for (const StateArea area : {StateArea::Schedules, StateArea::ToDos, StateArea::Goals, StateArea::Links,
                                 StateArea::Documents, StateArea::Settings}) {
        QList<DifferenceRow> rows;
        std::ranges::copy_if(differences, std::back_inserter(rows),
                             [area](const DifferenceRow &row) { return row.area == area; });
        const bool isOptional = area == StateArea::Links || area == StateArea::Settings;
        if (!rows.isEmpty() || !isOptional)
            appendArea(list, area, rows, choice, store);
    }
    return list;
}

QList<RowListModel<DifferenceListRow>::Role> differenceRoles()
{
    using Row = DifferenceListRow;
    return {
        {"kind", [](const Row &row) -> QVariant { return static_cast<int>(row.kind); }},
        {"title", [](const Row &row) -> QVariant { return row.title; }},
        {"detail", [](const Row &row) -> QVariant { return row.detail; }},
        {"restoration", [](const Row &row) -> QVariant { return static_cast<int>(row.restoration); }},
        {"isChecked", [](const Row &row) -> QVariant { return row.isChecked; }},
        {"isPartial", [](const Row &row) -> QVariant { return row.isPartial; }},
        {"isOpen", [](const Row &row) -> QVariant { return row.isOpen; }},
        {"isVoid", [](const Row &row) -> QVariant { return row.isVoid; }},
    };
}

} // namespace tessaly
