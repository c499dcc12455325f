#include "views/versions/VersionsModel.h"

#include <QPointer>

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

VersionsModel::VersionsModel(QObject *parent) : QObject(parent), m_versions(versionRoles()), m_list(differenceRoles())
{
}

void VersionsModel::setStore(PlannerStore *store)
{
    if (m_store || !store)
        return;
    m_store = store;
    connect(&store->generations(), &Generations::changed, this, &VersionsModel::listVersions);
    connect(store, &PlannerStore::interfaceLanguageChanged, this, [this] {
        listVersions();
        refreshRows();
    });
    emit storeChanged();
}

const Generation *VersionsModel::shown() const
{
    return m_current >= 0 && m_current < m_versions.rowCount() ? &m_versions.rows().at(m_current).generation : nullptr;
}

void VersionsModel::begin(const QString &fileName)
{
    m_current = -1;
    listVersions();
    const auto found = std::ranges::find(m_versions.rows(), fileName, &VersionRow::key);
    m_current = -1;
    setCurrent(found == m_versions.rows().cend() ? 0 : static_cast<int>(found - m_versions.rows().cbegin()));
}

void VersionsModel::listVersions()
{
    const QString former = shown() ? generationFileName(*shown()) : QString();
    m_versions.setRows(versionRows(m_store->generations().list(), *m_store));
    const auto found = std::ranges::find(m_versions.rows(), former, &VersionRow::key);
    m_current = found == m_versions.rows().cend() ? -1 : static_cast<int>(found - m_versions.rows().cbegin());
    emit changed();
}

void VersionsModel::setCurrent(int row)
{
    if (row == m_current)
        return;
    m_current = row < m_versions.rowCount() ? row : -1;
    m_outcome.clear();
    m_choice = {};
    compare();
}

void VersionsModel::compare()
{
    m_change.reset();
    m_hasFailed = false;
    m_differences.clear();
    const int comparison = ++m_comparison;
    if (const Generation *generation = shown()) {
        m_store->compareWith(*generation, [self = QPointer(this), comparison](const Result<StateChange> &change) {
            if (self && comparison == self->m_comparison)
                self->setChange(change);
        });
    }
    if (!m_change)
        refreshRows();
}

void VersionsModel::setChange(const Result<StateChange> &change)
{
    m_hasFailed = !change.hasValue();
    m_change = change ? std::optional(change.value()) : std::nullopt;
    m_differences = m_change ? differenceRows(*m_change) : QList<DifferenceRow>();
    m_choice = firstChoice(m_differences);
    refreshRows();
}

void VersionsModel::refreshRows()
{
    m_list.setRows(m_change ? differenceListRows(m_differences, m_choice, *m_store) : QList<DifferenceListRow>());
    emit changed();
}

QString VersionsModel::heading() const
{
    if (!shown())
        return m_store ? m_store->text(u"还没有历史版本。"_s, u"No earlier versions yet."_s) : QString();
    return shown()->isRestorePoint() ? reasonText(*shown()).in(m_store->interfaceLanguage())
                                     : m_store->dateText(shown()->moment, false);
}

QString VersionsModel::moment() const
{
    return shown() && shown()->isRestorePoint() ? m_store->dateText(shown()->moment, false) : QString();
}

QString VersionsModel::summary() const
{
    if (m_hasFailed)
        return m_store->text(u"这个历史版本已损坏，无法恢复。请选择另一个。"_s,
                             u"This version is damaged and cannot be restored. Choose another one."_s);
    if (!m_change)
        return {};
    const auto count = [this](Restoration restoration) {
        return std::ranges::count(m_differences, restoration, &DifferenceRow::restoration);
    };
    return m_store
        ->text(u"全部恢复会找回 %1 项、更改 %2 项、移除 %3 项。"_s,
               u"Restoring everything would bring back %1, change %2 and remove %3."_s)
        .arg(count(Restoration::BringBack))
        .arg(count(Restoration::Change))
        .arg(count(Restoration::Remove));
}

void VersionsModel::setChecked(int row, bool isChecked)
{
    const DifferenceListRow &chosen = m_list.rows().at(row);
    for (const DifferenceRow &difference : std::as_const(m_differences)) {
        const bool isMeant = chosen.kind == DifferenceListRow::Kind::Area ? difference.area == chosen.area
                                                                          : difference.key == chosen.recordKey;
        if (isMeant && isChecked)
            m_choice.checked.insert(difference.key);
        else if (isMeant)
            m_choice.checked.remove(difference.key);
    }
    refreshRows();
}

void VersionsModel::toggleOpen(int row)
{
    const DifferenceListRow &chosen = m_list.rows().at(row);
    const StateArea area = chosen.area;
    if (chosen.kind == DifferenceListRow::Kind::More)
        m_choice.unfolded.insert(area);
    else if (!m_choice.open.remove(area))
        m_choice.open.insert(area);
    refreshRows();
}

void VersionsModel::restoreSelected()
{
    restore(m_choice.checked);
}

void VersionsModel::restoreAll()
{
    QSet<QString> keys;
    for (const DifferenceRow &difference : std::as_const(m_differences))
        keys.insert(difference.key);
    restore(keys);
}

void VersionsModel::restore(const QSet<QString> &keys)
{
    if (!m_change || keys.isEmpty())
        return;
    const StateChange part = chosenPart(*m_change, keys);
    const qsizetype count = m_store->restore(part);
    compare();
    m_outcome = count == 1 ? m_store->text(u"已恢复 1 项。"_s, u"Restored 1 item."_s)
                           : m_store->text(u"已恢复 %1 项。"_s, u"Restored %1 items."_s).arg(count);
    emit changed();
}

} // namespace tessaly
