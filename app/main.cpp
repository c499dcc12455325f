#include "platform/common/SystemClock.h"
#include "platform/fake/FakeEventStore.h"
#include "platform/fake/FakeFeedDownloader.h"
#include "platform/fake/FakeLoginItem.h"
#include "platform/fake/FakeNotificationCenter.h"
#include "platform/fake/FakePreferences.h"
#include "store/PlannerStore.h"
#include "store/PlannerStoreQml.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("Tessaly"));
    tessaly::FakePreferences preferences;
    tessaly::FakeEventStore eventStore;
    tessaly::FakeNotificationCenter notificationCenter;
    tessaly::FakeLoginItem loginItem;
    tessaly::FakeFeedDownloader feedDownloader;
    const tessaly::SystemClock clock;
    tessaly::PlannerStore store({preferences, eventStore, notificationCenter, loginItem, feedDownloader, clock,
                                 tessaly::UserCalendar::system()});
    tessaly::PlannerStoreQml::setStore(&store);
    QQmlApplicationEngine engine;
    engine.load(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/Main.qml")));
    return engine.rootObjects().isEmpty() ? 1 : QGuiApplication::exec();
}
