#include "platform/fake/FakeEventStore.h"
#include "tests/platform/EventStoreContract.h"
#include "tests/support/TestMain.h"

#include <QDateTime>

using namespace tessaly;

namespace {

class FakeServiceDriver final : public EventStoreDriver
{
public:
    FakeServiceDriver()
    {
        addCalendar(QStringLiteral("Home"));
        addCalendar(QStringLiteral("Work"));
    }

    std::unique_ptr<EventStore> makeStore() override { return std::make_unique<FakeEventStore>(m_database); }
    [[nodiscard]] Instant now() const override { return Instant::fromUnixSeconds(1'780'300'000); }

    void putEvent(const QString &calendarTitle, const OutsideEvent &event) override
    {
        constexpr double tenYears = 3652;
        const double daysSinceNow = (event.startDate.seconds - now().seconds) / 86400;
        const int count = event.dailyCount == 0 ? static_cast<int>(tenYears - daysSinceNow) : event.dailyCount;
        const auto later = [this](Instant instant, int days) {
            const QDateTime local =
                QDateTime::fromSecsSinceEpoch(qRound64(instant.unixSeconds()), Qt::UTC).toTimeZone(zone());
            return Instant::fromUnixSeconds(static_cast<double>(local.addDays(days).toSecsSinceEpoch()));
        };
        for (int i = 0; i < count; ++i)
            m_outside.putEvent({.eventIdentifier = event.uid + u'#' + QString::number(i),
                                .calendarIdentifier = calendarTitle,
                                .uid = event.uid,
                                .title = event.title,
                                .startDate = later(event.startDate, i),
                                .endDate = later(event.endDate, i),
                                .notes = event.notes});
    }
    void dropEvent(const QString &, const QString &uid) override
    {
        const QList<CalendarEvent> events = m_outside.allEvents();
        for (const CalendarEvent &event : events) {
            if (event.uid == uid)
                m_outside.dropEvent(event.eventIdentifier);
        }
    }
    void addCalendar(const QString &title) override { m_outside.addCalendar({.identifier = title, .title = title}); }
    void dropCalendar(const QString &title) override { m_outside.loseCalendar(title); }
    bool makeReadOnly(const QString &title) override
    {
        m_outside.addCalendar({.identifier = title, .title = title, .isWritable = false});
        return true;
    }

private:
    std::shared_ptr<FakeCalendarDatabase> m_database = std::make_shared<FakeCalendarDatabase>();
    FakeEventStore m_outside{m_database};
};

class FakeEventStoreTest : public EventStoreContract
{
    Q_OBJECT

protected:
    std::unique_ptr<EventStoreDriver> makeDriver() override { return std::make_unique<FakeServiceDriver>(); }
};

} // namespace

TESSALY_TEST_MAIN(FakeEventStoreTest)
#include "FakeEventStoreTest.moc"
