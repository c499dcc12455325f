#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QList>
#include <QSet>
#include <QVariant>

#include <algorithm>
#include <utility>

namespace tessaly {

/// A list of value rows for QML. New contents are taken over by difference: a row that stays keeps its delegate, so
/// focus and scroll position survive. `Row` needs operator== and `key()`, which identifies the row across changes.
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
        removeMissing(rows);
        QSet<Key> kept = keysOf(m_rows);
        qsizetype index = 0;
        while (index < rows.size()) {
            qsizetype end = index;
            while (end < rows.size() && !kept.contains(rows.at(end).key()))
                ++end;
            if (end > index) {
                insert(index, rows.sliced(index, end - index));
                index = end;
            } else {
                kept.remove(rows.at(index).key());
                place(index, rows.at(index));
                ++index;
            }
        }
        if (m_rows.size() > rows.size())
            removeFrom(rows.size(), m_rows.size() - rows.size());
    }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        const int roleIndex = role - Qt::UserRole;
        if (!checkIndex(index, CheckIndexOption::IndexIsValid) || roleIndex < 0 || roleIndex >= m_roles.size())
            return {};
        return m_roles.at(roleIndex).read(m_rows.at(index.row()));
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

    static QSet<Key> keysOf(const QList<Row> &rows)
    {
        QSet<Key> keys;
        keys.reserve(rows.size());
        for (const Row &row : rows)
            keys.insert(row.key());
        return keys;
    }

    void removeMissing(const QList<Row> &rows)
    {
        const QSet<Key> keys = keysOf(rows);
        qsizetype end = m_rows.size();
        while (end > 0) {
            if (keys.contains(m_rows.at(end - 1).key())) {
                --end;
                continue;
            }
            qsizetype begin = end - 1;
            while (begin > 0 && !keys.contains(m_rows.at(begin - 1).key()))
                --begin;
            removeFrom(begin, end - begin);
            end = begin;
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

    /// Brings the row, which is somewhere at or after the position, to the position.
    void place(qsizetype position, const Row &row)
    {
        const int target = static_cast<int>(position);
        const auto found = std::find_if(m_rows.cbegin() + position, m_rows.cend(),
                                        [&row](const Row &other) { return other.key() == row.key(); });
        const int source = static_cast<int>(found - m_rows.cbegin());
        if (source != target) {
            beginMoveRows({}, source, source, {}, target);
            m_rows.move(source, target);
            endMoveRows();
        }
        if (!(m_rows.at(position) == row)) {
            m_rows[position] = row;
            emit dataChanged(index(target), index(target));
        }
    }

    QList<Role> m_roles;
    QList<Row> m_rows;
};

} // namespace tessaly
