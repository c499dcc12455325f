// Saves one numbered state after the other until it is killed. The number of each state is printed once the store has
// saved it.

#include "model/ReminderRules.h"
#include "tests/support/RecordGenerator.h"
#include "tests/system/StoreOnDisk.h"

#include <QCoreApplication>
#include <unistd.h>

using namespace tessaly;

namespace {

constexpr qsizetype scheduleCount = 300;

void fill(PlannerStore &store)
{
    RecordGenerator generator;
    for (qsizetype row = 0; row < scheduleCount; ++row)
        store.addSchedule(generator.schedule());
    store.addReminder({.title = QStringLiteral("0"), .dueDate = store.clock().now().plus(86400)});
}

/// The number stands in the first schedule, whose length changes, so that everything behind it moves, or every other
/// time in the to-do, whose reminder comes or goes with its tick.
void saveState(PlannerStore &store, int number, RecordGenerator &generator)
{
    if (number % 2 == 0) {
        ReminderItem item = toggled(store.reminders().constFirst(), store.clock().now());
        item.title = QString::number(number);
        store.updateReminder(item);
        return;
    }
    ScheduleItem schedule = store.schedules().constFirst();
    schedule.title = QString::number(number);
    const bool isBig = generator.happens(0.3);
    schedule.notes = QString(generator.below(isBig ? 3'000'000 : 2'000), u'n');
    store.updateSchedule(schedule);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    auto opened = SqlitePreferences::open(QCoreApplication::arguments().value(1));
    if (!opened)
        return 2;
    StoreOnDisk planner(opened.takeValue());
    PlannerStore &store = planner.store();
    if (store.schedules().isEmpty())
        fill(store);

    RecordGenerator generator(static_cast<quint64>(getpid()));
    int number = std::max(store.schedules().constFirst().title.toInt(), store.reminders().constFirst().title.toInt());
    while (true) {
        saveState(store, ++number, generator);
        if (store.hasUnsavedChanges())
            return 3;
        const QByteArray line = QByteArray::number(number) + '\n';
        if (write(STDOUT_FILENO, line.constData(), static_cast<size_t>(line.size())) < 0)
            return 4;
    }
}
