#include "views/documents/DocumentVersionsModel.h"

#include <QHash>

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

/// So many equal lines are shown around those that differ.
constexpr qsizetype context = 3;

/// Each line, except that a stretch of equal ones away from those that differ becomes one row.
QList<ComparedLineRow> foldedRows(const QList<ComparedLine> &lines, const PlannerStore &store)
{
    QList<ComparedLineRow> rows;
    const auto append = [&rows](ComparedLine::Kind kind, const QString &text, bool isFolded = false) {
        rows.append({static_cast<int>(rows.size()), kind, text, isFolded});
    };
    for (qsizetype begin = 0; begin < lines.size();) {
        if (lines.at(begin).kind != ComparedLine::Kind::Same) {
            append(lines.at(begin).kind, lines.at(begin).text);
            ++begin;
            continue;
        }
        const auto next = std::find_if(lines.cbegin() + begin, lines.cend(),
                                       [](const ComparedLine &line) { return line.kind != ComparedLine::Kind::Same; });
        const qsizetype end = next - lines.cbegin();
        const qsizetype foldBegin = begin == 0 ? begin : begin + context;
        const qsizetype foldEnd = end == lines.size() ? end : end - context;
        const bool isFolded = foldEnd > foldBegin + 1;
        for (qsizetype index = begin; index < end; ++index) {
            if (!isFolded || index < foldBegin || index >= foldEnd) {
                append(ComparedLine::Kind::Same, lines.at(index).text);
            } else if (index == foldBegin) {
                append(ComparedLine::Kind::Same,
                       store.text(u"%1 行相同"_s, u"%1 equal lines"_s).arg(foldEnd - foldBegin), true);
            }
        }
        begin = end;
    }
    return rows;
}

} // namespace

DocumentVersionsModel::DocumentVersionsModel(QObject *parent)
    : QObject(parent), m_versions({{"title", [](const DocumentVersionRow &row) -> QVariant { return row.title; }}}),
      m_lines({{"text", [](const ComparedLineRow &row) -> QVariant { return row.text; }},
               {"kind", [](const ComparedLineRow &row) -> QVariant { return static_cast<int>(row.kind); }},
               {"isFolded", [](const ComparedLineRow &row) -> QVariant { return row.isFolded; }}})
{
}

void DocumentVersionsModel::begin(const QString &documentId, const QString &presentText)
{
    m_documentID = QUuid::fromString(documentId);
    m_presentText = presentText;
    QList<DocumentVersionRow> rows;
    QHash<QString, int> inMinute;
    for (const Instant moment : m_store->documentLibrary().versions().list(m_documentID)) {
        rows.append({moment, m_store->momentText(moment)});
        ++inMinute[rows.constLast().title];
    }
    for (DocumentVersionRow &row : rows) {
        if (inMinute.value(row.title) > 1)
            row.title += m_store->calendar().dateTime(row.moment).toString(u":ss");
    }
    m_versions.setRows(rows);
    m_current = rows.isEmpty() ? -1 : 0;
    compare();
}

void DocumentVersionsModel::setCurrent(int row)
{
    if (row == m_current || row < 0 || row >= m_versions.rowCount())
        return;
    m_current = row;
    compare();
}

void DocumentVersionsModel::compare()
{
    m_added = 0;
    m_removed = 0;
    m_text.clear();
    m_hasFailed = false;
    QList<ComparedLine> lines;
    if (m_current >= 0) {
        const Instant moment = m_versions.rows().at(m_current).moment;
        const std::optional<QString> text = m_store->documentLibrary().versions().text(m_documentID, moment);
        m_hasFailed = !text;
        if (text) {
            m_text = *text;
            lines = compareLines(m_presentText, *text);
            m_added = std::ranges::count(lines, ComparedLine::Kind::Added, &ComparedLine::kind);
            m_removed = std::ranges::count(lines, ComparedLine::Kind::Removed, &ComparedLine::kind);
        }
    }
    m_lines.setRows(foldedRows(lines, *m_store));
    emit changed();
}

QString DocumentVersionsModel::summary() const
{
    if (!m_store)
        return {};
    if (m_current < 0)
        return m_store->text(
            u"这篇文档还没有历史版本。保存修改后，之前的文字会保留在这里。"_s,
            u"This document has no earlier versions yet. When you save a change, the text before it is "
            "kept here."_s);
    if (m_hasFailed)
        return m_store->text(u"这个历史版本已损坏，无法恢复。请选择另一个。"_s,
                             u"This version is damaged and cannot be restored. Choose another one."_s);
    if (!canRestore())
        return m_store->text(u"与现在的文字没有差别。"_s, u"No difference from the present text."_s);
    return m_store->text(u"恢复会加入 %1 行，去掉 %2 行。"_s, u"Lines that restoring would add: %1, remove: %2."_s)
        .arg(m_added)
        .arg(m_removed);
}

} // namespace tessaly
