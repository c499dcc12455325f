#include "model/ReminderRules.h"
#include "model/Uuid.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/RecordGenerator.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

/// A planner whose user, clock, zone and desktop do one thing after the other, and what must hold of its reminders:
/// nothing but the user takes one away, and each comes once for each minute that it waits for.
class Walk
{
public:
    explicit Walk(quint64 seed) : m_random(seed)
    {
        m_planner.clock.setZone(QTimeZone("Europe/Vienna"));
        m_planner.clock.setNow(Instant::fromUnixSeconds(1'788'952'800));
        m_planner.startInEnglish().waitingReminders().start();
    }

    void step()
    {
        const QList<WaitingReminder> before = list();
        if (m_random.happens(0.5)) {
            actAsUser();
            expectWhatWaits(before);
        } else {
            actAsSystem();
            if (identifiers(list()) != identifiers(before))
                m_faults.append(u"a reminder came or went without the user"_s);
        }
        lookAtDesktop();
    }
    /// A desktop that answers, and all the time in the world.
    void finish()
    {
        m_planner.notificationPresenter.appear();
        for (int turn = 0; turn < 3; ++turn) {
            m_planner.clock.advance(3 * 86400);
            m_planner.notificationPresenter.complete();
            lookAtDesktop();
        }
        for (const WaitingReminder &reminder : list()) {
            if (reminder.state != ReminderState::Shown && reminder.state != ReminderState::Missed)
                m_faults.append(u"never shown: "_s + reminder.body);
        }
    }
    [[nodiscard]] QString faults() const { return m_faults.join(u'\n'); }
    [[nodiscard]] qsizetype shownCount() const { return m_looked; }

private:
    [[nodiscard]] const QList<WaitingReminder> &list() const { return m_planner.store->waitingReminders().list(); }
    [[nodiscard]] static QSet<QString> identifiers(const QList<WaitingReminder> &reminders)
    {
        QSet<QString> all;
        for (const WaitingReminder &reminder : reminders)
            all.insert(reminder.identifier);
        return all;
    }
    [[nodiscard]] Instant someTime() { return m_planner.clock.now().plus(60.0 * int(m_random.below(180)) - 1800); }

    void actAsUser()
    {
        PlannerStore &store = *m_planner.store;
        const QList<ReminderItem> &items = store.reminders();
        const qsizetype row = items.isEmpty() ? -1 : qsizetype(m_random.below(items.size()));
        ReminderItem item = row < 0 ? ReminderItem() : items.at(row);
        const QString someone = list().isEmpty() ? QString() : list().at(m_random.below(list().size())).identifier;
        using enum ReminderAnswer;
        switch (m_random.below(9)) {
        case 0:
        case 1:
            return store.addReminder({.title = QString::number(++m_names), .dueDate = someTime()});
        case 2:
            return store.updateReminder(toggled(item, m_planner.clock.now()));
        case 3:
            item.dueDate = someTime();
            return store.updateReminder(item);
        case 4:
            return m_random.happens(0.3) ? store.removeReminder(item.id) : store.undo();
        case 5:
            return store.undo();
        case 6:
            return store.redo();
        case 7:
            return store.answerReminders({someone}, std::array{InTenMinutes, InOneHour, Tomorrow}[m_random.below(3)]);
        default:
            return store.answerReminders({someone}, m_random.happens(0.5) ? Complete : Dismiss);
        }
    }

    void actAsSystem()
    {
        FakeClock &clock = m_planner.clock;
        const std::array<const char *, 3> zones{"Europe/Vienna", "Asia/Tokyo", "America/New_York"};
        switch (m_random.below(9)) {
        case 0:
        case 1:
        case 2:
            return clock.advance(60.0 * int(m_random.below(60)));
        case 3:
            return clock.setNow(clock.now().plus(60.0 * (int(m_random.below(240)) - 120)));
        case 4:
            return clock.setZone(QTimeZone(zones.at(m_random.below(zones.size()))));
        case 5:
            return m_random.happens(0.5) ? m_planner.notificationPresenter.setUnavailable()
                                         : m_planner.notificationPresenter.appear();
        case 6:
            return restart();
        default:
            return m_planner.notificationPresenter.complete();
        }
    }

    /// As after a crash: what the desktop answers is not heard any more.
    void restart()
    {
        lookAtDesktop();
        for (const WaitingReminder &reminder : list()) {
            if (reminder.state == ReminderState::Due)
                m_expected.insert(reminder.identifier);
        }
        const QList<WaitingReminder> known = list();
        m_planner.store.reset();
        m_planner.notificationPresenter.complete();
        m_planner.calendar = UserCalendar(m_planner.clock.zone(), Qt::Monday, QLocale::c());
        m_planner.startInEnglish();
        if (list() != known)
            m_faults.append(u"something was not saved"_s);
        m_planner.store->waitingReminders().start();
    }

    void expectWhatWaits(const QList<WaitingReminder> &before)
    {
        for (const WaitingReminder &reminder : list()) {
            // Undo brings back one that the desktop had not answered for; that one comes again.
            const bool isBack = reminder.state == ReminderState::Due && !before.contains(reminder);
            if (reminder.state == ReminderState::Waiting || isBack)
                m_expected.insert(reminder.identifier);
            m_identifiers.insert(reminder.body, reminder.identifier);
        }
    }

    void lookAtDesktop()
    {
        const QList<Notification> &shown = m_planner.notificationPresenter.shown();
        for (; m_looked < shown.size(); ++m_looked) {
            const Notification &notification = shown.at(m_looked);
            if (notification.identifier != ReminderWording::missedIdentifier) {
                expectOnce(notification.identifier);
                continue;
            }
            const QStringList titles = notification.body.section(u'\n', 1).split(u", "_s);
            for (const QString &title : titles) {
                if (title != u"…")
                    expectOnce(m_identifiers.value(title));
            }
        }
    }
    void expectOnce(const QString &identifier)
    {
        if (!m_expected.remove(identifier))
            m_faults.append(u"shown twice: "_s + identifier);
    }

    StoreUnderTest m_planner;
    RecordGenerator m_random;
    /// Identifiers of reminders that may come.
    QSet<QString> m_expected;
    /// Of the titles, which are unique.
    QHash<QString, QString> m_identifiers;
    QStringList m_faults;
    qsizetype m_looked = 0;
    int m_names = 0;
};

} // namespace

class ReminderWalkTest : public QObject
{
    Q_OBJECT

private slots:
    void eachReminderComesOnceWhateverHappens_data()
    {
        QTest::addColumn<quint64>("seed");
        for (quint64 seed = 1; seed <= 12; ++seed)
            QTest::addRow("seed %llu", static_cast<unsigned long long>(seed)) << seed;
    }

    void eachReminderComesOnceWhateverHappens()
    {
        QFETCH(const quint64, seed);
        Walk walk(seed);
        for (int step = 0; step < 300; ++step) {
            walk.step();
            QVERIFY2(walk.faults().isEmpty(), qPrintable(u"step %1: "_s.arg(step) + walk.faults()));
        }
        walk.finish();
        QCOMPARE(walk.faults(), QString());
        QVERIFY(walk.shownCount() > 4);
    }
};

TESSALY_TEST_MAIN(ReminderWalkTest)
#include "ReminderWalkTest.moc"
