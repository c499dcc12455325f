// Does a few steps that each touch several lists, and then undoes and redoes them until it is killed. Each line names a
// state: first those that the steps pass through, then, after an empty line, the state after each undo or redo.

#include "model/RecordCodec.h"
#include "tests/support/RecordGenerator.h"
#include "tests/system/StoreOnDisk.h"
#include "tests/system/UndoStates.h"

#include <functional>
#include <QCoreApplication>
#include <unistd.h>

using namespace tessaly;

namespace {

QList<std::function<void(PlannerStore &)>> steps()
{
    return {
        [](PlannerStore &store) {
            store.addReminder({.title = QStringLiteral("Call"), .dueDate = store.clock().now().plus(86400)});
        },
        [](PlannerStore &store) { store.calendarLinks().addCalendarFeed(QStringLiteral("https://example.org/a.ics")); },
        [](PlannerStore &store) {
            ScheduleItem item = RecordGenerator(7).schedule();
            item.calendarEventIdentifier.reset();
            item.calendarIdentifier = feedCalendarIdentifier(store.calendarFeeds().constFirst().id);
            store.addSchedule(item);
        },
        [](PlannerStore &store) { store.calendarLinks().deleteCalendarFeed(store.calendarFeeds().constFirst().id); },
        [](PlannerStore &store) { store.clearPersonalContent(); },
        [](PlannerStore &store) {
            DocumentLibrary &library = store.documentLibrary();
            library.deleteDocumentCategory(library.documentCategories().constFirst().id);
        },
    };
}

bool say(const QByteArray &line)
{
    const QByteArray text = line + '\n';
    return write(STDOUT_FILENO, text.constData(), size_t(text.size())) == text.size();
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    auto opened = SqlitePreferences::open(QCoreApplication::arguments().value(1));
    if (!opened)
        return 2;
    (void)opened.value()->setValue(keys::storageKey, *encodeSavedData(RecordGenerator().savedData(300, 20, 10)));
    const MarkdownCategory category{.name = QStringLiteral("C")};
    (void)opened.value()->setValue(
        keys::documentMetadataKey,
        *encodeDocumentLibrary({{category}, {{.title = QStringLiteral("D"), .categoryID = category.id}}}));
    (void)opened.value()->setValue(keys::calendarFeedsKey, QByteArray("[]"));
    (void)opened.value()->setValue(keys::waitingReminders, QByteArray("[]"));
    StoreOnDisk planner(opened.takeValue());
    PlannerStore &store = planner.store();

    say(savedStateName(planner.preferences()));
    for (const auto &step : steps()) {
        step(store);
        say(savedStateName(planner.preferences()));
    }
    say({});
    for (bool isUndoing = true; !store.hasUnsavedChanges();) {
        if (isUndoing)
            store.undo();
        else
            store.redo();
        isUndoing = isUndoing ? store.history().nextUndo() != nullptr : store.history().nextRedo() == nullptr;
        if (!say(savedStateName(planner.preferences())))
            return 4;
    }
    return 3;
}
