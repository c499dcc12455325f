#include "store/LinkMessages.h"

namespace tessaly {

namespace {

Message lossMessage(qsizetype count)
{
    if (count == 1)
        return {{QStringLiteral("1 个有备注或任务的日程已不在其中，可从历史版本找回。"),
                 QStringLiteral("1 schedule with notes or tasks is no longer in it; Earlier versions has it.")},
                MessageKind::Notice};
    const QString number = QString::number(count);
    return {{QStringLiteral("%1 个有备注或任务的日程已不在其中，可从历史版本找回。").arg(number),
             QStringLiteral("%1 schedules with notes or tasks are no longer in it; Earlier versions has them.")
                 .arg(number)},
            MessageKind::Notice};
}

} // namespace

Message linkUpdatingMessage()
{
    return {{QStringLiteral("正在更新链接日历…"), QStringLiteral("Updating linked calendar…")}, MessageKind::Progress};
}

Message linkRefusedMessage()
{
    return {{QStringLiteral("请输入有效的 iCalendar 链接。"), QStringLiteral("Enter a valid iCalendar link.")},
            MessageKind::Failure};
}

Message linkUpdatedMessage(qsizetype count, qsizetype lost)
{
    const QString number = QString::number(count);
    const Message update{{QStringLiteral("链接日历已更新，共导入 %1 个日程。").arg(number),
                          QStringLiteral("Linked calendar updated: %1 events imported.").arg(number)}};
    return joined(update, lost > 0 ? lossMessage(lost) : Message());
}

} // namespace tessaly
