#include "bench/Bench.h"
#include "bench/QJsonEncoding.h"

#include "model/RecordCodec.h"
#include "model/SavedDataEncoder.h"
#include "tests/support/RecordGenerator.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstring>

// The codec beside QJsonDocument, which is what most Qt programs use, and beside memcpy over the same bytes, which no
// encoder or decoder can beat.

namespace tessaly::bench {

namespace {

constexpr qsizetype sizes[] = {100, 10'000, 100'000};

int samplesFor(qsizetype schedules)
{
    return schedules >= 100'000 ? 5 : schedules >= 10'000 ? 15 : 51;
}

QString figureName(const char *what, qsizetype schedules)
{
    return QStringLiteral("%1, %2 schedules").arg(QLatin1String(what)).arg(schedules);
}

SavedData generatedData(qsizetype schedules)
{
    return RecordGenerator().savedData(schedules, schedules / 10, schedules / 100);
}

/// Copies `bytes` into memory that is already there.
std::function<void()> copyOf(QByteArrayView bytes, QByteArray &target)
{
    target.resize(bytes.size());
    return [bytes, &target] {
        std::memcpy(target.data(), bytes.data(), size_t(bytes.size()));
        keep(target);
    };
}

template <class Convert>
auto optionalValue(const QJsonObject &object, QLatin1String key, Convert convert)
    -> std::optional<decltype(convert(QJsonValue()))>
{
    const QJsonValue value = object.value(key);
    if (value.isUndefined())
        return std::nullopt;
    return convert(value);
}

std::optional<QString> optionalText(const QJsonObject &object, QLatin1String key)
{
    return optionalValue(object, key, [](const QJsonValue &value) { return value.toString(); });
}

ScheduleItem scheduleFromQJson(const QJsonObject &object)
{
    const auto idOf = [](const QJsonObject &record) {
        return QUuid::fromString(record.value(QLatin1String("id")).toString());
    };
    ScheduleItem item{.id = idOf(object)};
    item.title = object.value(QLatin1String("title")).toString();
    item.date = {object.value(QLatin1String("date")).toDouble()};
    item.endDate = optionalValue(object, QLatin1String("endDate"),
                                 [](const QJsonValue &value) { return Instant{value.toDouble()}; });
    item.notes = object.value(QLatin1String("notes")).toString();
    item.taskTitle = optionalText(object, QLatin1String("taskTitle"));
    item.isTaskComplete = object.value(QLatin1String("isTaskComplete")).toBool();
    const QJsonArray tasks = object.value(QLatin1String("tasks")).toArray();
    for (const QJsonValue &value : tasks) {
        const QJsonObject task = value.toObject();
        item.tasks->append({.id = idOf(task),
                            .title = task.value(QLatin1String("title")).toString(),
                            .isComplete = task.value(QLatin1String("isComplete")).toBool()});
    }
    item.tag = optionalText(object, QLatin1String("tag"));
    item.colorName = optionalText(object, QLatin1String("colorName"));
    item.customColorHex = optionalText(object, QLatin1String("customColorHex"));
    item.calendarExportRequested = optionalValue(object, QLatin1String("calendarExportRequested"),
                                                 [](const QJsonValue &value) { return value.toBool(); });
    item.calendarEventIdentifier = optionalText(object, QLatin1String("calendarEventIdentifier"));
    item.calendarIdentifier = optionalText(object, QLatin1String("calendarIdentifier"));
    item.calendarColorHex = optionalText(object, QLatin1String("calendarColorHex"));
    return item;
}

QList<ScheduleItem> decodeWithQJson(const QByteArray &json)
{
    const QJsonArray array = QJsonDocument::fromJson(json).object().value(QLatin1String("schedules")).toArray();
    QList<ScheduleItem> schedules;
    schedules.reserve(array.size());
    for (const QJsonValue &value : array)
        schedules.append(scheduleFromQJson(value.toObject()));
    return schedules;
}

SavedData schedulesOnly(qsizetype schedules)
{
    return RecordGenerator().savedData(schedules, 0, 0);
}

} // namespace

TESSALY_BENCH(CodecEncode)
{
    for (const qsizetype size : sizes) {
        const SavedData data = schedulesOnly(size);
        SavedDataEncoder encoder;
        if (!encoder.encode(data) || decodeWithQJson(encodeWithQJson(data.schedules)) != data.schedules)
            return report.failed(figureName("encode", size), QStringLiteral("the two encoders disagree"));
        QByteArray copied;
        const auto seconds = medianSeconds(samplesFor(size), {{[&] { keep(encoder.encode(data)); }},
                                                              {[&] { keep(encodeWithQJson(data.schedules)); }},
                                                              {copyOf(encoder.bytes(), copied)},
                                                              {[&] { keep(encodeSavedData(data)); }}});
        report.timesFasterThan(figureName("encode all", size), seconds[0], QStringLiteral("QJsonDocument"), seconds[1],
                               30);
        report.shown(figureName("encode all", size), seconds[0], QStringLiteral("memcpy"), seconds[2]);
        report.shown(figureName("encode all, fresh memory", size), seconds[3], QStringLiteral("memcpy"), seconds[2]);
    }
}

TESSALY_BENCH(CodecDecode)
{
    for (const qsizetype size : sizes) {
        const SavedData data = schedulesOnly(size);
        const QByteArray json = *encodeSavedData(data);
        if (decodeSavedData(json) != data || decodeWithQJson(json) != data.schedules)
            return report.failed(figureName("decode", size), QStringLiteral("the two decoders disagree"));
        QByteArray copied;
        const auto seconds = medianSeconds(
            samplesFor(size),
            {{[&] { keep(decodeSavedData(json)); }}, {[&] { keep(decodeWithQJson(json)); }}, {copyOf(json, copied)}});
        report.timesFasterThan(figureName("decode", size), seconds[0], QStringLiteral("QJsonDocument"), seconds[1], 4);
        report.shown(figureName("decode", size), seconds[0], QStringLiteral("memcpy"), seconds[2]);
    }
}

TESSALY_BENCH(CodecOneChange)
{
    using Section = SavedDataEncoder::Section;
    for (const qsizetype size : sizes) {
        SavedData data = generatedData(size);
        SavedDataEncoder encoder;
        if (!encoder.encode(data))
            return report.failed(figureName("one change", size), QStringLiteral("the data cannot be encoded"));
        QByteArray copied;
        const QByteArray blob = encoder.bytes().toByteArray();
        const qsizetype middleReminder = data.reminders.size() / 2;
        const qsizetype middleSchedule = data.schedules.size() / 2;
        const QString notes = data.schedules[middleSchedule].notes;

        const auto changeReminder = [&] {
            ReminderItem &reminder = data.reminders[middleReminder];
            reminder.isComplete = !reminder.isComplete;
            keep(encoder.update(data, Section::Reminders, {RowsChange::Kind::Updated, middleReminder, 1}));
        };
        // Each run changes the length, so everything behind the schedule moves.
        const auto changeSchedule = [&] {
            QString &text = data.schedules[middleSchedule].notes;
            text = text.size() == notes.size() ? notes + QStringLiteral(" and more") : notes;
            keep(encoder.update(data, Section::Schedules, {RowsChange::Kind::Updated, middleSchedule, 1}));
        };
        const auto insertFirst = [&] {
            if (data.schedules.size() == size) {
                data.schedules.prepend(data.schedules[middleSchedule]);
                keep(encoder.update(data, Section::Schedules, {RowsChange::Kind::Inserted, 0, 1}));
            } else {
                data.schedules.removeFirst();
                keep(encoder.update(data, Section::Schedules, {RowsChange::Kind::Removed, 0, 1}));
            }
        };
        const auto seconds = medianSeconds(samplesFor(size) * 4,
                                           {{copyOf(blob, copied)}, {changeReminder}, {changeSchedule}, {insertFirst}});
        if (encoder.bytes() != *encodeSavedData(data))
            return report.failed(figureName("one change", size), QStringLiteral("the bytes are wrong"));

        const QString pass = QStringLiteral("memcpy");
        report.atMostTimes(figureName("one to-do changed", size), seconds[1], pass, seconds[0], 2);
        report.atMostTimes(figureName("middle schedule longer", size), seconds[2], pass, seconds[0], 2);
        report.atMostTimes(figureName("first schedule in or out", size), seconds[3], pass, seconds[0], 2);
    }
}

} // namespace tessaly::bench
