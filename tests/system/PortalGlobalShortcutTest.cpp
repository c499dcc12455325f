#include "platform/linux/PortalGlobalShortcut.h"
#include "tests/support/TestMain.h"
#include "tests/system/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusContext>
#include <QDBusMetaType>
#include <QTimer>

using namespace tessaly;
using namespace Qt::StringLiterals;

using Shortcut = std::pair<QString, QVariantMap>;
using State = GlobalShortcut::State;

namespace {

const QString portalPath = u"/org/freedesktop/portal/desktop"_s;
const QString sessionPath = u"/org/freedesktop/portal/desktop/session/one"_s;

} // namespace

/// A portal that answers as the test wants.
class FakePortal : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.GlobalShortcuts")
    Q_PROPERTY(uint version MEMBER version)

public:
    uint version = 1;
    bool answersFirst = false;
    /// What the user answers in the portal's dialog; 0 agrees.
    uint response = 0;
    bool isRefusing = false;
    QString description;
    int calls = 0;

    void press(const QString &id)
    {
        emitSignal(portalPath, u"org.freedesktop.portal.GlobalShortcuts"_s, u"Activated"_s,
                   {QVariant::fromValue(QDBusObjectPath(sessionPath)), id, QVariant::fromValue(qulonglong(5)),
                    QVariantMap{{u"activation_token"_s, u"token"_s}}});
    }
    void closeSession() { emitSignal(sessionPath, u"org.freedesktop.portal.Session"_s, u"Closed"_s, {}); }

public slots:
    QDBusObjectPath CreateSession(const QVariantMap &options)
    {
        if (isRefusing) {
            sendErrorReply(QDBusError::UnknownMethod, u"no shortcuts"_s);
            return {};
        }
        return answer(options, 0, {{u"session_handle"_s, sessionPath}});
    }

    // Qt matches a call with whatever arguments to a slot that takes the message alone.
    QDBusObjectPath BindShortcuts(const QDBusMessage &call)
    {
        const QList<QVariant> arguments = call.arguments();
        const auto session = arguments.at(0).value<QDBusObjectPath>();
        const auto wanted = qdbus_cast<QList<Shortcut>>(arguments.at(1).value<QDBusArgument>());
        if (session.path() != sessionPath || wanted.size() != 1)
            return {};
        description = wanted.constFirst().second.value(u"description"_s).toString();
        const QList<Shortcut> bound{{wanted.constFirst().first, {{u"trigger_description"_s, u"Ctrl+Alt+K"_s}}}};
        return answer(qdbus_cast<QVariantMap>(arguments.at(3).value<QDBusArgument>()), response,
                      {{u"shortcuts"_s, QVariant::fromValue(bound)}});
    }

private:
    QDBusObjectPath answer(const QVariantMap &options, uint with, const QVariantMap &results)
    {
        ++calls;
        const QString handle = u"%1/request/%2/%3"_s.arg(portalPath, message().service().mid(1).replace(u'.', u'_'),
                                                         options.value(u"handle_token"_s).toString());
        const auto send = [this, handle, with, results] {
            emitSignal(handle, u"org.freedesktop.portal.Request"_s, u"Response"_s, {with, results});
        };
        m_bus = connection();
        if (answersFirst)
            send();
        else
            QTimer::singleShot(20, this, send);
        return QDBusObjectPath(handle);
    }

    void emitSignal(const QString &path, const QString &interface, const QString &name, const QVariantList &arguments)
    {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, name);
        signal.setArguments(arguments);
        m_bus.send(signal);
    }

    QDBusConnection m_bus{u"none"_s};
};

/// The adapter on a private bus.
class PortalGlobalShortcutTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        qDBusRegisterMetaType<Shortcut>();
        qDBusRegisterMetaType<QList<Shortcut>>();
        m_portal = std::make_unique<FakePortal>();
        QVERIFY(portalBus().registerObject(portalPath, m_portal.get(),
                                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties));
        QVERIFY(portalBus().registerService(u"org.freedesktop.portal.Desktop"_s));
    }

    void cleanup()
    {
        portalBus().unregisterService(u"org.freedesktop.portal.Desktop"_s);
        portalBus().unregisterObject(portalPath);
    }

    void theKeyIsGrantedPressedAndGivenBack_data()
    {
        QTest::addColumn<bool>("answersFirst");
        QTest::newRow("the reply first") << false;
        QTest::newRow("the answer first") << true;
    }
    void theKeyIsGrantedPressedAndGivenBack()
    {
        QFETCH(bool, answersFirst);
        m_portal->answersFirst = answersFirst;
        PortalGlobalShortcut shortcut(clientBus());
        QList<QByteArray> presses;
        shortcut.setPressHandler([&presses](const QByteArray &token) { presses.append(token); });
        QCOMPARE(m_portal->calls, 0);

        shortcut.turnOn(u"Find and add"_s);
        QCOMPARE(shortcut.state(), State::Waiting);
        QTRY_COMPARE(shortcut.state(), State::On);
        QCOMPARE(shortcut.keys(), u"Ctrl+Alt+K"_s);
        QCOMPARE(m_portal->description, u"Find and add"_s);

        m_portal->press(u"another"_s);
        m_portal->press(u"find"_s);
        QTRY_COMPARE(presses, QList<QByteArray>{"token"});

        shortcut.turnOff();
        QCOMPARE(shortcut.state(), State::Off);
        shortcut.turnOn(u"again"_s);
        QTRY_COMPARE(shortcut.state(), State::On);
        m_portal->closeSession();
        QTRY_COMPARE(shortcut.state(), State::Off);
    }

    void theUserRefuses()
    {
        m_portal->response = 1;
        PortalGlobalShortcut shortcut(clientBus());
        shortcut.turnOn(u"Find and add"_s);
        QTRY_COMPARE(shortcut.state(), State::Off);
    }

    void whetherThereIsOne_data()
    {
        QTest::addColumn<bool>("hasPortal");
        QTest::addColumn<bool>("hasBus");
        QTest::addColumn<uint>("version");
        QTest::addColumn<State>("state");
        QTest::newRow("a portal") << true << true << 1U << State::Off;
        QTest::newRow("a portal without shortcuts") << true << true << 0U << State::Missing;
        QTest::newRow("no portal") << false << true << 1U << State::Missing;
        QTest::newRow("no bus") << false << false << 1U << State::Missing;
    }
    void whetherThereIsOne()
    {
        QFETCH(bool, hasPortal);
        QFETCH(bool, hasBus);
        QFETCH(uint, version);
        QFETCH(State, state);
        m_portal->version = version;
        m_portal->isRefusing = version == 0;
        if (!hasPortal)
            portalBus().unregisterService(u"org.freedesktop.portal.Desktop"_s);
        const QDBusConnection bus = hasBus ? clientBus() : QDBusConnection(u"none"_s);
        PortalGlobalShortcut asked(bus);
        asked.look();
        QTRY_COMPARE(asked.state(), state);
        PortalGlobalShortcut turned(bus);
        turned.turnOn({});
        QTRY_COMPARE(turned.state(), state == State::Off ? State::On : State::Missing);
    }

private:
    [[nodiscard]] QDBusConnection portalBus() { return m_bus.connection(u"portal"_s); }
    [[nodiscard]] QDBusConnection clientBus() { return m_bus.connection(u"client"_s); }

    PrivateBus m_bus;
    std::unique_ptr<FakePortal> m_portal;
};

TESSALY_TEST_MAIN(PortalGlobalShortcutTest)
#include "PortalGlobalShortcutTest.moc"
