#include "platform/common/vdir/VdirEventStore.h"

#include "platform/common/vdir/CalendarFolders.h"
#include "platform/common/vdir/FolderWatch.h"

#include <QDir>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace tessaly {

namespace {

/// A burst of changes is handled once.
constexpr int debounceMilliseconds = 200;
/// Where the system does not report changes.
constexpr int pollMilliseconds = 1000;

qint64 secondsOf(Instant instant)
{
    return static_cast<qint64>(std::ceil(std::clamp(instant.unixSeconds(), -1e14, 1e14)));
}

} // namespace

VdirPlace VdirPlace::embedded(const QString &dataDirectory, std::function<QString()> firstCalendarTitle)
{
    return {.directory = dataDirectory + QStringLiteral("/Calendars"),
            .identifierPrefix = QStringLiteral("vdir:"),
            .accountTitle = QStringLiteral("Tessaly"),
            .firstCalendarTitle = std::move(firstCalendarTitle)};
}

VdirPlace VdirPlace::given(const QString &directory)
{
    const QString path = QDir::cleanPath(QDir(directory).absolutePath());
    return {.directory = path,
            .identifierPrefix = QStringLiteral("vdir:") + path + u'/',
            .accountTitle = QDir(path).dirName()};
}

/// What lives in the thread.
class VdirEventStore::Worker : public QObject
{
public:
    using Publish = std::function<void(const QList<EventCalendar> &, bool hasChanged)>;

    Worker(const VdirPlace &place, FolderWork &work, Publish publish)
        : m_folders(place.directory, place.identifierPrefix, place.accountTitle, work), m_work(work),
          m_publish(std::move(publish))
    {
    }

    [[nodiscard]] bool open(const QString &firstCalendarTitle)
    {
        const bool isOpen =
            firstCalendarTitle.isEmpty() ? m_folders.readCalendars() : m_folders.makeFirstCalendar(firstCalendarTitle);
        if (isOpen)
            m_publish(m_folders.calendars(), false);
        if (isOpen && !m_watch)
            startWatching();
        return isOpen;
    }

    /// What other programs have done is in the mirror afterwards. Whoever fetches sees it anyway the first time.
    enum class Cause { Notice, Fetch };
    CalendarFolders &upToDate(Cause cause)
    {
        const bool isNews = std::exchange(m_wasRead, true) || cause == Cause::Notice;
        if (m_work.isEnding)
            return m_folders;
        const bool hasChanged = m_folders.readEvents();
        if (m_watch && hasChanged)
            watchFolders();
        m_publish(m_folders.calendars(), hasChanged && isNews);
        return m_folders;
    }
    /// As the last look has left it.
    [[nodiscard]] CalendarFolders &folders() { return m_wasRead ? m_folders : upToDate(Cause::Fetch); }
    void publishChange() { m_publish(m_folders.calendars(), true); }

private:
    void startWatching()
    {
        m_timer = new QTimer(this);
        m_timer->setSingleShot(true);
        connect(m_timer, &QTimer::timeout, this, [this] {
            upToDate(Cause::Notice);
            if (!m_isWatchComplete)
                m_timer->start(pollMilliseconds);
        });
        m_watch = std::make_unique<FolderWatch>([this] {
            // A timer that runs already is not put off: changes that do not end are looked at all the same.
            if (!m_timer->isActive() || m_timer->remainingTime() > debounceMilliseconds)
                m_timer->start(debounceMilliseconds);
        });
        watchFolders();
        m_timer->start(debounceMilliseconds);
    }
    void watchFolders() { m_isWatchComplete = m_watch->setFolders(m_folders.folders()); }

    CalendarFolders m_folders;
    FolderWork &m_work;
    Publish m_publish;
    bool m_wasRead = false;
    bool m_isWatchComplete = false;
    std::unique_ptr<FolderWatch> m_watch;
    QTimer *m_timer = nullptr;
};

VdirEventStore::VdirEventStore(const VdirPlace &place, const Clock &clock)
    : m_place(place), m_clock(clock),
      m_worker(new Worker(place, m_work, [this](const QList<EventCalendar> &calendars, bool hasChanged) {
          QMetaObject::invokeMethod(
              &m_receiver,
              [this, calendars, hasChanged] {
                  m_calendars = calendars;
                  if (hasChanged)
                      announceChange();
              },
              Qt::QueuedConnection);
      }))
{
    m_thread.setObjectName(QStringLiteral("calendar folder"));
    m_worker->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread.start();
}

VdirEventStore::~VdirEventStore()
{
    // What was to be written still is; what was to be read is not.
    m_work.isEnding = true;
    QMetaObject::invokeMethod(
        m_worker, [this] { m_thread.quit(); }, Qt::QueuedConnection);
    m_thread.wait();
}

template <class Completion, class Work>
void VdirEventStore::ask(Completion completion, Work work)
{
    const CalendarMoment moment{.user = UserCalendar(m_clock.zone(), Qt::Monday, QLocale::c()),
                                .now = static_cast<qint64>(std::floor(m_clock.now().unixSeconds()))};
    QMetaObject::invokeMethod(
        m_worker,
        [this, moment, completion = std::move(completion), work = std::move(work)]() mutable {
            auto answer = work(*m_worker, moment);
            QMetaObject::invokeMethod(
                &m_receiver,
                [completion = std::move(completion), answer = std::move(answer)]() mutable {
                    completion(std::move(answer));
                },
                Qt::QueuedConnection);
        },
        Qt::QueuedConnection);
}

void VdirEventStore::announceChange() const
{
    if (m_changeHandler)
        m_changeHandler();
}

void VdirEventStore::requestAccess(AccessCompletion completion)
{
    const QString title = m_place.firstCalendarTitle ? m_place.firstCalendarTitle() : QString();
    ask(std::move(completion),
        [title, directory = m_place.directory](Worker &worker, const CalendarMoment &) -> Result<bool> {
            if (worker.open(title))
                return true;
            return Error{ErrorCode::CalendarAccessFailed, directory};
        });
}

std::optional<EventCalendar> VdirEventStore::defaultCalendarForNewEvents() const
{
    const auto found = std::ranges::find(m_calendars, true, &EventCalendar::isWritable);
    return found == m_calendars.cend() ? std::nullopt : std::optional(*found);
}

void VdirEventStore::fetchEvents(const QStringList &calendarIdentifiers, Instant from, Instant to,
                                 FetchCompletion completion)
{
    ask(std::move(completion),
        [calendarIdentifiers, from, to](Worker &worker, const CalendarMoment &moment) -> Result<FetchedEvents> {
            return worker.upToDate(Worker::Cause::Fetch)
                .fetch(calendarIdentifiers, secondsOf(from), secondsOf(to), moment);
        });
}

void VdirEventStore::createEvent(const NewEvent &event, SaveCompletion completion)
{
    ask(std::move(completion), [event](Worker &worker, const CalendarMoment &moment) {
        auto result = worker.folders().create(event, moment);
        if (result)
            worker.publishChange();
        return result;
    });
}

void VdirEventStore::changeEvent(const QString &eventIdentifier, const EventChange &change, SaveCompletion completion)
{
    ask(std::move(completion), [eventIdentifier, change](Worker &worker, const CalendarMoment &moment) {
        auto result = worker.folders().change(eventIdentifier, change, moment);
        if (result)
            worker.publishChange();
        return result;
    });
}

void VdirEventStore::removeEvent(const QString &eventIdentifier, RemoveCompletion completion)
{
    ask(std::move(completion), [eventIdentifier](Worker &worker, const CalendarMoment &moment) {
        auto result = worker.folders().remove(eventIdentifier, moment);
        if (result)
            worker.publishChange();
        return result;
    });
}

} // namespace tessaly
