#include "app/CommandLine.h"
#include "app/Handover.h"
#include "app/PlannerParts.h"
#include "model/ProgramVersion.h"
// lint-allow(arrows): decides whether there is anything to compose
#include "platform/common/SingleInstance.h"
// lint-allow(arrows): only the programs name adapters
#include "platform/linux/PortalGlobalShortcut.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QPointer>
#include <QTimer>

#include <cstdio>
#include <utility>

using namespace tessaly;

namespace {

using Purpose = Handover::Purpose;

constexpr int usageError = 2;

/// The planner while it has no window.
class BackgroundPlanner
{
public:
    BackgroundPlanner(PlannerParts &parts, SingleInstance &instance) : m_store(*parts.store)
    {
        QObject::connect(&instance, &SingleInstance::activationRequested, &m_context, [this](const QByteArray &token) {
            m_activationToken = token;
            endFor(Purpose::Window);
        });
        QObject::connect(&instance, &SingleInstance::commandRequested, &m_context,
                         [this](const QByteArray &line, const SingleInstance::Reply &reply) { carryOut(line, reply); });
        QObject::connect(&m_store.waitingReminders(), &WaitingReminders::showRequested, &m_context,
                         [this] { endFor(Purpose::Reminders); });
        parts.notificationPresenter->setActivationHandler([this](const QString &reminder) {
            m_reminder = reminder;
            endFor(Purpose::Reminders);
        });
        if (parts.preferences->get<bool>(keys::isShortcutGlobal).value_or(false))
            askForShortcut();
        // The session is over: the next one has a bus of its own.
        QDBusConnection::sessionBus().connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                                              QStringLiteral("org.freedesktop.DBus.Local"),
                                              QStringLiteral("Disconnected"), qApp, SLOT(quit()));
    }

    /// What the window is wanted for; Purpose::None when the planner ends.
    Purpose run()
    {
        m_store.generations().start(QCoreApplication::applicationVersion());
        m_store.start();
        QCoreApplication::exec();
        return m_purpose;
    }

    [[nodiscard]] const QByteArray &activationToken() const { return m_activationToken; }
    /// The one that was clicked.
    [[nodiscard]] const QString &reminder() const { return m_reminder; }

private:
    void askForShortcut()
    {
        m_shortcut.setPressHandler([this](const QByteArray &token) {
            m_activationToken = token;
            endFor(Purpose::Find);
        });
        m_shortcut.setChangeHandler([this] {
            // It was refused; asking at every start would be a nuisance.
            if (std::exchange(m_shortcutState, m_shortcut.state()) == GlobalShortcut::State::Waiting &&
                m_shortcut.state() == GlobalShortcut::State::Off)
                m_store.savePreference(keys::isShortcutGlobal, false);
        });
        m_shortcut.turnOn(m_store.text(QStringLiteral("查找与添加"), QStringLiteral("Find and add")));
    }

    void endFor(Purpose purpose)
    {
        m_purpose = purpose;
        endWhenDone();
    }

    void endWhenDone()
    {
        if (m_purpose != Purpose::None && m_commandsUnderWay == 0)
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    }

    void carryOut(const QByteArray &line, const SingleInstance::Reply &reply)
    {
        ++m_commandsUnderWay;
        carryOutEncoded(line, m_store, [this, isThere = QPointer(&m_context), reply](const QByteArray &answer) {
            if (!isThere)
                return;
            reply(answer);
            --m_commandsUnderWay;
            endWhenDone();
        });
    }

    PlannerStore &m_store;
    QObject m_context;
    /// Left to the program with a window once there is one.
    PortalGlobalShortcut m_shortcut;
    GlobalShortcut::State m_shortcutState = GlobalShortcut::State::Unknown;
    QByteArray m_activationToken;
    QString m_reminder;
    Purpose m_purpose = Purpose::None;
    int m_commandsUnderWay = 0;
};

/// What the program with a window is to do; Purpose::None for nothing.
struct Request
{
    Purpose purpose = Purpose::None;
    QByteArray activationToken = {};
    QString reminder = {};
};

Request waitForReminders(const CommandLine &commandLine, SingleInstance &instance)
{
    Result<std::unique_ptr<PlannerParts>> opened = systemParts(commandLine);
    // The other program says so, once it has a window.
    if (!opened || opened.value()->store->hadUnreadableData())
        return {Purpose::Background};
    const std::unique_ptr<PlannerParts> parts = opened.takeValue();
    instance.setEndsWithActivation();
    BackgroundPlanner planner(*parts, instance);
    const Purpose purpose = planner.run();
    parts->notificationPresenter->setActivationHandler({});
    saveOrReportLoss(*parts->store);
    return {purpose, planner.activationToken(), planner.reminder()};
}

int run(const CommandLine &commandLine, const Handover &handover)
{
    SingleInstance instance(commandLine.dataDirectory);
    const Result<SingleInstance::Role> role = instance.claim({.isWindowWanted = false});
    if (role && role.value() == SingleInstance::Role::Second)
        return 0;
    const Request request = role ? waitForReminders(commandLine, instance) : Request{Purpose::Background};
    if (request.purpose == Purpose::None)
        return 0;
    // Here, so that the directory stays locked.
    handover.runWithWindow(request.purpose, request.activationToken, request.reminder);
    std::fprintf(stderr, "tessaly: %s is missing.\n", qUtf8Printable(handover.windowProgram()));
    return 1;
}

} // namespace

int main(int argc, char *argv[])
{
    const Handover handover(argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tessaly"));
    QCoreApplication::setApplicationVersion(programVersion());
    forgetRelativeBaseDirectories();
    nameTimeZone();
    const QCoreApplication application(argc, argv);
    if (handover.windowProgram() == Handover::program() || !handover.windowProgram().startsWith(u'/')) {
        std::fputs("tessaly: Run 'tessaly --background'.\n", stderr);
        return usageError;
    }
    CommandLine commandLine = parseCommandLine(QCoreApplication::arguments());
    commandLine.program = handover.windowProgram();
    return run(commandLine, handover);
}
