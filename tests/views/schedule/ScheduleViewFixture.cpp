#include "tests/views/schedule/ScheduleViewFixture.h"

#include "store/PlannerStoreQml.h"

#include "ui/Ui.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickWindow>
#include <QtQml/qqml.h>

#include <algorithm>

namespace tessaly {

namespace {

QTime timeOf(const QString &text)
{
    return QTime::fromString(text, QStringLiteral("h:mm"));
}

} // namespace

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
    while (!store.reminders().isEmpty())
        store.removeReminder(QUuid(store.reminders().last().id));
    store.setPlanShown(false);
    m_driver.inEnglish();
    for (const QString &key : DisplayChoices::storedKeys())
        store.displayChoices()->setStored(key, {});
    store.setDisplayStartHour(0);
    store.setDisplayEndHour(20);
    store.setDisplayStartHour(8);
}

void ScheduleViewFixture::addSchedule(const QString &title, int day, const QString &start, const QString &end,
                                      const QString &tag)
{
    m_driver.has(title, QDate(2026, 9, day), timeOf(start), timeOf(end), tag);
}

void ScheduleViewFixture::addScheduleOn(const QString &title, const QString &day, const QString &start,
                                        const QString &end)
{
    m_driver.has(title, QDate::fromString(day, Qt::ISODate), timeOf(start), timeOf(end));
}

void ScheduleViewFixture::addScheduleBetween(const QString &title, const QString &start, const QString &end)
{
    m_driver.store->addSchedule({.title = title, .date = at(start), .endDate = at(end)});
}

void ScheduleViewFixture::addFixedSchedule(const QString &title, bool isReadOnly, const QString &start,
                                           const QString &end)
{
    if (isReadOnly)
        offerCalendars();
    const QString calendar = isReadOnly ? QStringLiteral("holidays") : feedCalendarIdentifier(QUuid::createUuid());
    m_driver.store->setVisibleCalendarIDs({calendar});
    m_driver.store->addSchedule(
        {.title = title, .date = at(start), .endDate = at(end), .calendarIdentifier = calendar});
}

Instant ScheduleViewFixture::at(const QString &text) const
{
    const QDateTime time = QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd HH:mm"));
    return m_driver.at(time.date(), time.time());
}

void ScheduleViewFixture::dragWithShift(QQuickItem *item, QPointF place)
{
    const QPointF scene = item->mapToScene(place);
    QMouseEvent event(QEvent::MouseMove, scene, item->window()->mapToGlobal(scene), Qt::NoButton, Qt::LeftButton,
                      Qt::ShiftModifier);
    QGuiApplication::sendEvent(item->window(), &event);
}

void ScheduleViewFixture::offerCalendars()
{
    if (!m_driver.store->calendarSync()->availableCalendars().isEmpty())
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
                            .sourceTitle = QStringLiteral("iCloud")},
                           {.identifier = QStringLiteral("holidays"),
                            .title = QStringLiteral("Holidays"),
                            .sourceTitle = QStringLiteral("iCloud"),
                            .isWritable = false}});
}

void ScheduleViewFixture::answerDownload(const QString &body)
{
    m_driver.feedDownloader.answer(0, body.toUtf8());
}

void ScheduleViewFixture::addToDo(const QString &title)
{
    m_driver.store->addReminder({.title = title});
}

void ScheduleViewFixture::toggleToDo(const QString &title)
{
    const QList<ReminderItem> &reminders = m_driver.store->reminders();
    const auto found = std::ranges::find(reminders, title, &ReminderItem::title);
    ReminderItem item = *found;
    item.isComplete = !item.isComplete;
    m_driver.store->updateReminder(item);
}

bool ScheduleViewFixture::isOpen(const QString &title) const
{
    const QList<ReminderItem> &reminders = m_driver.store->reminders();
    const auto found = std::ranges::find(reminders, title, &ReminderItem::title);
    return found != reminders.cend() && !found->isComplete;
}

bool ScheduleViewFixture::isLinked(const QString &title) const
{
    const QList<ReminderItem> &reminders = m_driver.store->reminders();
    const auto found = std::ranges::find(reminders, title, &ReminderItem::title);
    return found != reminders.cend() && m_driver.stored(title).plannedItemID == found->id;
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
