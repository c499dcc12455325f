#include "app/LarkspanApp.h"

#include "app/CloseGuard.h"
#include "app/WindowMemory.h"
#include "model/Uuid.h"
#include "platform/SystemAppearance.h"
#include "store/PlannerSearch.h"
#include "store/PlannerStore.h"
#include "store/PlannerStoreQml.h"
#include "ui/Ui.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QTimer>

#include <utility>

namespace tessaly {

namespace {

/// How long to wait for the desktop's colour scheme before the window is shown in a guessed one.
constexpr int appearanceWaitMs = 150;

/// After this time the window shows its first screen, and there is time to read the others.
constexpr int calmMs = 500;

/// After this time the start is over for good, and there is time to prepare a search.
constexpr int idleMs = 15'000;

/// Where the module with the web engine is: beside the program in its build directory, or where it was installed.
void addEngineImportPaths(QQmlEngine &engine)
{
    const QString program = QCoreApplication::applicationDirPath();
    // At the end of the list, because nearly all modules are elsewhere.
    engine.setImportPathList(engine.importPathList() << program + QStringLiteral("/engine")
                                                     << program + QStringLiteral("/" TESSALY_ENGINE_FROM_PROGRAM));
}

} // namespace

LarkspanApp::LarkspanApp(PlannerStore &store, Preferences &preferences, SystemAppearance &systemAppearance,
                         FileDialogs &fileDialogs, QObject *parent)
    : QObject(parent), m_store(store), m_preferences(preferences), m_systemAppearance(systemAppearance),
      m_shell(store, preferences, systemAppearance, fileDialogs), m_documentDesktop(fileDialogs), m_qtTexts(store)
{
    PlannerStoreQml::setStore(&store);
    // Before the screens hear of it: the dates in their bindings are JavaScript's.
    connect(&store, &PlannerStore::timeZoneChanged, this,
            [this] { m_engine.evaluate(QStringLiteral("Date.timeZoneUpdated()")); });
    DocumentDesktop::setInstance(&m_documentDesktop);
    QCoreApplication::installTranslator(&m_qtTexts);
}

LarkspanApp::~LarkspanApp() = default;

void LarkspanApp::offerGlobalShortcut(GlobalShortcut &shortcut)
{
    m_shell.setGlobalShortcut(shortcut);
    connect(m_shell.globalShortcut(), &GlobalShortcutModel::pressed, this, [this](const QByteArray &activationToken) {
        raise(activationToken);
        showPalette();
    });
}

bool LarkspanApp::load()
{
    installImageProviders(m_engine);
    ignoreHeldKeysOnButtons(m_engine);
    addEngineImportPaths(m_engine);
    // Without QQmlApplicationEngine, which looks for variants of every file.
    QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/Main.qml")));
    m_window.reset(qobject_cast<QQuickWindow *>(
        component.createWithInitialProperties({{QStringLiteral("shell"), QVariant::fromValue(&m_shell)}})));
    if (!m_window) {
        qWarning("tessaly: no window: %s", qUtf8Printable(component.errorString()));
        return false;
    }
    guardClosing();
    connect(m_window.get(), SIGNAL(quitRequested()), this, SLOT(quit()));
    // What the user did elsewhere was done while another window was active.
    connect(m_window.get(), &QWindow::activeChanged, &m_store, &PlannerStore::readLaunchAtLogin);
    connect(&m_store.calendarLinks(), &CalendarLinks::openingRequested, this,
            [this] { showSection(ShellModel::Schedule); });
    return true;
}

void LarkspanApp::guardClosing()
{
    m_closeGuard = std::make_unique<CloseGuard>(*m_window, m_store);
    auto *content = m_window->property("content").value<QObject *>();
    connect(m_closeGuard.get(), &CloseGuard::refused, content,
            [content] { content->setProperty("showUnsaved", true); });
    connect(content, SIGNAL(quitUnsavedChosen()), m_closeGuard.get(), SLOT(closeAnyway()));
}

void LarkspanApp::stayWhileRemindersWait()
{
    connect(m_window.get(), SIGNAL(closing(QQuickCloseEvent *)), this, SLOT(reportResidence()));
    connect(m_window.get(), &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (isVisible)
            decideWhetherToStay();
    });
    connect(&m_store.waitingReminders(), &WaitingReminders::changed, this, &LarkspanApp::decideWhetherToStay);
    connect(&m_store.waitingReminders(), &WaitingReminders::showRequested, this, [this] { showReminders(); });
    decideWhetherToStay();
}

void LarkspanApp::setResident()
{
    m_isResident = true;
    decideWhetherToStay();
}

void LarkspanApp::decideWhetherToStay()
{
    const bool stays = m_isResident || m_store.waitingReminders().hasPending();
    // Once without a window, the program does not end with the last reminder: a click on that opens the window again.
    if (stays || !m_hasAppeared || m_window->isVisible())
        QGuiApplication::setQuitOnLastWindowClosed(!stays);
}

void LarkspanApp::reportResidence()
{
    if (!m_isResident && !QGuiApplication::quitOnLastWindowClosed())
        m_store.reportResidence();
}

void LarkspanApp::showNativeMenuBar()
{
    QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/NativeMenuBar.qml")));
    m_nativeMenuBar.reset(
        component.createWithInitialProperties({{QStringLiteral("content"), m_window->property("content")},
                                               {QStringLiteral("window"), QVariant::fromValue(m_window.get())}}));
    if (!m_nativeMenuBar)
        qWarning("tessaly: no native menu bar: %s", qUtf8Printable(component.errorString()));
}

void LarkspanApp::show()
{
    m_windowMemory = std::make_unique<WindowMemory>(*m_window, m_preferences);
    if (m_systemAppearance.isSettled()) {
        appear();
        return;
    }
    connect(&m_shell, &ShellModel::appearanceChanged, this, &LarkspanApp::appear, Qt::SingleShotConnection);
    QTimer::singleShot(appearanceWaitMs, this, &LarkspanApp::appear);
}

void LarkspanApp::appear()
{
    if (std::exchange(m_hasAppeared, true))
        return;
    m_window->setVisible(true);
    if (m_isAsked)
        bringToFront();
    QTimer::singleShot(calmMs, this, &LarkspanApp::prepareScreens);
    QTimer::singleShot(idleMs, this, [this] { PlannerSearch::of(m_store).prepare(PlannerSearch::Pace::Calm); });
    // The first start asks for the language, in which the planner names its own calendar.
    if (m_shell.hasAskedPreferredName())
        QTimer::singleShot(0, m_store.calendarSync(), &CalendarSync::startAutomaticCalendarSync);
    else
        connect(&m_shell, &ShellModel::hasAskedPreferredNameChanged, m_store.calendarSync(),
                &CalendarSync::startAutomaticCalendarSync, Qt::SingleShotConnection);
}

void LarkspanApp::prepareScreens()
{
    if (m_shell.globalShortcut())
        m_shell.globalShortcut()->start();
    const auto screens = m_window->property("content").value<QObject *>()->property("screens").value<QList<QUrl>>();
    for (const QUrl &screen : screens)
        m_screens.push_back(std::make_unique<QQmlComponent>(&m_engine, screen, QQmlComponent::Asynchronous));
}

void LarkspanApp::raise(const QByteArray &activationToken)
{
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken); // Where Qt's Wayland plugin looks for it.
    m_isAsked = true;
    if (!m_windowMemory)
        show();
    if (!m_hasAppeared)
        return;
    if (!m_window->isVisible()) {
        m_windowMemory->putBack();
        m_window->setVisible(true);
    }
    bringToFront();
}

void LarkspanApp::bringToFront()
{
    if (m_window->visibility() == QWindow::Minimized)
        m_window->setWindowStates(m_window->windowStates() & ~Qt::WindowMinimized);
    m_window->raise();
    m_window->requestActivate();
}

void LarkspanApp::showPalette()
{
    QMetaObject::invokeMethod(m_window.get(), "showPalette");
}

void LarkspanApp::quit()
{
    const bool staysWithoutWindow = !QGuiApplication::quitOnLastWindowClosed();
    QGuiApplication::setQuitOnLastWindowClosed(true);
    if (!m_window->close() && staysWithoutWindow)
        QGuiApplication::setQuitOnLastWindowClosed(false);
}

void LarkspanApp::showReminders(const QString &reminder)
{
    showSection(ShellModel::Reminders);
    raise({});
    if (const QUuid id(reminder); !id.isNull())
        QMetaObject::invokeMethod(m_window.get(), "reveal", Q_ARG(int, ShellModel::Reminders),
                                  Q_ARG(QString, uuidText(id)));
}

void LarkspanApp::showSection(ShellModel::SidebarItem section)
{
    if (auto *content = m_window->property("content").value<QObject *>())
        content->setProperty("section", section);
}

} // namespace tessaly
