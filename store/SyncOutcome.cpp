#include "store/SyncOutcome.h"

#include <algorithm>

namespace tessaly {

QStringList storedOutcome(const SyncOutcome &outcome)
{
    QStringList values{QString::number(outcome.at.seconds, 'f', 0), QString::number(outcome.imported),
                       QString::number(outcome.updated)};
    if (outcome.exported)
        values.append(QString::number(*outcome.exported));
    return values;
}

std::optional<SyncOutcome> outcomeFrom(const QStringList &values)
{
    if (values.size() < 3)
        return std::nullopt;
    SyncOutcome outcome{{values.at(0).toDouble()}, values.at(1).toLongLong(), values.at(2).toLongLong()};
    if (values.size() > 3)
        outcome.exported = values.at(3).toLongLong();
    return outcome;
}

bool isLeftOut(const QList<UnreadCalendar> &unread, const QString &identifier)
{
    return std::ranges::any_of(unread, [&](const UnreadCalendar &calendar) {
        return calendar.identifier == identifier && calendar.reason != UnreadCalendar::Reason::DamagedFiles;
    });
}

TextPair outcomeText(const SyncOutcome &outcome, const TextPair &serviceName, const QList<UnreadCalendar> &unread)
{
    const QString added = QString::number(outcome.imported);
    const QString updated = QString::number(outcome.updated);
    TextPair text;
    if (outcome.exported) {
        const QString exported = QString::number(*outcome.exported);
        text = {QStringLiteral("同步完成：导入 %1 个、更新 %2 个%3事件，导出 %4 个 Tessaly 日程。")
                    .arg(added, updated, serviceName.chinese, exported),
                QStringLiteral("Sync complete: imported %1, updated %2, and exported %3 Tessaly schedules.")
                    .arg(added, updated, exported)};
    } else {
        text = {QStringLiteral("导入完成：新增%1 个、更新 %2 个%3事件。").arg(added, updated, serviceName.chinese),
                QStringLiteral("Import complete: added %1 and updated %2 %3 events.")
                    .arg(added, updated, serviceName.english)};
    }
    QStringList files;
    for (const UnreadCalendar &calendar : unread)
        files += calendar.files;
    if (!files.isEmpty()) {
        const TextPair names{files.join(u'、'), files.join(u", ")};
        const TextPair note{QStringLiteral("无法读取：%1。").arg(names.chinese),
                            QStringLiteral(" Not readable: %1.").arg(names.english)};
        text = {text.chinese + note.chinese, text.english + note.english};
    }
    return text;
}

TextPair pausedText(const QList<HeldRemoval> &held)
{
    qsizetype count = 0;
    for (const HeldRemoval &each : held)
        count += each.schedules.size();
    return {QStringLiteral("同步已暂停：等待你决定是否移除 %1 个日程。").arg(count),
            QStringLiteral("Sync is paused: %1 removals wait for your decision.").arg(count)};
}

} // namespace tessaly
