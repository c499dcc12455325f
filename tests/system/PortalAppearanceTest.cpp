#include "platform/linux/PortalAppearance.h"
#include "tests/support/TestMain.h"
#include "tests/system/PrivateBus.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QPalette>
#include <QSignalSpy>

using namespace tessaly;

using Settings = QMap<QString, QVariantMap>;

/// A settings portal with values that the test chooses.
class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    QVariantMap values;

public slots:
    QMap<QString, QVariantMap> ReadAll(const QStringList &nameSpaces) { return {{nameSpaces.value(0), values}}; }

signals:
    void SettingChanged(const QString &nameSpace, const QString &key, const QDBusVariant &value);
};

/// The adapter on a private bus.
class PortalAppearanceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qDBusRegisterMetaType<Settings>();
        QVERIFY(portalBus().isConnected());
    }

    void cleanup()
    {
        portalBus().unregisterService(QStringLiteral("org.freedesktop.portal.Desktop"));
        QGuiApplication::setPalette(QPalette());
    }

    void thePortalDecides_data()
    {
        QTest::addColumn<QVariantMap>("values");
        QTest::addColumn<bool>("isDark");
        QTest::addColumn<bool>("isHighContrast");

        const auto scheme = [](uint number) { return QVariantMap{{QStringLiteral("color-scheme"), number}}; };
        QTest::newRow("dark") << scheme(1) << true << false;
        QTest::newRow("light") << scheme(2) << false << false;
        QTest::newRow("no preference") << scheme(0) << false << false;
        QTest::newRow("a value of later versions") << scheme(9) << false << false;
        QTest::newRow("nothing known") << QVariantMap() << false << false;
        QTest::newRow("contrast") << QVariantMap{{QStringLiteral("contrast"), 1U}} << false << true;
    }

    void thePortalDecides()
    {
        QFETCH(const QVariantMap, values);
        QFETCH(const bool, isDark);
        QFETCH(const bool, isHighContrast);
        FakePortal portal;
        portal.values = values;
        offer(portal);

        const PortalAppearance appearance(clientBus());
        QTRY_VERIFY(appearance.isSettled());

        QCOMPARE(appearance.current().isDark, isDark);
        QCOMPARE(appearance.current().isHighContrast, isHighContrast);
    }

    void aChangeIsFollowed()
    {
        FakePortal portal;
        offer(portal);
        PortalAppearance appearance(clientBus());
        QTRY_VERIFY(appearance.isSettled());
        int changes = 0;
        appearance.setChangeHandler([&changes] { ++changes; });

        emit portal.SettingChanged(QStringLiteral("org.gnome.desktop"), QStringLiteral("color-scheme"),
                                   QDBusVariant(1U));
        emit portal.SettingChanged(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme"),
                                   QDBusVariant(1U));

        QTRY_VERIFY(appearance.current().isDark);
        QCOMPARE(changes, 1);
    }

    void withoutAPortalThePaletteDecides()
    {
        PortalAppearance appearance(clientBus());
        QTRY_VERIFY(appearance.isSettled());
        QVERIFY(!appearance.current().isDark);
        int changes = 0;
        appearance.setChangeHandler([&changes] { ++changes; });

        QGuiApplication::setPalette(
            QPalette(Qt::white, Qt::black, Qt::white, Qt::black, Qt::gray, Qt::white, Qt::white, Qt::black, Qt::black));

        QTRY_VERIFY(changes > 0);
        QVERIFY(appearance.current().isDark);
    }

    void withoutABusNothingIsWaitedFor()
    {
        const PortalAppearance appearance(QDBusConnection(QStringLiteral("no such connection")));
        QVERIFY(appearance.isSettled());
    }

private:
    QDBusConnection portalBus() { return m_bus.connection(QStringLiteral("portal")); }
    QDBusConnection clientBus() { return m_bus.connection(QStringLiteral("client")); }

    void offer(FakePortal &portal)
    {
        QDBusConnection bus = portalBus();
        bus.unregisterObject(QStringLiteral("/org/freedesktop/portal/desktop"));
        QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal,
                                   QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    }

    PrivateBus m_bus;
};

TESSALY_TEST_MAIN(PortalAppearanceTest)
#include "PortalAppearanceTest.moc"
