#pragma once

#include "model/GoalOperations.h"
#include "model/ReminderRules.h"
#include "platform/Clock.h"
#include "store/PlannerStore.h"
#include "tests/support/RecordGenerator.h"

namespace tessaly {

/// A user who does one thing after the other.
class RandomUser
{
public:
    RandomUser(PlannerStore &store, quint64 seed) : m_store(store), m_random(seed) {}

    void act()
    {
        switch (m_random.below(12)) {
        case 0:
        case 1:
            return workOnSchedules();
        case 2:
        case 3:
        case 4:
            return workOnReminders();
        case 5:
        case 6:
        case 7:
            return workOnGoals();
        case 8:
            return workOnFeeds();
        case 9:
        case 10:
            return workOnDocuments();
        default:
            if (m_random.happens(0.2))
                m_store.clearPersonalContent();
        }
    }

private:
    /// A row of the list, or -1 for an empty list and now and then: something is to be added.
    template <class Record>
    qsizetype any(const QList<Record> &records)
    {
        return records.isEmpty() || m_random.happens(0.45) ? -1 : m_random.below(records.size());
    }

    void workOnSchedules()
    {
        const qsizetype row = any(m_store.schedules());
        if (row < 0)
            return m_store.addSchedule(m_random.schedule());
        ScheduleItem item = m_store.schedules().at(row);
        if (m_random.happens(0.3))
            return m_store.deleteSchedule(item);
        ScheduleItem other = m_random.schedule();
        other.id = item.id;
        // No edit takes a schedule out of its calendar.
        other.calendarIdentifier = item.calendarIdentifier;
        other.calendarEventIdentifier = item.calendarEventIdentifier;
        if (m_random.happens(0.5))
            return m_store.updateSchedule(other);
        item.notes = other.notes;
        m_store.updateSchedule(item);
    }

    void workOnReminders()
    {
        const qsizetype row = any(m_store.reminders());
        if (row < 0)
            return m_store.addReminder(m_random.reminder());
        ReminderItem item = m_store.reminders().at(row);
        if (m_random.happens(0.2))
            return m_store.removeReminder(item.id);
        if (m_random.happens(0.5))
            return m_store.updateReminder(toggled(item, m_store.clock().now()));
        item.title = m_random.words(2);
        m_store.updateReminder(item);
    }

    void workOnGoals()
    {
        const qsizetype row = any(m_store.goals());
        if (row < 0)
            return m_store.addGoal(m_random.goal());
        Goal goal = m_store.goals().at(row);
        if (m_random.happens(0.15))
            return m_store.removeGoal(goal.id);
        const QList<Subgoal> subgoals = goal.subgoals.value_or(QList<Subgoal>());
        const qsizetype subgoalRow = any(subgoals);
        if (subgoalRow < 0) {
            addSubgoal(goal, m_random.words(2));
        } else if (const Subgoal &subgoal = subgoals.at(subgoalRow); m_random.happens(0.3)) {
            addTask(goal, subgoal.id, m_random.words(2), 1.5);
        } else if (m_random.happens(0.3)) {
            removeSubgoal(goal, subgoal.id);
        } else if (m_random.happens(0.5)) {
            moveSubgoal(goal, subgoal.id, subgoals.constFirst().id);
        } else {
            toggleSubgoal(goal, subgoal.id, m_store.clock().now());
        }
        m_store.updateGoal(goal);
    }

    void workOnFeeds()
    {
        const qsizetype row = any(m_store.calendarFeeds());
        if (row < 0) {
            m_store.calendarLinks().addCalendarFeed(
                QStringLiteral("https://example.org/%1.ics").arg(m_random.below(1'000'000)));
            return;
        }
        const QUuid feed = m_store.calendarFeeds().at(row).id;
        if (m_random.happens(0.3))
            return m_store.calendarLinks().deleteCalendarFeed(feed);
        ScheduleItem item = m_random.schedule();
        item.calendarIdentifier = feedCalendarIdentifier(feed);
        m_store.addSchedule(item);
    }

    void workOnDocuments()
    {
        DocumentLibrary &library = m_store.documentLibrary();
        const qsizetype row = any(library.documentCategories());
        if (row < 0)
            return library.addDocumentCategory(m_random.words(1));
        const QUuid category = library.documentCategories().at(row).id;
        if (m_random.happens(0.3))
            return library.deleteDocumentCategory(category);
        if (m_random.happens(0.5) || library.documents().isEmpty())
            return library.renameDocumentCategory(category, m_random.words(1));
        const MarkdownDocument document = library.documents().at(m_random.below(library.documents().size()));
        if (m_random.happens(0.5))
            return library.renameDocument(document, m_random.words(2));
        // Setting the same category again is no step, and changes the time of the last change.
        if (document.categoryID != category)
            library.setDocumentCategory(document, category);
    }

    PlannerStore &m_store;
    RecordGenerator m_random;
};

} // namespace tessaly
