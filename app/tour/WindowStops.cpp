#include "app/tour/TourStop.h"
#include "store/PlannerStore.h"
#include "views/schedule/ScheduleViewModel.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace tessaly {

namespace {

/// Something over the window that a property of its content opens.
TourStop overWindow(const QString &name, const char *property)
{
    const auto setter = [property](bool isOpen) {
        return [property, isOpen](QObject &content, QObject &) {
            if (content.metaObject()->indexOfProperty(property) < 0)
                qFatal("The window's content has no %s", property);
            content.setProperty(property, isOpen);
        };
    };
    return {name, ShellModel::Overview, setter(true), setter(false)};
}

/// What is found and would be added.
TourStop paletteWithResults()
{
    const auto open = [](QObject &content, QObject &screen) {
        const PlannerStore &store = *screen.findChild<ScheduleViewModel *>()->store();
        QMetaObject::invokeMethod(&content, "paletteRequested");
        const auto *window = qobject_cast<const QQuickItem *>(&content)->window();
        auto *field = window->findChild<QObject *>(QStringLiteral("paletteField"));
        field->setProperty("text",
                           store.text(QStringLiteral("经济 明天下午3点"), QStringLiteral("micro tomorrow 3pm")));
        // Texts of documents are found in another thread.
        for (int pauses = 0; pauses < 10; ++pauses)
            rest();
    };
    const auto close = [](QObject &content, QObject &) { closeNamed(content, QStringLiteral("palette")); };
    return {QStringLiteral("sheet-palette"), ShellModel::Schedule, open, close};
}

TourStop importQuestion()
{
    const auto offer = [](const QUrl &file) {
        return [file](QObject &content, QObject &) { shellOf(content).archive()->offerImport(file); };
    };
    return {QStringLiteral("dialog-import"), ShellModel::Overview,
            offer(QUrl::fromLocalFile(QStringLiteral("/Tessaly.zip"))), offer({})};
}

} // namespace

QList<TourStop> windowStops()
{
    return {
        importQuestion(),
        paletteWithResults(),
        overWindow(QStringLiteral("sheet-shortcuts"), "showShortcuts"),
        overWindow(QStringLiteral("first-run"), "showNamePrompt"),
        overWindow(QStringLiteral("dialog-consent"), "showConsent"),
        overWindow(QStringLiteral("dialog-clear"), "showClearConfirmation"),
        overWindow(QStringLiteral("dialog-about"), "showAbout"),
        overWindow(QStringLiteral("dialog-unreadable"), "showUnreadable"),
        overWindow(QStringLiteral("dialog-unsaved"), "showUnsaved"),
    };
}

} // namespace tessaly
