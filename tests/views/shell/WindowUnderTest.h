#pragma once

#include "app/LarkspanApp.h"
#include "platform/fake/FakeSystemAppearance.h"
#include "tests/store/StoreUnderTest.h"
#include "tests/support/FakeFileDialogs.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

namespace tessaly {

/// The program's window over fakes, driven as a user drives it. Prepare the planner, then open().
class WindowUnderTest
{
public:
    StoreUnderTest planner;
    FakeSystemAppearance appearance;
    FakeFileDialogs fileDialogs;

    /// Opens the window, after the former one if there was one, and waits until it shows.
    void open();
    /// Opens it over these records at one of the screens, with the name already asked for.
    void openAt(ShellModel::SidebarItem section, const SavedData &data, const QString &language = QStringLiteral("en"));
    /// Asks for the window as a second start of the program does.
    void raise() { m_app->raise({}); }
    /// Ends the program.
    void quit() { m_app.reset(); }

    [[nodiscard]] LarkspanApp &app() const { return *m_app; }
    [[nodiscard]] QQuickWindow &window() const { return m_app->window(); }
    [[nodiscard]] ShellModel &shell() const { return m_app->shell(); }
    [[nodiscard]] DocumentDesktop &documentDesktop() const { return m_app->documentDesktop(); }
    /// A view state of the window's content, such as "showNamePrompt".
    [[nodiscard]] QVariant state(const char *name) const;
    void setState(const char *name, const QVariant &value) const;
    [[nodiscard]] QQuickItem *screen() const;

    /// The visible item with this accessible name and role, or nothing. Items of sheets come before what they cover.
    [[nodiscard]] QQuickItem *find(QAccessible::Role role, const QString &name) const;
    [[nodiscard]] bool hasFocus(QAccessible::Role role, const QString &name) const;
    /// In the window; (0, 0) when there is no such item.
    [[nodiscard]] QPoint middleOf(QAccessible::Role role, const QString &name) const;
    /// Presses the middle of the item. False when there is no such item.
    [[nodiscard]] bool click(QAccessible::Role role, const QString &name) const;
    void type(const QString &text) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;

    /// Every text that can be seen, and every name that a screen reader reads, sheets included.
    [[nodiscard]] QStringList visibleTexts() const;

private:
    std::unique_ptr<LarkspanApp> m_app;
};

} // namespace tessaly
