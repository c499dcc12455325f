#include "model/ReminderRules.h"
#include "model/UserCalendar.h"
#include "model/Uuid.h"
#include "platform/common/SqlitePreferences.h"
#include "platform/linux/FreedesktopNotifications.h"
#include "platform/linux/LinuxClock.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"
#include "tests/store/FakePorts.h"
#include "tests/support/TestMain.h"
#include "tests/system/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace tessaly;

namespace {

const QString service = u"org.freedesktop.Notifications"_s;
const QString path = u"/org/freedesktop/Notifications"_s;

/// A daemon that notes what it is asked for.
void startMock(Service &server, const PrivateBus &bus, const QString &parameters = u"{}"_s)
{
    server.start(u"/usr/bin/python3"_s,
                 {u"-m"_s, u"dbusmock"_s, u"--session"_s, u"--template"_s, u"notification_daemon"_s, u"--parameters"_s,
                  parameters},
                 bus.environment());
}

/// A daemon that notes what it is asked to show, and never answers.
class SilentDaemon : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit SilentDaemon(QDBusConnection bus) : m_bus(std::move(bus))
    {
        m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
        m_bus.registerService(service);
    }
    ~SilentDaemon() override { m_bus.unregisterService(service); }
    Q_DISABLE_COPY_MOVE(SilentDaemon)

    [[nodiscard]] const QStringList &bodies() const { return m_bodies; }

public slots:
    QStringList GetCapabilities() { return {u"body"_s}; }
    uint Notify(const QString &, uint, const QString &, const QString &, const QString &body, const QStringList &,
                const QVariantMap &, int)
    {
        m_bodies.append(body);
        setDelayedReply(true);
        return 0;
    }

private:
    QDBusConnection m_bus;
    QStringList m_bodies;
};

/// A planner's notifications on a bus, at a time that the test turns.
struct Planner
{
    FakePorts fakes;
    FakeClock &clock = fakes.clock;
    FreedesktopNotifications presenter;
    PlannerStore store;
    QStringList clicked;

    explicit Planner(const QDBusConnection &bus) : presenter(u"tessaly"_s, bus), store(fakes.portsOver(presenter))
    {
        clock.setNow(Instant::fromUnixSeconds(1'788'952'800));
        store.setInterfaceLanguage(AppLanguage::English);
        presenter.setActivationHandler([this](const QString &identifier) { clicked.append(identifier); });
        store.waitingReminders().start();
    }
    /// Adds a to-do that is due in a minute; the identifier of its reminder.
    QString remind(const QString &title)
    {
        store.addReminder({.title = title, .dueDate = clock.now().plus(60)});
        return uuidText(store.reminders().constLast().id);
    }
    [[nodiscard]] bool hasPending() { return store.waitingReminders().hasPending(); }
};

QDBusMessage mock(const QDBusConnection &bus, const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, u"org.freedesktop.DBus.Mock"_s, method);
    message.setArguments(arguments);
    return bus.call(message);
}

/// The arguments of each call of the method so far.
QList<QVariantList> callsOf(const QString &method, const QDBusConnection &bus)
{
    QList<QVariantList> calls;
    const QDBusMessage answer = mock(bus, u"GetMethodCalls"_s, {method});
    const QDBusArgument argument = answer.arguments().value(0).value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        qulonglong time = 0;
        QVariantList values;
        argument.beginStructure();
        argument >> time >> values;
        argument.endStructure();
        calls.append(values);
    }
    argument.endArray();
    return calls;
}
QList<QVariantList> notifications(const QDBusConnection &bus)
{
    return callsOf(u"Notify"_s, bus);
}
/// The user presses a button of a notification.
void press(const QDBusConnection &bus, uint number, const QString &action)
{
    mock(bus, u"EmitSignal"_s,
         {service, u"ActionInvoked"_s, u"us"_s, QVariant(QVariantList{QVariant(number), QVariant(action)})});
}

/// Puts a reminder that fell due an hour ago into the data directory.
void miss(const QString &directory, const QString &body)
{
    const auto preferences = SqlitePreferences::open(directory);
    const QDateTime minute = UserCalendar::system().dateTime(LinuxClock().now().plus(-3600));
    auto waiting = decodeWaitingReminders(preferences.value()->get<QByteArray>(keys::waitingReminders).value_or("[]"));
    QVERIFY(waiting);
    waiting->append({body, u"Reminder"_s, body, minute.date(), minute.time()});
    QVERIFY(preferences.value()->setValue(keys::waitingReminders, encodeWaitingReminders(*waiting)));
}
/// The entry that starts the planner at login stands there while a reminder is still to be shown.
bool hasPending(const PrivateBus &bus)
{
    return !QDir(bus.environment().value(u"XDG_CONFIG_HOME"_s) + u"/autostart"_s).isEmpty();
}
void startPlanner(Service &program, const PrivateBus &bus, const QString &directory)
{
    program.start(QStringLiteral(TESSALY_PROGRAM), {u"--background"_s, u"--data-dir"_s, directory}, bus.environment());
}

/// What dunst has shown and closed, the newest first. Asked over the bus: dunstctl's own "history" wants systemd's
/// busctl.
QList<QVariantMap> history(const QDBusConnection &bus)
{
    const QDBusMessage answer = bus.call(
        QDBusMessage::createMethodCall(service, path, u"org.dunstproject.cmd0"_s, u"NotificationListHistory"_s));
    return qdbus_cast<QList<QVariantMap>>(answer.arguments().value(0));
}

} // namespace

class NotificationTest : public QObject
{
    Q_OBJECT

private slots:
    void aReminderReachesTheServiceWithExactlyTheseArguments()
    {
        PrivateBus bus;
        Service server;
        startMock(server, bus);
        QTRY_VERIFY_WITH_TIMEOUT(bus.hasService(service), 20'000);
        Planner planner(bus.connection(u"client"_s));
        const QString identifier = planner.remind(u"Tea & <b>cake</b>"_s);

        planner.clock.advance(59);
        planner.clock.advance(1);
        QTRY_COMPARE(notifications(bus.connection(u"client"_s)).size(), 1);

        const QVariantList arguments = notifications(bus.connection(u"client"_s)).first();
        QCOMPARE(arguments.at(0).toString(), QCoreApplication::applicationName());
        QCOMPARE(arguments.at(1).toUInt(), 0U);
        QCOMPARE(arguments.at(2).toString(), u"tessaly"_s);
        QCOMPARE(arguments.at(3).toString(), u"Reminder"_s);
        QCOMPARE(arguments.at(4).toString(), u"Tea &amp; &lt;b&gt;cake&lt;/b&gt;"_s);
        QCOMPARE(qdbus_cast<QStringList>(arguments.at(5)),
                 (QStringList{u"default"_s, QCoreApplication::applicationName()}));
        QCOMPARE(qdbus_cast<QVariantMap>(arguments.at(6)), (QVariantMap{{u"urgency"_s, QVariant::fromValue<uchar>(1)},
                                                                        {u"desktop-entry"_s, u"tessaly"_s},
                                                                        {u"sound-name"_s, u"message-new-instant"_s}}));
        QCOMPARE(arguments.at(7).toInt(), 0);

        // Another program's notification and another action are none of ours.
        press(bus.connection(u"client"_s), 99, u"default"_s);
        press(bus.connection(u"client"_s), 1, u"other"_s);
        press(bus.connection(u"client"_s), 1, u"default"_s);
        QTRY_COMPARE(planner.clicked, QStringList{identifier});
    }

    void aButtonAnswersAndEveryAnswerTakesTheNotificationAway_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<bool>("isComplete");
        QTest::newRow("done") << u"done"_s << true;
        QTest::newRow("later") << u"in-10-minutes"_s << false;
        QTest::newRow("ticked in the window") << QString() << true;
    }

    void aButtonAnswersAndEveryAnswerTakesTheNotificationAway()
    {
        QFETCH(const QString, action);
        PrivateBus bus;
        Service server;
        startMock(server, bus, uR"({"capabilities": "body actions"})"_s);
        QTRY_VERIFY_WITH_TIMEOUT(bus.hasService(service), 20'000);
        Planner planner(bus.connection(u"client"_s));
        planner.remind(u"Tea"_s);
        planner.clock.advance(60);
        QTRY_VERIFY(!planner.hasPending());
        QCOMPARE(qdbus_cast<QStringList>(notifications(bus.connection(u"client"_s)).value(0).value(5)).sliced(2),
                 (QStringList{u"done"_s, u"Done"_s, u"in-10-minutes"_s, u"In 10 minutes"_s, u"in-1-hour"_s,
                              u"In 1 hour"_s, u"tomorrow"_s, u"Tomorrow"_s}));

        if (action.isEmpty())
            planner.store.updateReminder(toggled(planner.store.reminders().first(), planner.clock.now()));
        else
            press(bus.connection(u"client"_s), 1, action);

        QTRY_COMPARE(callsOf(u"CloseNotification"_s, bus.connection(u"client"_s)),
                     (QList<QVariantList>{{QVariant(1U)}}));
        QTEST(planner.store.reminders().first().isComplete, "isComplete");
        QCOMPARE(planner.hasPending(), !planner.store.reminders().first().isComplete);
    }

    void withoutAServiceAReminderWaitsForOne()
    {
        PrivateBus bus;
        Planner planner(bus.connection(u"client"_s));
        planner.remind(u"Tea"_s);
        planner.clock.advance(60);
        QTRY_COMPARE(unanswered(planner.store.waitingReminders().list(), planner.fakes.calendar).size(), 1);

        Service server;
        startMock(server, bus);
        QTRY_VERIFY_WITH_TIMEOUT(!planner.hasPending(), 20'000);
        QTRY_COMPARE(notifications(bus.connection(u"client"_s)).size(), 1);
    }

    void theProgramInTheBackgroundDeliversWhatWasMissedAndOnlyOnce()
    {
        PrivateBus bus;
        Service server;
        startMock(server, bus);
        QTRY_VERIFY_WITH_TIMEOUT(bus.hasService(service), 20'000);
        const QTemporaryDir directory;
        QStringList bodies;
        for (const QString &body : {u"Tea"_s, u"Cake"_s}) {
            miss(directory.path(), body);
            bodies.append(body);
            Service program;
            startPlanner(program, bus, directory.path());
            QTRY_COMPARE_WITH_TIMEOUT(notifications(bus.connection(u"client"_s)).size(), bodies.size(), 30'000);
            for (qsizetype row = 0; row < bodies.size(); ++row)
                QCOMPARE(notifications(bus.connection(u"client"_s)).at(row).at(4).toString(), bodies.at(row));
            QTRY_VERIFY(!hasPending(bus));
        }
    }

    void aProgramThatIsKilledBetweenDueAndShownReportsTheReminderOnceMore()
    {
        PrivateBus bus;
        const QTemporaryDir directory;
        miss(directory.path(), u"Tea"_s);
        {
            const SilentDaemon daemon(bus.connection(u"daemon"_s));
            Service program;
            startPlanner(program, bus, directory.path());
            QTRY_COMPARE_WITH_TIMEOUT(daemon.bodies(), QStringList{u"Tea"_s}, 30'000);
            program.kill();
        }
        Service server;
        startMock(server, bus);
        QTRY_VERIFY_WITH_TIMEOUT(bus.hasService(service), 20'000);
        QStringList bodies{u"Tea"_s};
        for (const QString &next : {u"Cake"_s, QString()}) {
            Service program;
            startPlanner(program, bus, directory.path());
            QTRY_COMPARE_WITH_TIMEOUT(notifications(bus.connection(u"client"_s)).size(), bodies.size(), 30'000);
            QCOMPARE(notifications(bus.connection(u"client"_s)).last().at(4).toString(), bodies.last());
            QTRY_VERIFY(!hasPending(bus));
            program.stop();
            if (!next.isEmpty())
                miss(directory.path(), next);
            bodies.append(next);
        }
    }

    void aRealDaemonShowsTheReminderAndAClickComesBack()
    {
        Service display;
        display.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"800x600x24"_s});
        const QString number = display.firstLine();
        QVERIFY2(!number.isEmpty(), "Xvfb did not start");
        PrivateBus bus;
        QProcessEnvironment environment = bus.environment();
        environment.insert(u"DISPLAY"_s, u':' + number);
        Service daemon;
        daemon.start(u"dunst"_s, {}, environment);
        QTRY_VERIFY_WITH_TIMEOUT(bus.hasService(service), 20'000);
        const auto dunst = [&](const QStringList &arguments) {
            QProcess control;
            control.setProcessEnvironment(environment);
            control.start(u"dunstctl"_s, arguments);
            control.waitForFinished();
            return control.readAllStandardOutput();
        };
        Planner planner(bus.connection(u"client"_s));
        const QString identifier = planner.remind(u"Tea & cake"_s);
        planner.clock.advance(60);

        QTRY_COMPARE(dunst({u"count"_s, u"displayed"_s}).trimmed(), QByteArray("1"));
        QTRY_VERIFY(!planner.hasPending());
        dunst({u"action"_s, u"0"_s});
        QTRY_COMPARE(planner.clicked, QStringList{identifier});

        dunst({u"close-all"_s});
        const QVariantMap shown = history(bus.connection(u"client"_s)).value(0);
        QCOMPARE(shown[u"summary"_s].toString(), u"Reminder"_s);
        QCOMPARE(shown[u"body"_s].toString(), u"Tea &amp; cake"_s);

        // A daemon that is started again has forgotten everything; the planner has not, and shows nothing twice.
        daemon.stop();
        QTRY_VERIFY(!bus.hasService(service));
        daemon.start(u"dunst"_s, {}, environment);
        QTRY_VERIFY_WITH_TIMEOUT(bus.hasService(service), 20'000);
        planner.remind(u"Supper"_s);
        planner.clock.advance(60);
        QTRY_VERIFY(!planner.hasPending());
        QTRY_COMPARE(dunst({u"count"_s, u"displayed"_s}).trimmed(), QByteArray("1"));
        QCOMPARE(unanswered(planner.store.waitingReminders().list(), planner.fakes.calendar).size(), 2);
        planner.store.updateReminder(toggled(planner.store.reminders().last(), planner.clock.now()));
        QTRY_COMPARE(dunst({u"count"_s, u"displayed"_s}).trimmed(), QByteArray("0"));
    }
};

TESSALY_TEST_MAIN(NotificationTest)
#include "NotificationTest.moc"
