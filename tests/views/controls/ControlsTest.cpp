#include "tests/support/TestMain.h"
#include "ui/Ui.h"

#include <QQmlEngine>
#include <QtQuickTest>

namespace {

/// What the program sets up before it loads a control.
class Setup : public QObject
{
    Q_OBJECT

public slots:
    static void applicationAvailable() { tessaly::applyInterfaceFont(); }
    static void qmlEngineAvailable(QQmlEngine *engine) { tessaly::installImageProviders(*engine); }
};

} // namespace

int main(int argc, char *argv[])
{
    tessaly::fixTestEnvironment();
    Setup setup;
    return quick_test_main_with_setup(argc, argv, "controls", QUICK_TEST_SOURCE_DIR, &setup);
}

#include "ControlsTest.moc"
