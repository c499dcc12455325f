#pragma once

#include "app/QtTexts.h"
#include "views/documents/DocumentDesktop.h"
#include "views/shell/ShellModel.h"

#include <QObject>
#include <QQmlEngine>

#include <memory>
#include <vector>

class QQmlComponent;
class QQuickWindow;

namespace tessaly {

class FileDialogs;
class GlobalShortcut;
class PlannerStore;
class Preferences;
class SystemAppearance;
class CloseGuard;
class WindowMemory;

/// The running program: the one planner store, its window, and what connects the two.
class LarkspanApp : public QObject
{
    Q_OBJECT

public:
    /// All must outlive the application. Only one application may exist at a time.
    LarkspanApp(PlannerStore &store, Preferences &preferences, SystemAppearance &systemAppearance,
                FileDialogs &fileDialogs, QObject *parent = nullptr);
    ~LarkspanApp() override;

    /// Offers the user a key that opens the field that finds and adds from every program. Must outlive the application;
    /// to be called before load().
    void offerGlobalShortcut(GlobalShortcut &shortcut);
    /// Loads the window without showing it. False when it cannot be loaded.
    [[nodiscard]] bool load();
    /// Keeps the program running when its window is closed while reminders wait, and says so the first time.
    /// Precondition: load().
    void stayWhileRemindersWait();
    /// Keeps the program running whenever its window is closed. Precondition: load().
    void setResident();
    /// Puts the menu commands into the desktop's own menu bar as well. Precondition: load().
    void showNativeMenuBar();
    /// Shows the window where it last was, as soon as the desktop has reported its colour scheme, and starts the
    /// automatic calendar sync. Precondition: load().
    void show();
    /// Brings the window to the front, with the token that the desktop gave for that, if any. Shows it when it was
    /// closed or never shown.
    void raise(const QByteArray &activationToken);
    /// Shows the field that finds and adds over the window, unless a question there waits for its answer.
    void showPalette();
    /// Brings the window to the front with the to-do screen, at the to-do of the reminder if there is one, see
    /// WaitingReminder::identifier.
    void showReminders(const QString &reminder = {});

    /// Precondition of both: load().
    [[nodiscard]] QQuickWindow &window() const { return *m_window; }
    [[nodiscard]] ShellModel &shell() { return m_shell; }
    [[nodiscard]] DocumentDesktop &documentDesktop() { return m_documentDesktop; }

    [[nodiscard]] QQmlEngine &engine() { return m_engine; }

public slots:
    /// Closes the window as the user would, and ends the program, also one that stays without its window.
    void quit();

private slots:
    void reportResidence();

private:
    void showSection(ShellModel::SidebarItem section);
    void guardClosing();
    void appear();
    void bringToFront();
    /// Reads the screens that the start has left out, beside what the user does.
    void prepareScreens();
    void decideWhetherToStay();

    PlannerStore &m_store;
    Preferences &m_preferences;
    SystemAppearance &m_systemAppearance;
    ShellModel m_shell;
    DocumentDesktop m_documentDesktop;
    QtTexts m_qtTexts;
    QQmlEngine m_engine;
    std::vector<std::unique_ptr<QQmlComponent>> m_screens;
    std::unique_ptr<QQuickWindow> m_window;
    std::unique_ptr<QObject> m_nativeMenuBar;
    std::unique_ptr<CloseGuard> m_closeGuard;
    std::unique_ptr<WindowMemory> m_windowMemory;
    bool m_isResident = false;
    bool m_hasAppeared = false;
    /// Whether the window is to come to the front when it appears.
    bool m_isAsked = false;
};

} // namespace tessaly
