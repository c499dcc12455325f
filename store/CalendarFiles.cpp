#include "store/CalendarFiles.h"

#include "model/DisplayTitle.h"
#include "platform/FileSystem.h"
#include "store/CalendarFeedReader.h"
#include "store/PlannerStore.h"

namespace tessaly {

CalendarFiles::CalendarFiles(PlannerStore &store, const PlannerPorts &ports)
    : m_store(store), m_ports(ports), m_reader(std::make_unique<CalendarFeedReader>(ports.calendarExpander))
{
}

CalendarFiles::~CalendarFiles() = default;

void CalendarFiles::tryFile(const QString &path, const std::function<void(const Result<CalendarTrial> &)> &completion)
{
    const Result<QByteArray> text = contents(path);
    if (!text) {
        completion(text.error());
        return;
    }
    m_reader->tryBody(text.value(), m_store.calendarLinks().optionsFor({}),
                      [completion](const Result<CalendarTrial> &trial) {
                          if (trial && !trial.value().once.isCalendar)
                              completion(Error{ErrorCode::CalendarNotFound, {}});
                          else
                              completion(trial);
                      });
}

void CalendarFiles::importFile(const QString &path, bool readsRepetitions)
{
    const Result<QByteArray> text = contents(path);
    if (!text) {
        takeCalendar(text.error());
        return;
    }
    ReadingOptions options = m_store.calendarLinks().optionsFor({.readsRepetitions = readsRepetitions});
    options.isAside = true;
    m_reader->read(text.value(), options, [this](const Result<ReadCalendar> &calendar) { takeCalendar(calendar); });
}

Result<QByteArray> CalendarFiles::contents(const QString &path) const
{
    if (const std::optional<QByteArray> text = m_ports.fileSystem.read(path))
        return *text;
    return Error{ErrorCode::CalendarFileUnreadable, path};
}

void CalendarFiles::takeCalendar(const Result<ReadCalendar> &calendar)
{
    if (calendar && calendar.value().facts.isCalendar) {
        addSchedules(calendar.value());
        return;
    }
    m_store.reportFailure(QStringLiteral("日历文件导入失败："), QStringLiteral("The calendar file was not imported: "),
                          calendar ? Error{ErrorCode::CalendarNotFound, {}} : calendar.error());
}

void CalendarFiles::addSchedules(const ReadCalendar &calendar)
{
    StateChange change;
    qsizetype row = m_store.schedules().size();
    for (const ScheduleItem &read : calendar.schedules)
        change.schedules.append(
            additionOf(ScheduleItem{.title = displayTitle(read), .date = read.date, .endDate = read.endDate}, row++));
    m_store.perform(change, TextPair{QStringLiteral("导入日历文件"), QStringLiteral("Import calendar file")});
    const QString count = QString::number(change.schedules.size());
    m_store.setCalendarSyncMessage({{QStringLiteral("已从日历文件导入 %1 个日程。").arg(count),
                                     QStringLiteral("Schedules imported from the calendar file: %1.").arg(count)}});
}

} // namespace tessaly
