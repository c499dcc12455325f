#include "model/LineDifference.h"

#include <QStringList>

#include <algorithm>
#include <optional>

namespace tessaly {

namespace {

using Kind = ComparedLine::Kind;

/// The shortest way from one list to the other (E. Myers, "An O(ND) Difference Algorithm and Its Variations", 1986).
class ShortestWay
{
public:
    ShortestWay(const QStringList &before, const QStringList &after, qsizetype mostSteps)
        : m_before(before), m_after(after), m_mostSteps(std::min(mostSteps, before.size() + after.size())),
          m_ends(2 * m_mostSteps + 3, 0)
    {
    }

    /// Nothing when it has more steps than allowed.
    [[nodiscard]] std::optional<QList<ComparedLine>> find()
    {
        for (qsizetype steps = 0; steps <= m_mostSteps; ++steps) {
            m_history.append(m_ends);
            for (qsizetype diagonal = -steps; diagonal <= steps; diagonal += 2) {
                if (extend(steps, diagonal))
                    return wayBack(steps);
            }
        }
        return std::nullopt;
    }

private:
    /// How many lines of the first text the furthest way on the diagonal has passed.
    [[nodiscard]] qsizetype &end(qsizetype diagonal) { return m_ends[diagonal + m_mostSteps + 1]; }

    [[nodiscard]] bool comesFromAbove(const QList<qsizetype> &ends, qsizetype steps, qsizetype diagonal) const
    {
        const qsizetype middle = diagonal + m_mostSteps + 1;
        return diagonal == -steps || (diagonal != steps && ends.at(middle - 1) < ends.at(middle + 1));
    }

    /// Whether the way now reaches both ends.
    [[nodiscard]] bool extend(qsizetype steps, qsizetype diagonal)
    {
        qsizetype row = comesFromAbove(m_ends, steps, diagonal) ? end(diagonal + 1) : end(diagonal - 1) + 1;
        while (row < m_before.size() && row - diagonal < m_after.size() &&
               m_before.at(row) == m_after.at(row - diagonal))
            ++row;
        end(diagonal) = row;
        return row >= m_before.size() && row - diagonal >= m_after.size();
    }

    [[nodiscard]] QList<ComparedLine> wayBack(qsizetype steps) const
    {
        QList<ComparedLine> lines;
        qsizetype row = m_before.size();
        qsizetype column = m_after.size();
        for (; steps > 0; --steps) {
            const QList<qsizetype> &ends = m_history.at(steps);
            const qsizetype diagonal = row - column;
            const bool isAdded = comesFromAbove(ends, steps, diagonal);
            const qsizetype formerDiagonal = isAdded ? diagonal + 1 : diagonal - 1;
            const qsizetype formerRow = ends.at(formerDiagonal + m_mostSteps + 1);
            const qsizetype formerColumn = formerRow - formerDiagonal;
            while (row > formerRow + (isAdded ? 0 : 1) && column > formerColumn + (isAdded ? 1 : 0)) {
                lines.append({Kind::Same, m_before.at(--row)});
                --column;
            }
            lines.append(isAdded ? ComparedLine{Kind::Added, m_after.at(--column)}
                                 : ComparedLine{Kind::Removed, m_before.at(--row)});
        }
        while (row > 0)
            lines.append({Kind::Same, m_before.at(--row)});
        std::reverse(lines.begin(), lines.end());
        return lines;
    }

    const QStringList &m_before;
    const QStringList &m_after;
    qsizetype m_mostSteps;
    QList<qsizetype> m_ends;
    /// As they were before each number of steps.
    QList<QList<qsizetype>> m_history;
};

void append(QList<ComparedLine> &lines, Kind kind, const QStringList &texts)
{
    for (const QString &text : texts)
        lines.append({kind, text});
}

/// Removed lines before added ones, where nothing stays between them.
void order(QList<ComparedLine> &lines)
{
    for (auto begin = lines.begin(); begin != lines.end();) {
        begin = std::find_if(begin, lines.end(), [](const ComparedLine &line) { return line.kind != Kind::Same; });
        const auto end =
            std::find_if(begin, lines.end(), [](const ComparedLine &line) { return line.kind == Kind::Same; });
        std::stable_partition(begin, end, [](const ComparedLine &line) { return line.kind == Kind::Removed; });
        begin = end;
    }
}

} // namespace

QList<ComparedLine> compareLines(const QString &before, const QString &after, qsizetype mostSteps)
{
    const QStringList beforeLines = before.split(u'\n');
    const QStringList afterLines = after.split(u'\n');
    const qsizetype shorter = std::min(beforeLines.size(), afterLines.size());
    qsizetype head = 0;
    while (head < shorter && beforeLines.at(head) == afterLines.at(head))
        ++head;
    qsizetype tail = 0;
    while (tail < shorter - head &&
           beforeLines.at(beforeLines.size() - 1 - tail) == afterLines.at(afterLines.size() - 1 - tail))
        ++tail;
    const QStringList beforeMiddle = beforeLines.sliced(head, beforeLines.size() - head - tail);
    const QStringList afterMiddle = afterLines.sliced(head, afterLines.size() - head - tail);

    QList<ComparedLine> lines;
    append(lines, Kind::Same, beforeLines.first(head));
    if (const auto middle = ShortestWay(beforeMiddle, afterMiddle, mostSteps).find()) {
        lines.append(*middle);
    } else {
        append(lines, Kind::Removed, beforeMiddle);
        append(lines, Kind::Added, afterMiddle);
    }
    append(lines, Kind::Same, beforeLines.last(tail));
    order(lines);
    return lines;
}

} // namespace tessaly
