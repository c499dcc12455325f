#include "app/CommandLine.h"
#include "app/Composition.h"
#include "app/Handover.h"
#include "app/LarkspanApp.h"
#include "app/ScreenTour.h"
#include "app/StartFailure.h"
#include "model/ProgramVersion.h"
// lint-allow(arrows): decides whether there is anything to compose
#include "platform/common/SingleInstance.h"
#include "store/ErrorText.h"
#include "store/PlannerStore.h"
#include "ui/Ui.h"

#include <QGuiApplication>
#include <QLocale>
#include <QQuickStyle>

#include <cstdio>

using namespace tessaly;

namespace {

using Purpose = Handover::Purpose;

constexpr int usageError = 2;

/// The launcher's permission to bring a window to the front.
QByteArray activationToken()
{
    for (const char *name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
        if (const QByteArray token = qgetenv(name); !token.isEmpty())
            return token;
    }
    return {};
}

int runWindow(Composition &composition, SingleInstance *instance, const CommandLine &commandLine,
              const Handover &handover)
{
    LarkspanApp app(composition.store(), composition.preferences(), composition.systemAppearance(),
                    composition.fileDialogs());
    app.offerGlobalShortcut(composition.globalShortcut());
    if (!app.load())
        return 1;
    if (composition.hasNativeMenuBar())
        app.showNativeMenuBar();
    if (instance) {
        QObject::connect(instance, &SingleInstance::activationRequested, &app, &LarkspanApp::raise);
        app.stayWhileRemindersWait();
        QObject::connect(instance, &SingleInstance::residenceRequested, &app, &LarkspanApp::setResident);
        QObject::connect(instance, &SingleInstance::commandRequested, &app,
                         [&app, &composition](const QByteArray &line, const SingleInstance::Reply &reply) {
                             const std::optional<PlannerCommand> command = decodeCommand(line);
                             if (!command || command->verb != PlannerCommand::Verb::Find) {
                                 carryOutEncoded(line, composition.store(), reply);
                                 return;
                             }
                             app.showPalette();
                             reply(encodeAnswer({}));
                         });
    }
    composition.setReminderHandler([&app](const QString &reminder) { app.showReminders(reminder); });
    composition.store().generations().start(QCoreApplication::applicationVersion());
    if (commandLine.isBackground)
        app.setResident();
    if (handover.purpose() == Purpose::Reminders)
        app.showReminders(handover.reminder());
    else if (handover.purpose() == Purpose::Window || handover.purpose() == Purpose::Find)
        app.raise(activationToken());
    else if (!commandLine.isBackground)
        app.show();
    if (commandLine.isFinding || handover.purpose() == Purpose::Find)
        app.showPalette();
    if (!commandLine.opened.isEmpty())
        composition.store().calendarLinks().requestOpening(commandLine.opened);
    composition.store().start();
    const int code = QGuiApplication::exec();
    composition.setReminderHandler({});
    saveOrReportLoss(composition.store());
    return code;
}

/// Sample data has one language; the desktop's is chosen.
AppLanguage demoLanguage()
{
    return QLocale::system().language() == QLocale::Chinese ? AppLanguage::Chinese : AppLanguage::English;
}

/// The planner on its data; null where it cannot be opened and the user does not choose an earlier version.
std::shared_ptr<Composition> compose(const CommandLine &commandLine)
{
    auto missing = MissingData::Refused;
    while (true) {
        const auto composition = Composition::forSystem(commandLine, missing);
        if (composition)
            return composition.value();
        const auto earlier = Composition::remedyFor(composition.error(), commandLine);
        switch (showStartFailure(composition.error(), commandLine.dataDirectory, earlier)) {
        case StartChoice::Close:
            return nullptr;
        case StartChoice::StartEmpty:
            missing = MissingData::StartsEmpty;
            break;
        case StartChoice::OpenEarlier:
            if (const Result<void> opened = Composition::openEarlier(*earlier, commandLine); !opened) {
                (void)showStartFailure(opened.error(), commandLine.dataDirectory);
                return nullptr;
            }
        }
    }
}

/// Has the running planner, which comes to the front, show what this start asks for.
int passOn(const CommandLine &commandLine, SingleInstance &instance)
{
    QList<PlannerCommand> commands;
    if (!commandLine.opened.isEmpty())
        commands.append({.verb = PlannerCommand::Verb::Open, .text = commandLine.opened});
    if (commandLine.isFinding)
        commands.append({.verb = PlannerCommand::Verb::Find});
    for (const PlannerCommand &command : commands) {
        const auto delivered = instance.deliver(encodeCommand(command));
        if (!delivered || !delivered.value())
            return 1;
    }
    return 0;
}

int runPlanner(const CommandLine &commandLine, const Handover &handover)
{
    if (commandLine.isDemo)
        return runWindow(*Composition::forDemo(demoLanguage()), nullptr, commandLine, handover);
    SingleInstance instance(commandLine.dataDirectory);
    if (handover.purpose() != Purpose::None)
        instance.inheritLock();
    const Result<SingleInstance::Role> role =
        instance.claim({.isWindowWanted = !commandLine.isBackground, .activationToken = activationToken()});
    if (!role) {
        (void)showStartFailure(role.error(), commandLine.dataDirectory);
        return 1;
    }
    if (role.value() == SingleInstance::Role::Second)
        return passOn(commandLine, instance);
    const auto composition = compose(commandLine);
    if (!composition)
        return 1;
    return runWindow(*composition, &instance, commandLine, handover);
}

int report(const CommandAnswer &answer)
{
    std::fputs(qUtf8Printable(answer.output), stdout);
    std::fputs(qUtf8Printable(answer.errors), stderr);
    return answer.status;
}

int reportFailure(const Error &error)
{
    std::fprintf(stderr, "tessaly: %s\n", qUtf8Printable(errorText(error, AppLanguage::English)));
    return 1;
}

int runCommand(const CommandLine &commandLine)
{
    SingleInstance instance(commandLine.dataDirectory);
    const Result<std::optional<QByteArray>> delivered = instance.deliver(encodeCommand(commandLine.command));
    if (!delivered)
        return reportFailure(delivered.error());
    if (delivered.value()) {
        const std::optional<CommandAnswer> answer = decodeAnswer(*delivered.value());
        return answer ? report(*answer) : reportFailure({ErrorCode::StorageNewer});
    }
    if (onlyReads(commandLine.command) && Composition::isNothingStored(commandLine))
        return reportFailure({ErrorCode::StorageMissing, commandLine.dataDirectory});
    const auto composition = Composition::forSystem(commandLine);
    if (!composition)
        return reportFailure(composition.error());
    composition.value()->store().generations().start(QCoreApplication::applicationVersion());
    std::optional<CommandAnswer> answer;
    carryOut(commandLine.command, composition.value()->store(), [&answer](const CommandAnswer &given) {
        answer = given;
        QCoreApplication::quit();
    });
    if (!answer)
        QGuiApplication::exec();
    return report(answer.value_or(CommandAnswer{.status = 1}));
}

/// The engine that shows documents shares the window's OpenGL; it is loaded much later, but the choice is made here.
/// Windows that are drawn without OpenGL start faster when it is not requested.
void shareOpenGL()
{
    if (qEnvironmentVariable("QT_QUICK_BACKEND") != QLatin1String("software"))
        QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
}

/// Qt has FreeType embolden the strokes of CFF fonts (Inter, Noto CJK), which is meant for blending in linear light. Qt
/// Quick does not blend that way, so light text on dark looks bold. A quarter of it suits both appearances. The user's
/// own setting takes precedence.
void emboldenStrokesLess()
{
    if (qEnvironmentVariableIsEmpty("FREETYPE_PROPERTIES"))
        qputenv("FREETYPE_PROPERTIES", "cff:darkening-parameters=500,110,1000,75,1667,75,2333,0");
}

/// Without an application object: help, version and refusal need no display, and Qt forgets how to make things
/// accessible when a second such object follows a first.
CommandLine readCommandLine(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    CommandLine commandLine = parseCommandLine(arguments);
    commandLine.program = Handover::program();
    return commandLine;
}

/// Whether the program for the background can do what is asked for. Where there is no desktop, the start fails here.
bool isForBackground(const CommandLine &commandLine)
{
    const bool hasDesktop = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                            qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    return commandLine.task == CommandLine::Task::Run && commandLine.isBackground && !commandLine.isDemo &&
           commandLine.opened.isEmpty() && hasDesktop;
}

int run(const CommandLine &commandLine, const Handover &handover, int argc, char *argv[])
{
    if (commandLine.task != CommandLine::Task::Run && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    shareOpenGL();
    emboldenStrokesLess();
    QGuiApplication application(argc, argv);
    applyInterfaceFont();
    QGuiApplication::setDesktopFileName(QStringLiteral("tessaly"));
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    switch (commandLine.task) {
    case CommandLine::Task::SelfTest:
        return runSelfTest();
    case CommandLine::Task::Pictures:
        return takePictures(commandLine.picturesDirectory);
    case CommandLine::Task::Command:
        return runCommand(commandLine);
    default:
        return runPlanner(commandLine, handover);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const Handover handover(argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tessaly"));
    QCoreApplication::setApplicationVersion(programVersion());
    forgetRelativeBaseDirectories();
    nameTimeZone();
    const CommandLine commandLine = readCommandLine(argc, argv);
    if (commandLine.task == CommandLine::Task::Refuse) {
        std::fprintf(stderr, "tessaly: %s\nTry 'tessaly --help'.\n", qUtf8Printable(commandLine.text));
        return usageError;
    }
    if (commandLine.task == CommandLine::Task::Print) {
        std::fputs(qUtf8Printable(commandLine.text), stdout);
        return 0;
    }
    if (handover.purpose() == Purpose::None && isForBackground(commandLine))
        handover.runInBackground(); // Returns where it is missing: then this program does it.
    return run(commandLine, handover, argc, argv);
}
