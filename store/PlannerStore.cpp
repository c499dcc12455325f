#include "store/PlannerStore.h"

#include "model/RecordCodec.h"
#include "store/PreferenceKeys.h"

namespace tessaly {

PlannerStore::PlannerStore(const PlannerPorts &ports, QObject *parent)
    : PlannerSettings(ports, parent), m_dataWriter(values()), m_scheduleReminders(*this, values()),
      m_waitingReminders(this->ports(), m_dataWriter, ReminderWording(*this, m_data), m_scheduleReminders),
      m_documentLibrary(this->ports(), values(), [this](const StateChange &change) { perform(change); }),
      m_noteDrafts(values()), m_generations(this->ports(), values()), m_archive(*this, this->ports(), values()),
      m_calendarSync(*this, this->ports()), m_calendarLinks(*this, this->ports(), values()),
      m_calendarFiles(*this, this->ports())
{
    if (auto feeds = values().decoded(keys::calendarFeedsKey, decodeCalendarFeeds))
        m_calendarFeeds = *std::move(feeds);
    if (auto data = m_dataWriter.load())
        m_data = *std::move(data);
    m_documentLibrary.load();
    m_noteDrafts.load();
    m_calendarLinks.load();
    m_hadUnreadableData = values().hasUnreadable();
    m_archive.finish();
    connect(this, &PlannerStore::timeZoneChanged, &m_waitingReminders, &WaitingReminders::showDue);
    connect(&m_generations, &Generations::failed, this, [this](const Error &error) {
        reportFailure(QStringLiteral("未能保存还原点："), QStringLiteral("The restore point could not be kept: "),
                      error);
    });
    connect(&m_documentLibrary, &DocumentLibrary::documentDestroyed, &m_history, &UndoHistory::forget);
    connect(this, &PlannerStore::todayChanged, &m_documentLibrary, &DocumentLibrary::destroyExpired);
    connect(&m_scheduleReminders, &ScheduleReminders::changed, &m_waitingReminders, &WaitingReminders::showDue);
    connect(&m_waitingReminders, &WaitingReminders::answered, this,
            [this](const QString &identifier, ReminderAnswer answer) { answerReminders({identifier}, answer); });
    connect(&m_waitingReminders, &WaitingReminders::loginItemFailed, this, [this](const Error &error) {
        reportFailure(QStringLiteral("退出登录后可能收不到提醒："),
                      QStringLiteral("Reminders may not survive a log-out: "), error);
    });
}

void PlannerStore::start()
{
    m_documentLibrary.start();
    m_waitingReminders.start();
    m_calendarLinks.start();
}

PlannerStore::~PlannerStore()
{
    values().close();
}

void PlannerStore::schedulesAssigned(const RowsChange &rows)
{
    m_dataWriter.save(m_data, SavedDataEncoder::Section::Schedules, rows);
    emit schedulesChanged(rows);
}

void PlannerStore::editCalendarFeeds(const std::function<std::optional<RowsChange>(QList<CalendarFeed> &)> &change)
{
    const std::optional<RowsChange> rows = change(m_calendarFeeds);
    if (!rows)
        return;
    saveCalendarFeeds();
    emit calendarFeedsChanged(*rows);
}

void PlannerStore::saveCalendarFeeds()
{
    values().saveBlob(keys::calendarFeedsKey, [this]() -> Result<void> {
        const std::optional<QByteArray> json = encodeCalendarFeeds(m_calendarFeeds);
        return json ? values().preferences().setValue(keys::calendarFeedsKey, *json) : Result<void>();
    });
}

} // namespace tessaly
