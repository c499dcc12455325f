#include "model/SavedDataEncoder.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

namespace tessaly {

namespace {

constexpr std::array<std::string_view, 3> beforeSection = {R"({"schedules":[)", R"(],"reminders":[)", R"(],"goals":[)"};
constexpr std::string_view afterSections = "]}";
/// A larger piece of new text is rare enough to give its memory back.
constexpr qsizetype keptScratch = 1 << 20;

/// Rows of the list before a change that it replaces by rows of the list after it, both starting at the same row.
struct Replacement
{
    qsizetype first;
    qsizetype removed;
    qsizetype inserted;
};

Replacement replacementOf(const RowsChange &change, qsizetype rowsBefore, qsizetype rowsAfter)
{
    switch (change.kind) {
    case RowsChange::Kind::Inserted:
        return {change.first, 0, change.count};
    case RowsChange::Kind::Removed:
        return {change.first, change.count, 0};
    case RowsChange::Kind::Updated:
        return {change.first, change.count, change.count};
    case RowsChange::Kind::Reset:
        break;
    }
    return {0, rowsBefore, rowsAfter};
}

bool isPossible(const Replacement &rows, qsizetype rowsBefore, qsizetype rowsAfter)
{
    return rows.first >= 0 && rows.removed >= 0 && rows.inserted >= 0 && rows.first + rows.removed <= rowsBefore &&
           rowsBefore - rows.removed + rows.inserted == rowsAfter;
}

} // namespace

bool SavedDataEncoder::encode(const SavedData &data)
{
    m_text.clear();
    m_text.raw(beforeSection[0]);
    encodeSection(data.schedules, extent(Section::Schedules));
    m_text.raw(beforeSection[1]);
    encodeSection(data.reminders, extent(Section::Reminders));
    m_text.raw(beforeSection[2]);
    encodeSection(data.goals, extent(Section::Goals));
    m_text.raw(afterSections);

    m_isCurrent = !m_text.hasFailed();
    if (m_isCurrent)
        m_lastSplice = {0, std::exchange(m_size, m_text.size()), m_text.size()};
    return m_isCurrent;
}

bool SavedDataEncoder::update(const SavedData &data, Section section, const RowsChange &change)
{
    bool isDone = false;
    if (m_isCurrent) {
        switch (section) {
        case Section::Schedules:
            isDone = replaceRows(data.schedules, section, change);
            break;
        case Section::Reminders:
            isDone = replaceRows(data.reminders, section, change);
            break;
        case Section::Goals:
            isDone = replaceRows(data.goals, section, change);
            break;
        }
    }
    return isDone || encode(data);
}

template <class Record>
void SavedDataEncoder::encodeSection(const QList<Record> &records, Extent &extent)
{
    extent.lengths.clear();
    extent.lengths.reserve(size_t(records.size()));
    const qsizetype start = m_text.size();
    for (const Record &record : records) {
        if (m_text.size() != start)
            m_text.raw(',');
        const qsizetype recordStart = m_text.size();
        codec::write(m_text, record);
        extent.lengths.push_back(m_text.size() - recordStart);
    }
    extent.length = m_text.size() - start;
}

/// False, with nothing changed, when everything has to be encoded again.
template <class Record>
bool SavedDataEncoder::replaceRows(const QList<Record> &records, Section section, const RowsChange &change)
{
    Extent &list = extent(section);
    const qsizetype rowsBefore = qsizetype(list.lengths.size());
    const Replacement rows = replacementOf(change, rowsBefore, records.size());
    if (!isPossible(rows, rowsBefore, records.size()))
        return false;
    const auto rowsOfAll = std::accumulate(m_extents.begin(), m_extents.end(), size_t(0),
                                           [](size_t sum, const Extent &each) { return sum + each.lengths.size(); });
    if (size_t(rows.inserted) > rowsOfAll / 2 && rows.inserted > 1)
        return false;

    // A comma stands behind each record but the last: the new text brings the comma after it, or, at the end of the
    // list, the one before it.
    const bool isAtEnd = rows.first + rows.removed == rowsBefore;
    const bool isCommaBefore = isAtEnd && rows.first > 0;
    m_scratch.clear();
    std::vector<qsizetype> lengths;
    lengths.reserve(size_t(rows.inserted));
    for (qsizetype row = rows.first; row < rows.first + rows.inserted; ++row) {
        if (isCommaBefore || (isAtEnd && row > rows.first))
            m_scratch.raw(',');
        const qsizetype recordStart = m_scratch.size();
        codec::write(m_scratch, records.at(row));
        lengths.push_back(m_scratch.size() - recordStart);
        if (!isAtEnd)
            m_scratch.raw(',');
    }
    if (m_scratch.hasFailed())
        return false;

    const auto firstLength = list.lengths.begin() + rows.first;
    const auto endLength = firstLength + rows.removed;
    const qsizetype firstOffset = std::accumulate(list.lengths.begin(), firstLength, rows.first);
    const qsizetype begin = firstOffset - (isCommaBefore ? 1 : 0);
    const qsizetype end = isAtEnd ? list.length : std::accumulate(firstLength, endLength, firstOffset + rows.removed);

    m_lastSplice = {sectionStart(section) + begin, end - begin, m_scratch.size()};
    m_text.splice(m_lastSplice.offset, m_lastSplice.removed, m_scratch.bytes());
    m_size = m_text.size();
    list.length += m_lastSplice.inserted - m_lastSplice.removed;

    const auto common = std::min(rows.removed, rows.inserted);
    std::copy_n(lengths.begin(), common, firstLength);
    if (rows.inserted > rows.removed)
        list.lengths.insert(firstLength + common, lengths.begin() + common, lengths.end());
    else
        list.lengths.erase(firstLength + common, endLength);
    m_scratch.releaseBeyond(keptScratch);
    return true;
}

qsizetype SavedDataEncoder::sectionStart(Section section) const
{
    qsizetype start = qsizetype(beforeSection[0].size());
    for (size_t i = 0; i < size_t(section); ++i)
        start += m_extents[i].length + qsizetype(beforeSection[i + 1].size());
    return start;
}

} // namespace tessaly
