#include "app/SampleData.h"

#include "model/RecordCodec.h"

#include <QFile>

#include <cmath>

namespace tessaly {

namespace {

constexpr double daySeconds = 86'400;
constexpr double hourSeconds = 3'600;

/// The contents, or nothing if there is no such file. "%1" in the name stands for the language.
QByteArray sampleFile(const QString &name, AppLanguage language)
{
    QFile file(QStringLiteral(":/sample/") + name.arg(rawValue(language)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

SavedData sampleData(AppLanguage language, const UserCalendar &calendar, Instant now)
{
    const std::optional<SavedData> file = decodeSavedData(sampleFile(QStringLiteral("planner.%1.json"), language));
    if (!file)
        qFatal("The sample data cannot be decoded");
    SavedData data = *file;
    // The file counts seconds by the clock from the start of today.
    const auto place = [&, today = calendar.day(now)](Instant &moment) {
        const double day = std::floor(moment.seconds / daySeconds);
        moment = calendar.instant(today.addDays(static_cast<qint64>(day)),
                                  QTime(0, 0).addSecs(static_cast<int>(moment.seconds - day * daySeconds)));
    };
    const auto placeOptional = [&](std::optional<Instant> &moment) {
        if (moment)
            place(*moment);
    };
    for (ScheduleItem &item : data.schedules) {
        place(item.date);
        placeOptional(item.endDate);
    }
    for (ReminderItem &item : data.reminders) {
        placeOptional(item.dueDate);
        placeOptional(item.completedAt);
    }
    for (Goal &goal : data.goals) {
        placeOptional(goal.targetDate);
        if (!goal.subgoals)
            continue;
        for (Subgoal &subgoal : *goal.subgoals) {
            if (!subgoal.tasks)
                continue;
            for (GoalTask &task : *subgoal.tasks)
                placeOptional(task.completedAt);
        }
    }
    return data;
}

SampleDocuments sampleDocuments(AppLanguage language, Instant now)
{
    const auto library = decodeDocumentLibrary(sampleFile(QStringLiteral("library.%1.json"), language));
    if (!library)
        qFatal("The sample documents cannot be decoded");
    SampleDocuments sample{.library = *library};
    int number = 0;
    for (MarkdownDocument &document : sample.library.documents) {
        document.updatedAt = now.plus(document.updatedAt.seconds);
        const QString file = QStringLiteral("document%1").arg(++number) + QStringLiteral(".%1.md");
        const QString text =
            QStringLiteral("# ") + document.title + u'\n' + QString::fromUtf8(sampleFile(file, language));
        sample.texts.insert(document.id, text);
        const QString undone = QString(text).replace(QStringLiteral("- [x]"), QStringLiteral("- [ ]"));
        sample.formerTexts.append({document.id, document.updatedAt.plus(-hourSeconds), undone});
        sample.formerTexts.append({document.id, document.updatedAt.plus(-daySeconds), undone.first(undone.size() / 2)});
    }
    return sample;
}

QList<EventCalendar> sampleCalendars(AppLanguage language)
{
    const auto text = [language](const QString &chinese, const QString &english) {
        return language == AppLanguage::English ? english : chinese;
    };
    const QString cloud = QStringLiteral("iCloud");
    const QString university = text(QStringLiteral("大学"), QStringLiteral("University"));
    return {
        {.identifier = QStringLiteral("courses"),
         .title = text(QStringLiteral("课程"), QStringLiteral("Courses")),
         .sourceTitle = cloud,
         .color = RgbColor{0.17, 0.40, 0.85}},
        {.identifier = QStringLiteral("family"),
         .title = text(QStringLiteral("家庭"), QStringLiteral("Family")),
         .sourceTitle = cloud,
         .color = RgbColor{0.80, 0.25, 0.23}},
        {.identifier = QStringLiteral("seminars"),
         .title = text(QStringLiteral("研讨会"), QStringLiteral("Seminars")),
         .sourceTitle = university,
         .color = RgbColor{0.50, 0.31, 0.80}},
        {.identifier = QStringLiteral("holidays"),
         .title = text(QStringLiteral("节假日"), QStringLiteral("Holidays")),
         .sourceTitle = university,
         .color = RgbColor{0.14, 0.53, 0.30},
         .isWritable = false},
    };
}

} // namespace tessaly
