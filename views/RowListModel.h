#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QList>
#include <QSet>
#include <QVariant>

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace tessaly {

/// A list of value rows for QML. New contents are taken over by difference: a row that stays keeps its delegate, so
/// focus and scroll position survive. `Row` needs operator== and `key()`, which identifies the row across changes.
///
/// replaceRows() instead keeps the delegates at their places, whatever rows come, and keeps spare ones for later: a
/// turn of the page then makes no items. A delegate without a row shows the values of a default row and must hide
/// itself.
template <class Row>
class RowListModel final : public QAbstractListModel
{
public:
    struct Role
    {
        QByteArray name;
        QVariant (*read)(const Row &row);
    };

    explicit RowListModel(QList<Role> roles, QObject *parent = nullptr)
        : QAbstractListModel(parent), m_roles(std::move(roles))
    {
    }

    [[nodiscard]] const QList<Row> &rows() const { return m_rows; }

    void setRows(const QList<Row> &rows)
    {
        // Most changes leave the rows at both ends where they are.
        const auto isSame = [](const Row &left, const Row &right) { return left.key() == right.key(); };
        const auto head = std::mismatch(m_rows.cbegin(), m_rows.cend(), rows.cbegin(), rows.cend(), isSame);
        const auto tail = std::mismatch(m_rows.crbegin(), std::reverse_iterator(head.first), rows.crbegin(),
                                        std::reverse_iterator(head.second), isSame);
        const qsizetype begin = head.second - rows.cbegin();
        const qsizetype end = rows.size() - (tail.second - rows.crbegin());
        arrange(rows, begin, end);
        for (qsizetype index = 0; index < rows.size(); ++index)
            update(index, rows.at(index));
    }

    /// For rows that have nothing to do with the former ones.
    void replaceRows(const QList<Row> &rows)
    {
        const qsizetype former = m_rows.size() + m_spares;
        const qsizetype kept = std::min(former, rows.size() + mostSpares);
        if (kept < former) {
            beginRemoveRows({}, static_cast<int>(kept), static_cast<int>(former - 1));
            m_rows.resize(std::min(m_rows.size(), kept));
            m_spares = kept - m_rows.size();
            endRemoveRows();
        }
        const QList<Row> before = std::exchange(m_rows, rows.first(std::min(rows.size(), kept)));
        m_spares = kept - m_rows.size();
        reportDifferences(before, kept);
        if (kept < rows.size())
            insert(kept, rows.sliced(kept));
    }

    /// Spare delegates count.
    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size() + m_spares);
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        const int roleIndex = role - Qt::UserRole;
        if (!checkIndex(index, CheckIndexOption::IndexIsValid) || roleIndex < 0 || roleIndex >= m_roles.size())
            return {};
        return m_roles.at(roleIndex).read(rowAt(m_rows, index.row()));
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override
    {
        QHash<int, QByteArray> names;
        for (int index = 0; index < m_roles.size(); ++index)
            names.insert(Qt::UserRole + index, m_roles.at(index).name);
        return names;
    }

private:
    using Key = decltype(std::declval<Row>().key());

    static constexpr qsizetype mostSpares = 100;

    static const Row &rowAt(const QList<Row> &rows, qsizetype index)
    {
        static const Row none = {};
        return index < rows.size() ? rows.at(index) : none;
    }

    /// One report for each run of places at which the rows, spare ones included, are no longer what they were.
    void reportDifferences(const QList<Row> &before, qsizetype count)
    {
        qsizetype begin = 0;
        for (qsizetype index = 0; index <= count; ++index) {
            if (index < count && !(rowAt(before, index) == rowAt(m_rows, index)))
                continue;
            if (begin < index)
                emit dataChanged(this->index(static_cast<int>(begin)), this->index(static_cast<int>(index - 1)));
            begin = index + 1;
        }
    }

    static QSet<Key> keysOf(std::span<const Row> rows)
    {
        QSet<Key> keys;
        keys.reserve(static_cast<qsizetype>(rows.size()));
        for (const Row &row : rows)
            keys.insert(row.key());
        return keys;
    }

    /// Makes the rows from `begin` on those of `rows` from `begin` to `end`, by their keys; what follows these is the
    /// same in both already.
    void arrange(const QList<Row> &rows, qsizetype begin, qsizetype end)
    {
        const qsizetype following = rows.size() - end;
        removeMissing(keysOf({rows.cbegin() + begin, rows.cbegin() + end}), begin, m_rows.size() - following);
        QSet<Key> kept = keysOf({m_rows.cbegin() + begin, m_rows.cend() - following});
        qsizetype index = begin;
        while (index < end) {
            qsizetype next = index;
            while (next < end && !kept.contains(rows.at(next).key()))
                ++next;
            if (next > index) {
                insert(index, rows.sliced(index, next - index));
                index = next;
            } else {
                kept.remove(rows.at(index).key());
                place(index, rows.at(index).key());
                ++index;
            }
        }
        if (m_rows.size() > rows.size())
            removeFrom(end, m_rows.size() - rows.size());
    }

    void removeMissing(const QSet<Key> &keys, qsizetype begin, qsizetype end)
    {
        while (end > begin) {
            if (keys.contains(m_rows.at(end - 1).key())) {
                --end;
                continue;
            }
            qsizetype first = end - 1;
            while (first > begin && !keys.contains(m_rows.at(first - 1).key()))
                --first;
            removeFrom(first, end - first);
            end = first;
        }
    }

    void removeFrom(qsizetype first, qsizetype count)
    {
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(first + count - 1));
        m_rows.remove(first, count);
        endRemoveRows();
    }

    void insert(qsizetype position, const QList<Row> &rows)
    {
        beginInsertRows({}, static_cast<int>(position), static_cast<int>(position + rows.size() - 1));
        m_rows.insert(position, rows.size(), Row());
        std::ranges::copy(rows, m_rows.begin() + position);
        endInsertRows();
    }

    /// Brings the row with the key, which is somewhere at or after the position, to the position.
    void place(qsizetype position, const Key &key)
    {
        const int target = static_cast<int>(position);
        const auto found = std::find_if(m_rows.cbegin() + position, m_rows.cend(),
                                        [&key](const Row &row) { return row.key() == key; });
        const int source = static_cast<int>(found - m_rows.cbegin());
        if (source != target) {
            beginMoveRows({}, source, source, {}, target);
            m_rows.move(source, target);
            endMoveRows();
        }
    }

    void update(qsizetype position, const Row &row)
    {
        if (m_rows.at(position) == row)
            return;
        m_rows[position] = row;
        const QModelIndex changed = index(static_cast<int>(position));
        emit dataChanged(changed, changed);
    }

    QList<Role> m_roles;
    QList<Row> m_rows;
    qsizetype m_spares = 0;
};

} // namespace tessaly
