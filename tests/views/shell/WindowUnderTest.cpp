#include "tests/views/shell/WindowUnderTest.h"

#include <QAccessible>
#include <QQuickStyle>
#include <QTest>

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

/// Back to front, as they are painted.
void collect(QQuickItem *item, QList<QQuickItem *> &items)
{
    if (!item->isVisible() || item->opacity() == 0)
        return;
    items.append(item);
    QList<QQuickItem *> children = item->childItems();
    std::stable_sort(children.begin(), children.end(),
                     [](const QQuickItem *a, const QQuickItem *b) { return a->z() < b->z(); });
    for (QQuickItem *child : std::as_const(children))
        collect(child, items);
}

QList<QQuickItem *> visibleItems(const QQuickWindow &window)
{
    QList<QQuickItem *> items;
    collect(window.contentItem(), items);
    return items;
}

} // namespace

void WindowUnderTest::open()
{
    // As main() does, before any QML is read.
    static const bool isPrepared = [] {
        QQuickStyle::setStyle(QStringLiteral("Basic"));
        QGuiApplication::setApplicationName(QStringLiteral("Tessaly"));
        return true;
    }();
    Q_UNUSED(isPrepared)
    m_app.reset();
    PlannerStore &store = planner.start();
    m_app = std::make_unique<LarkspanApp>(store, planner.preferences, appearance, fileDialogs);
    QVERIFY(m_app->load());
    m_app->show();
    QVERIFY(QTest::qWaitForWindowExposed(&window()));
    window().requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&window()));
}

void WindowUnderTest::openAt(ShellModel::SidebarItem section, const SavedData &data, const QString &language)
{
    planner.put(keys::interfaceLanguage, language);
    planner.put(keys::hasAskedPreferredName, true);
    planner.put(keys::storageKey, *encodeSavedData(data));
    open();
    setState("section", section);
    QTRY_VERIFY(screen());
}

QVariant WindowUnderTest::state(const char *name) const
{
    return window().property("content").value<QObject *>()->property(name);
}

void WindowUnderTest::setState(const char *name, const QVariant &value) const
{
    QVERIFY(window().property("content").value<QObject *>()->setProperty(name, value));
}

QQuickItem *WindowUnderTest::screen() const
{
    return state("screen").value<QQuickItem *>();
}

QQuickItem *WindowUnderTest::find(QAccessible::Role role, const QString &name) const
{
    const QList<QQuickItem *> items = visibleItems(window());
    const auto found = std::find_if(items.crbegin(), items.crend(), [&](QQuickItem *item) {
        const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
        return interface && interface->role() == role && interface->text(QAccessible::Name) == name;
    });
    return found == items.crend() ? nullptr : *found;
}

bool WindowUnderTest::hasFocus(QAccessible::Role role, const QString &name) const
{
    const QQuickItem *item = find(role, name);
    return item && item->hasActiveFocus();
}

QPoint WindowUnderTest::middleOf(QAccessible::Role role, const QString &name) const
{
    const QQuickItem *item = find(role, name);
    return item ? item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint() : QPoint();
}

bool WindowUnderTest::click(QAccessible::Role role, const QString &name) const
{
    const QQuickItem *item = find(role, name);
    if (!item)
        return false;
    QTest::mouseClick(&window(), Qt::LeftButton, {},
                      item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint());
    return true;
}

void WindowUnderTest::type(const QString &text) const
{
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, &window(), Qt::Key_unknown, character, Qt::NoModifier);
}

void WindowUnderTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(&window(), key, modifiers);
}

QStringList WindowUnderTest::visibleTexts() const
{
    QStringList texts;
    const QList<QQuickItem *> items = visibleItems(window());
    for (QQuickItem *item : items) {
        for (const char *property : {"text", "placeholderText", "displayText"}) {
            if (const QVariant value = item->property(property); value.typeId() == QMetaType::QString)
                texts.append(value.toString());
        }
        if (const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item))
            texts.append(interface->text(QAccessible::Name));
    }
    texts.removeAll(QString());
    texts.removeDuplicates();
    return texts;
}

} // namespace tessaly
