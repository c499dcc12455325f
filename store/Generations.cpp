#include "store/Generations.h"

#include "model/BackupPlan.h"
#include "platform/Backups.h"
#include "platform/Clock.h"
#include "store/PlannerPorts.h"
#include "store/PreferenceKeys.h"
#include "store/StoredValues.h"

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

Generations::Generations(const PlannerPorts &ports, StoredValues &values)
    : m_ports(ports), m_values(values), m_alarm(ports.clock.makeAlarm([this] { keepIfDue(); }))
{
    connect(&m_values, &StoredValues::written, this, &Generations::noteChange);
}

Generations::~Generations() = default;

void Generations::start(const QString &programVersion)
{
    m_isStarted = true;
    const QList<Generation> kept = list();
    const auto newest = std::ranges::find_if(kept, [](const Generation &one) { return !one.isRestorePoint(); });
    if (newest != kept.cend())
        m_lastHourly = newest->moment;
    noteVersion(programVersion);
    noteChange();
}

void Generations::noteVersion(const QString &programVersion)
{
    const std::optional<QString> former = m_ports.preferences.get<QString>(keys::programVersion);
    if (former == programVersion)
        return;
    const bool hasData = former || m_ports.preferences.value(keys::hasAskedPreferredName);
    if (hasData)
        keepBefore(GenerationReason::Update, programVersion);
    m_values.save(keys::programVersion, programVersion);
}

Instant Generations::nextHourly() const
{
    const Instant now = m_ports.clock.now();
    const Instant settled = now.plus(settlingSeconds);
    // A clock that was set back must not put it off.
    const bool hasLast = m_lastHourly && *m_lastHourly <= now;
    return hasLast ? std::max(settled, m_lastHourly->plus(hourSeconds)) : settled;
}

void Generations::noteChange()
{
    if (!m_isStarted || m_due)
        return;
    m_due = nextHourly();
    m_alarm->set(*m_due);
}

void Generations::keepIfDue()
{
    if (!m_due)
        return;
    // The clock may have been set.
    m_due = std::min(*m_due, nextHourly());
    if (m_ports.clock.now() < *m_due) {
        m_alarm->set(*m_due);
        return;
    }
    m_due.reset();
    m_lastHourly = m_ports.clock.now();
    keep(GenerationReason::Hourly, {});
}

void Generations::keepBefore(GenerationReason reason, const QString &detail)
{
    keep(reason, detail);
}

void Generations::keep(GenerationReason reason, const QString &detail)
{
    const Generation wanted{.moment = m_ports.clock.now(), .reason = reason, .detail = detail};
    m_ports.backups.keep(wanted, [this, wanted](const Result<Generation> &kept) {
        if (!kept) {
            if (wanted.isRestorePoint())
                emit failed(kept.error());
            return;
        }
        m_ports.backups.remove(outdatedGenerations(list(), m_ports.calendar));
        emit changed();
    });
}

QList<Generation> Generations::list() const
{
    return m_ports.backups.list();
}

void Generations::check(const std::function<void(const GenerationsReport &)> &completion) const
{
    const QList<Generation> generations = list();
    auto report = std::make_shared<GenerationsReport>();
    const auto finishOne = [report, completion, count = generations.size()] {
        // The database itself comes first.
        if (report->checked++ == count) {
            report->checked = count;
            completion(*report);
        }
    };
    m_ports.backups.checkPresent([report, finishOne](const Result<void> &checked) {
        if (!checked)
            report->present = checked.error();
        finishOne();
    });
    for (const Generation &generation : generations) {
        m_ports.backups.read(
            generation, [](const Preferences &) {},
            [report, finishOne, generation](const Result<void> &checked) {
                if (!checked)
                    report->damaged.append(generation);
                finishOne();
            });
    }
}

QList<Generation> Generations::restorePoints(qsizetype most) const
{
    QList<Generation> points = list();
    points.removeIf([](const Generation &generation) { return !generation.isRestorePoint(); });
    return points.first(std::min(most, points.size()));
}

TextPair reasonText(const Generation &generation)
{
    const QString &detail = generation.detail;
    const QString schedules = detail == u"1" ? u"schedule"_s : u"schedules"_s;
    switch (generation.reason) {
    case GenerationReason::Hourly:
        return {};
    case GenerationReason::Clear:
        return {u"清空内容之前"_s, u"Before clearing content"_s};
    case GenerationReason::LinkDeletion:
        return {u"删除链接日历之前"_s, u"Before deleting a linked calendar"_s};
    case GenerationReason::LinkUpdate:
        return {u"链接日历移除 %1 个有备注或任务的日程之前"_s.arg(detail),
                u"Before a link update that removed %1 %2 with notes or tasks"_s.arg(detail, schedules)};
    case GenerationReason::FirstSync:
        return {u"首次同步之前"_s, u"Before the first sync"_s};
    case GenerationReason::Sync:
        return {u"同步移除 %1 个日程之前"_s.arg(detail), u"Before a sync that removed %1 %2"_s.arg(detail, schedules)};
    case GenerationReason::Restore:
        return {u"恢复之前"_s, u"Before restoring"_s};
    case GenerationReason::Import:
        return {u"导入之前"_s, u"Before importing"_s};
    case GenerationReason::Update:
        return {u"更新到版本 %1 之前"_s.arg(detail), u"Before version %1"_s.arg(detail)};
    }
    Q_UNREACHABLE();
}

} // namespace tessaly
