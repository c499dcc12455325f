#pragma once

#include "model/AppLanguage.h"
#include "model/QuickAdd.h"
#include "store/DocumentSearch.h"
#include "store/RecordSearch.h"
#include "views/RowListModel.h"

#include <array>

namespace tessaly {

/// What the palette can do besides finding and adding; each has a name in both languages.
enum class PaletteCommand {
    ShowOverview,
    ShowSchedule,
    ShowReminders,
    ShowGoals,
    ShowDocuments,
    Undo,
    Redo,
    Versions,
    Shortcuts,
    Export,
    Import,
    Settings,
    Today,
    Week,
    Month,
    Plan,
};
[[nodiscard]] TextPair commandTitle(PaletteCommand command);
inline constexpr int paletteCommandCount = 16;

/// The groups of results, in the order of the sidebar.
enum class PaletteArea { Schedules, Reminders, Goals, Documents, Commands };
inline constexpr int paletteAreaCount = 5;

/// A text with the part that was found.
struct FoundText
{
    QString text = {};
    qsizetype start = 0;
    qsizetype length = 0;

    bool operator==(const FoundText &) const = default;
};

/// A row beneath the field.
struct PaletteRow
{
    enum class Kind { AddSchedule, AddReminder, Result, More, Nothing };

    Kind kind = Kind::Nothing;
    PaletteArea area = PaletteArea::Schedules;
    /// The record; null for other rows.
    QUuid id = {};
    /// The subgoal or task of the goal that was found; null for none.
    QUuid partId = {};
    PaletteCommand command = PaletteCommand::ShowOverview;
    /// The heading above the first row of an area.
    QString heading = {};
    /// Empty where the row has a mark in a colour.
    QString icon = {};
    QString colorKey = {};
    FoundText title = {};
    /// The text of a document, or the task of a goal, that has the words; may be empty.
    FoundText part = {};
    /// At the right end.
    QString detail = {};

    [[nodiscard]] QString key() const;
    bool operator==(const PaletteRow &) const = default;
};

/// Roles: kind, heading, icon, colorKey, title, titleStart, titleLength, part, partStart, partLength, detail.
[[nodiscard]] QList<RowListModel<PaletteRow>::Role> paletteRoles();

/// The rows that add what the phrase says: "Add schedule “lunch”", and when.
[[nodiscard]] QList<PaletteRow> addRows(const QuickEntry &entry, const PlannerStore &store);

/// What was found, area by area.
class PaletteResults
{
public:
    /// At most `most` rows of an area, then one that says how many more there are; `documents` are the hits in texts.
    PaletteResults(const PlannerStore &store, const RecordSearch &search, SearchQuery query);

    /// Shows so many rows of the area.
    void setMost(PaletteArea area, qsizetype most) { m_most[static_cast<size_t>(area)] = most; }
    /// The hits in the texts of documents.
    void setTexts(const QList<DocumentHit> &hits) { m_texts = hits; }

    [[nodiscard]] QList<PaletteRow> rows();
    /// How many there are, also those that rows() leaves out.
    [[nodiscard]] qsizetype count() const { return m_count; }

private:
    void addSchedules();
    void addReminders();
    void addGoals();
    void addDocuments();
    void addCommands();
    void append(PaletteArea area, const QList<PaletteRow> &rows, qsizetype count);
    [[nodiscard]] qsizetype most(PaletteArea area) const { return m_most[static_cast<size_t>(area)]; }
    [[nodiscard]] QString categoryName(const MarkdownDocument &document) const;

    const PlannerStore &m_store;
    const RecordSearch &m_search;
    SearchQuery m_query;
    std::array<qsizetype, paletteAreaCount> m_most = {};
    QList<DocumentHit> m_texts;
    QList<PaletteRow> m_rows;
    qsizetype m_count = 0;
};

} // namespace tessaly
