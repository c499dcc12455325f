#include "bench/QJsonEncoding.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tessaly::bench {

namespace {

template <class Value>
void put(QJsonObject &object, QLatin1String key, const std::optional<Value> &value)
{
    if (value)
        object.insert(key, QJsonValue(*value));
}

void put(QJsonObject &object, QLatin1String key, const std::optional<Instant> &value)
{
    if (value)
        object.insert(key, value->seconds);
}

QString idText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

QJsonObject toQJson(const ScheduleItem &item)
{
    QJsonObject object{{QStringLiteral("id"), idText(item.id)},
                       {QStringLiteral("title"), item.title},
                       {QStringLiteral("date"), item.date.seconds},
                       {QStringLiteral("notes"), item.notes},
                       {QStringLiteral("isTaskComplete"), item.isTaskComplete}};
    put(object, QLatin1String("endDate"), item.endDate);
    put(object, QLatin1String("taskTitle"), item.taskTitle);
    if (item.tasks) {
        QJsonArray tasks;
        for (const ScheduleTask &task : *item.tasks)
            tasks.append(QJsonObject{{QStringLiteral("id"), idText(task.id)},
                                     {QStringLiteral("title"), task.title},
                                     {QStringLiteral("isComplete"), task.isComplete}});
        object.insert(QLatin1String("tasks"), tasks);
    }
    put(object, QLatin1String("tag"), item.tag);
    put(object, QLatin1String("colorName"), item.colorName);
    put(object, QLatin1String("customColorHex"), item.customColorHex);
    put(object, QLatin1String("calendarExportRequested"), item.calendarExportRequested);
    put(object, QLatin1String("calendarEventIdentifier"), item.calendarEventIdentifier);
    put(object, QLatin1String("calendarIdentifier"), item.calendarIdentifier);
    put(object, QLatin1String("calendarColorHex"), item.calendarColorHex);
    return object;
}

} // namespace

QByteArray encodeWithQJson(const QList<ScheduleItem> &schedules)
{
    QJsonArray array;
    for (const ScheduleItem &item : schedules)
        array.append(toQJson(item));
    return QJsonDocument(QJsonObject{{QStringLiteral("schedules"), array},
                                     {QStringLiteral("reminders"), QJsonArray()},
                                     {QStringLiteral("goals"), QJsonArray()}})
        .toJson(QJsonDocument::Compact);
}

} // namespace tessaly::bench
