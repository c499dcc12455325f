#pragma once

#include "platform/linux/EvolutionEventStore.h"
#include "tests/platform/EventStoreContract.h"
#include "tests/system/CalendarSession.h"

#include <QDateTime>
#include <QHash>
#include <QTest>

namespace tessaly {

/// Two local calendars in the service that all tests of the process share.
class EdsDriver final : public EventStoreDriver
{
public:
    explicit EdsDriver(CalendarSession &session) : m_session(session)
    {
        for (const char *title : {"Home", "Work"})
            addCalendar(QString::fromLatin1(title));
        m_session.setDefaultCalendar(m_uids.value(QStringLiteral("Home")));
    }
    ~EdsDriver() override
    {
        // The service does not survive the removal of many.
        for (const QString &uid : m_uids)
            m_session.hideCalendar(uid);
    }
    Q_DISABLE_COPY_MOVE(EdsDriver)

    std::unique_ptr<EventStore> makeStore() override
    {
        return std::make_unique<EvolutionEventStore>(UserCalendar(zone(), Qt::Monday, QLocale::c()));
    }
    Instant now() const override
    {
        // lint-allow(clock): the adapter under test goes by the real time
        return Instant::fromUnixSeconds(static_cast<double>(QDateTime::currentSecsSinceEpoch()));
    }
    void putEvent(const QString &calendarTitle, const OutsideEvent &event) override
    {
        m_session.putEvent(m_uids.value(calendarTitle), eventText(event));
    }
    void dropEvent(const QString &calendarTitle, const QString &uid) override
    {
        m_session.dropEvent(m_uids.value(calendarTitle), uid);
    }
    QByteArray text(const QString &calendarTitle, const QString &uid) override
    {
        return m_session.eventTexts(m_uids.value(calendarTitle), uid).join();
    }
    void addCalendar(const QString &title) override { m_uids.insert(title, m_session.addLocalCalendar(title)); }
    void dropCalendar(const QString &title) override { m_session.removeCalendar(m_uids.take(title)); }

    /// Waits until everything that the service has been given so far is on the disk. False if that takes a minute.
    bool waitUntilWritten(const QString &calendarTitle)
    {
        const OutsideEvent mark{.uid = QStringLiteral("mark"),
                                .title = QStringLiteral("mark %1").arg(++m_marks),
                                .startDate = now(),
                                .endDate = now().plus(60)};
        putEvent(calendarTitle, mark);
        // The service writes a calendar as a whole.
        const QByteArray line = "SUMMARY:" + mark.title.toUtf8() + "\r\n";
        return QTest::qWaitFor(
            [&] { return m_session.fileOfLocalCalendar(m_uids.value(calendarTitle)).contains(line); }, 60'000);
    }

private:
    CalendarSession &m_session;
    QHash<QString, QString> m_uids;
    int m_marks = 0;
};

} // namespace tessaly
