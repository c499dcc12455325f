#include "tests/views/schedule/ScheduleViewFixture.h"

#include "store/PlannerStoreQml.h"

#include "ui/Ui.h"

#include <QGuiApplication>
#include <QtQml/qqml.h>

namespace tessaly {

void ScheduleViewFixture::qmlEngineAvailable(QQmlEngine *engine)
{
    PlannerStoreQml::setStore(m_driver.store.get());
    qmlRegisterSingletonInstance("Tessaly.Test", 1, 0, "TestPlanner", this);
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    applyInterfaceFont();
    installImageProviders(*engine);
    reset();
}

void ScheduleViewFixture::reset()
{
    PlannerStore &store = *m_driver.store;
    while (!store.schedules().isEmpty()) {
        const ScheduleItem last = store.schedules().last();
        store.deleteSchedule(last);
    }
    m_driver.inEnglish();
    store.setDisplayStartHour(0);
    store.setDisplayEndHour(20);
    store.setDisplayStartHour(8);
}

void ScheduleViewFixture::addSchedule(const QString &title, int day, const QString &start, const QString &end,
                                      const QString &tag)
{
    const auto time = [](const QString &text) { return QTime::fromString(text, QStringLiteral("h:mm")); };
    m_driver.has(title, QDate(2026, 9, day), time(start), time(end), tag);
}

void ScheduleViewFixture::addTask(const QString &schedule, const QString &task)
{
    ScheduleItem item = m_driver.stored(schedule);
    item.tasks = item.tasks.value_or(QList<ScheduleTask>()) << ScheduleTask{.title = task};
    m_driver.store->updateSchedule(item);
}

void ScheduleViewFixture::offerCalendars()
{
    if (!m_driver.store->availableCalendars().isEmpty())
        return;
    m_driver.hasCalendars({{.identifier = QStringLiteral("club"),
                            .title = QStringLiteral("Club"),
                            .sourceTitle = QStringLiteral("Nextcloud")},
                           {.identifier = QStringLiteral("courses"),
                            .title = QStringLiteral("Courses"),
                            .sourceTitle = QStringLiteral("iCloud"),
                            .color = RgbColor{0.17, 0.4, 0.85}},
                           {.identifier = QStringLiteral("work"),
                            .title = QStringLiteral("Work"),
                            .sourceTitle = QStringLiteral("iCloud")}});
}

void ScheduleViewFixture::answerDownload(const QString &body)
{
    m_driver.feedDownloader.answer(0, body.toUtf8());
}

void ScheduleViewFixture::speakChinese()
{
    m_driver.store->setInterfaceLanguage(AppLanguage::Chinese);
}

void ScheduleViewFixture::fillSampleWeek()
{
    struct Sample
    {
        const char *title;
        int day;
        const char *start;
        const char *end;
        const char *color;
    };
    const Sample samples[] = {
        {"Morning reading", 6, "9:00", "10:00", "#12828F"},
        {"Reading group", 6, "15:00", "16:30", "#7F50CC"},
        {"Microeconomics lecture 1", 7, "9:00", "10:40", "#2C66D8"},
        {"Statistics lab", 7, "10:00", "11:30", "#12828F"},
        {"Lunch seminar", 7, "12:00", "13:00", "#C9630A"},
        {"Project meeting", 7, "14:30", "16:00", "#4C56C8"},
        {"Swimming", 7, "18:00", "19:00", "#23884D"},
        {"Linear algebra", 8, "8:00", "9:40", "#4C56C8"},
        {"Stand-up", 8, "10:00", "10:15", "#C9630A"},
        {"Library hours", 8, "13:30", "16:30", "#23884D"},
        {"Adviser meeting", 8, "15:00", "15:45", "#CB3D7E"},
        {"Microeconomics lecture 2", 9, "9:00", "10:40", "#2C66D8"},
        {"Design review", 9, "9:30", "10:30", "#7F50CC"},
        {"Data workshop", 9, "10:00", "11:00", "#12828F"},
        {"Team lunch", 9, "12:00", "13:00", "#C9630A"},
        {"Writing block", 9, "14:00", "16:00", "#2C66D8"},
        {"Publisher call", 9, "15:00", "15:45", "#CB3D7E"},
        {"Game theory seminar", 10, "13:00", "15:00", "#7F50CC"},
        {"Dentist", 10, "16:30", "17:15", "#CC3F3B"},
        {"Weekly report", 11, "16:00", "17:00", "#C9630A"},
        {"Badminton", 11, "18:30", "20:00", "#23884D"},
        {"Weekend market", 12, "9:30", "11:00", "#CB3D7E"},
    };
    for (const Sample &sample : samples) {
        addSchedule(QString::fromUtf8(sample.title), sample.day, QString::fromLatin1(sample.start),
                    QString::fromLatin1(sample.end), sample.day == 9 ? QStringLiteral("Course") : QString());
        ScheduleItem item = m_driver.store->schedules().last();
        item.customColorHex = QString::fromLatin1(sample.color);
        m_driver.store->updateSchedule(item);
    }
}

int ScheduleViewFixture::scheduleCount() const
{
    return static_cast<int>(m_driver.store->schedules().size());
}

QString ScheduleViewFixture::timesOf(const QString &title) const
{
    const ScheduleItem &item = m_driver.stored(title);
    const auto worded = [this](Instant instant) {
        return m_driver.calendar.dateTime(instant).toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    };
    return worded(item.date) + QStringLiteral(" – ") + worded(item.end());
}

QString ScheduleViewFixture::tagOf(const QString &title) const
{
    return m_driver.stored(title).tag.value_or(QString());
}

QString ScheduleViewFixture::notesOf(const QString &title) const
{
    return m_driver.stored(title).notes;
}

QString ScheduleViewFixture::colorOf(const QString &title) const
{
    return m_driver.stored(title).customColorHex.value_or(QString());
}

QStringList ScheduleViewFixture::tasksOf(const QString &title) const
{
    QStringList texts;
    const QList<ScheduleTask> tasks = m_driver.stored(title).tasks.value_or(QList<ScheduleTask>());
    for (const ScheduleTask &task : tasks)
        texts.append((task.isComplete ? QStringLiteral("+") : QString()) + task.title);
    return texts;
}

QStringList ScheduleViewFixture::visibleCalendars() const
{
    QStringList identifiers(m_driver.store->visibleCalendarIDs().cbegin(), m_driver.store->visibleCalendarIDs().cend());
    identifiers.sort();
    return identifiers;
}

int ScheduleViewFixture::accessRequests() const
{
    return m_driver.eventStore.accessRequestCount();
}

} // namespace tessaly
