#pragma once

#include "platform/Clock.h"
#include "platform/common/vdir/FolderWork.h"
#include "platform/EventStore.h"

#include <QObject>
#include <QThread>

#include <atomic>
#include <memory>

namespace tessaly {

/// Where a folder of calendars is, and how it is presented.
struct VdirPlace
{
    /// Absolute. It holds a folder for each calendar.
    QString directory = {};
    /// What the identifiers of its calendars begin with, before the name of the folder.
    QString identifierPrefix = {};
    QString accountTitle = {};
    /// The name of the calendar that is made where there is none; none is made where this is empty.
    std::function<QString()> firstCalendarTitle = {};

    /// The planner's own folder in its data directory.
    [[nodiscard]] static VdirPlace embedded(const QString &dataDirectory, std::function<QString()> firstCalendarTitle);
    /// A folder that other programs keep.
    [[nodiscard]] static VdirPlace given(const QString &directory);
};

/// Calendars in a folder of iCalendar files in the vdir layout, which other programs may change at any time. A separate
/// thread reads and writes them one after the other. A file that cannot be read is left unchanged and listed as unread;
/// so is the second of two files with the same event, and one with an excessive number of occurrences.
class VdirEventStore final : public EventStore
{
public:
    VdirEventStore(const VdirPlace &place, const Clock &clock);
    ~VdirEventStore() override;
    Q_DISABLE_COPY_MOVE(VdirEventStore)

    [[nodiscard]] TextPair serviceName() const override
    {
        return {QStringLiteral("日历文件夹"), QStringLiteral("calendar folder")};
    }
    void requestAccess(AccessCompletion completion) override;
    [[nodiscard]] QList<EventCalendar> calendars() const override { return m_calendars; }
    /// The planner's own, or the first by the name of its folder.
    [[nodiscard]] std::optional<EventCalendar> defaultCalendarForNewEvents() const override;
    void fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                     FetchCompletion completion) override;
    [[nodiscard]] qsizetype eventsRead() const override { return m_work.eventsRead; }
    void createEvent(const NewEvent &event, SaveCompletion completion) override;
    void changeEvent(const QString &eventIdentifier, const EventChange &change, SaveCompletion completion) override;
    void removeEvent(const QString &eventIdentifier, RemoveCompletion completion) override;
    void setChangeHandler(std::function<void()> handler) override { m_changeHandler = std::move(handler); }

private:
    class Worker;

    /// Runs `work` in the thread, and the completion with its answer on this one.
    template <class Completion, class Work>
    void ask(Completion completion, Work work);
    void announceChange() const;

    VdirPlace m_place;
    const Clock &m_clock;
    QList<EventCalendar> m_calendars;
    std::function<void()> m_changeHandler;
    FolderWork m_work;
    QThread m_thread;
    Worker *m_worker;
    /// What the thread has to say comes through it, as long as it is there.
    QObject m_receiver;
};

} // namespace tessaly
