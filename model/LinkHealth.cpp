#include "model/LinkHealth.h"

#include "model/Uuid.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <utility>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

const std::array<std::pair<SkipReason, QString>, 6> reasonNames = {{
    {SkipReason::NoStart, u"noStart"_s},
    {SkipReason::NoEnd, u"noEnd"_s},
    {SkipReason::StartUnreadable, u"startUnreadable"_s},
    {SkipReason::EndUnreadable, u"endUnreadable"_s},
    {SkipReason::RepetitionUnreadable, u"repetitionUnreadable"_s},
    {SkipReason::TooLarge, u"tooLarge"_s},
}};

QString nameOf(SkipReason reason)
{
    return std::ranges::find(reasonNames, reason, &std::pair<SkipReason, QString>::first)->second;
}

/// Reasons of a later version count as the first.
SkipReason reasonNamed(const QString &name)
{
    const auto found = std::ranges::find(reasonNames, name, &std::pair<SkipReason, QString>::second);
    return found == reasonNames.end() ? SkipReason::NoStart : found->first;
}

QJsonObject encoded(const SkippedEvent &event)
{
    QJsonObject object{{u"title"_s, event.title},
                       {u"reason"_s, nameOf(event.reason)},
                       {u"value"_s, event.value},
                       {u"line"_s, event.line}};
    if (event.day)
        object.insert(u"day"_s, event.day->toString(Qt::ISODate));
    return object;
}

SkippedEvent skippedEvent(const QJsonValue &json)
{
    const QDate day = QDate::fromString(json["day"_L1].toString(), Qt::ISODate);
    return {.title = json["title"_L1].toString(),
            .day = day.isValid() ? std::optional(day) : std::nullopt,
            .reason = reasonNamed(json["reason"_L1].toString()),
            .value = json["value"_L1].toString(),
            .line = json["line"_L1].toInteger()};
}

QJsonObject encoded(const LinkHealth &link)
{
    QJsonArray skipped;
    for (const SkippedEvent &event : link.skipped)
        skipped.append(encoded(event));
    QJsonObject object{{u"id"_s, uuidText(link.feedID)},
                       {u"events"_s, link.eventCount},
                       {u"repeating"_s, link.repeatingCount},
                       {u"addedByRepetitions"_s, link.addedByRepetitions},
                       {u"skippedCount"_s, link.skippedCount},
                       {u"skipped"_s, skipped},
                       {u"calendarName"_s, link.calendarName},
                       {u"entityTag"_s, QString::fromLatin1(link.version.entityTag)},
                       {u"lastModified"_s, QString::fromLatin1(link.version.lastModified)},
                       {u"basis"_s, link.basis}};
    if (link.refreshSeconds)
        object.insert(u"refreshSeconds"_s, *link.refreshSeconds);
    if (link.failingSince) {
        object.insert(u"failingSince"_s, link.failingSince->seconds);
        object.insert(u"failureChinese"_s, link.failure.chinese);
        object.insert(u"failureEnglish"_s, link.failure.english);
    }
    return object;
}

LinkHealth linkHealth(const QJsonValue &json)
{
    LinkHealth link{
        .feedID = QUuid(json["id"_L1].toString()),
        .eventCount = json["events"_L1].toInteger(),
        .repeatingCount = json["repeating"_L1].toInteger(),
        .addedByRepetitions = json["addedByRepetitions"_L1].toInteger(),
        .skippedCount = json["skippedCount"_L1].toInteger(),
        .calendarName = json["calendarName"_L1].toString(),
        .version = {json["entityTag"_L1].toString().toLatin1(), json["lastModified"_L1].toString().toLatin1()},
        .basis = json["basis"_L1].toString()};
    const QJsonArray skipped = json["skipped"_L1].toArray();
    for (const QJsonValue &event : skipped)
        link.skipped.append(skippedEvent(event));
    if (const QJsonValue refresh = json["refreshSeconds"_L1]; refresh.isDouble())
        link.refreshSeconds = refresh.toDouble();
    if (const QJsonValue since = json["failingSince"_L1]; since.isDouble()) {
        link.failingSince = Instant{since.toDouble()};
        link.failure = {json["failureChinese"_L1].toString(), json["failureEnglish"_L1].toString()};
    }
    return link;
}

} // namespace

std::optional<QList<LinkHealth>> decodeLinkHealth(QByteArrayView json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json.toByteArray());
    if (!document.isArray())
        return std::nullopt;
    QList<LinkHealth> links;
    const QJsonArray entries = document.array();
    for (const QJsonValue &entry : entries) {
        LinkHealth link = linkHealth(entry);
        if (!link.feedID.isNull())
            links.append(std::move(link));
    }
    return links;
}

QByteArray encodeLinkHealth(const QList<LinkHealth> &links)
{
    QJsonArray entries;
    for (const LinkHealth &link : links)
        entries.append(encoded(link));
    return QJsonDocument(entries).toJson(QJsonDocument::Compact);
}

} // namespace tessaly
