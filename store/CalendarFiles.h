#pragma once

#include "model/ICalendarFacts.h"
#include "model/Result.h"

#include <QObject>

#include <functional>
#include <memory>

namespace tessaly {

class CalendarFeedReader;
class PlannerStore;
struct PlannerPorts;
struct ReadCalendar;

/// The part of the planner store that reads calendar files of the user, which are read once and not linked. Main thread
/// only.
class CalendarFiles : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive it.
    CalendarFiles(PlannerStore &store, const PlannerPorts &ports);
    ~CalendarFiles() override;
    Q_DISABLE_COPY_MOVE(CalendarFiles)

    /// Tells what is in the file, later; changes nothing.
    void tryFile(const QString &path, const std::function<void(const Result<CalendarTrial> &)> &completion);
    /// Makes the events of the file own schedules, as one step, and reports that; each occurrence of a repeating event
    /// where `readsRepetitions`, otherwise its first.
    void importFile(const QString &path, bool readsRepetitions);

private:
    [[nodiscard]] Result<QByteArray> contents(const QString &path) const;
    void takeCalendar(const Result<ReadCalendar> &calendar);
    void addSchedules(const ReadCalendar &calendar);

    PlannerStore &m_store;
    const PlannerPorts &m_ports;
    std::unique_ptr<CalendarFeedReader> m_reader;
};

} // namespace tessaly
