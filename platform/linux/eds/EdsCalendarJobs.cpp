#include "platform/linux/eds/EdsCalendar.h"

// What a calendar asks of the service: one job after the other on a separate thread, so that each sees the result of
// the one before.

namespace tessaly {

namespace {

using namespace std::chrono_literals;

/// For so long the service may still report the state before one of our own changes.
constexpr auto echoTime = 5s;
constexpr size_t mostCreationsAtOnce = 100;

} // namespace

bool EdsCalendar::isWrittenLately(const QString &uid) const
{
    const auto written = m_writtenLately.constFind(uid);
    return written != m_writtenLately.cend() && Clock::now() - *written < echoTime;
}

EdsAccess EdsCalendar::access() const
{
    return {.client = m_client ? referenceTo(m_client.get()) : nullptr,
            .calendarIdentifier = m_identifier,
            .zones = m_zones,
            .text = m_text,
            .cancellable = referenceTo(m_context.cancellable())};
}

void EdsCalendar::readAgain(QStringList uids, Continuation afterwards)
{
    uids.removeDuplicates();
    if (uids.isEmpty() || !m_client)
        return;
    enqueue([self = shared_from_this(), access = std::make_shared<EdsAccess>(access()), uids, generation = m_generation,
             afterwards = std::move(afterwards)]() -> Continuation {
        QHash<QString, std::shared_ptr<Components>> read;
        for (const QString &uid : uids) {
            if (const auto components = readEvent(*access, uid))
                read.insert(uid, components.value());
        }
        return [self, read, generation, afterwards] {
            if (self->m_generation != generation)
                return;
            for (auto entry = read.cbegin(); entry != read.cend(); ++entry)
                self->m_mirror.replace(entry.key(), **entry);
            self->m_context.contentChanged();
            if (afterwards)
                afterwards();
        };
    });
}

void EdsCalendar::applyWrite(const QString &uid, const Result<std::shared_ptr<Components>> &read)
{
    if (read)
        m_mirror.replace(uid, *read.value());
    const auto now = Clock::now();
    m_writtenLately.removeIf([&](auto entry) { return now - entry.value() > echoTime; });
    m_writtenLately.insert(uid, now);
    m_context.contentChanged();
}

void EdsCalendar::create(const NewEvent &event, EventStore::SaveCompletion completion)
{
    ++m_writes;
    m_creations.push_back({event, std::move(completion)});
    startNextJob();
}

EdsCalendar::Job EdsCalendar::creationJob()
{
    auto creations = std::make_shared<std::vector<Creation>>();
    QList<NewEvent> events;
    while (!m_creations.empty() && creations->size() < mostCreationsAtOnce) {
        events.append(m_creations.front().event);
        creations->push_back(std::move(m_creations.front()));
        m_creations.pop_front();
    }
    return [self = shared_from_this(), access = std::make_shared<EdsAccess>(access()), creations,
            events]() -> Continuation {
        const QList<Result<void>> results =
            access->client ? createEvents(*access, events)
                           : QList<Result<void>>(events.size(), Error{ErrorCode::CalendarWriteFailed});
        QList<Result<std::shared_ptr<Components>>> read;
        for (qsizetype i = 0; i < events.size(); ++i)
            read.append(results.at(i) ? readEvent(*access, events.at(i).uid) : results.at(i).error());
        return [self, creations, results, read] {
            self->m_writes -= static_cast<int>(creations->size());
            for (qsizetype i = 0; i < results.size(); ++i) {
                const Creation &creation = creations->at(static_cast<size_t>(i));
                self->applyWrite(creation.event.uid, read.at(i));
                self->answer(results.at(i), self->m_mirror.eventOf(creation.event.uid), creation.completion);
            }
        };
    };
}

void EdsCalendar::answer(const Result<void> &result, const std::optional<CalendarEvent> &event,
                         const EventStore::SaveCompletion &completion)
{
    if (!result)
        completion(result.error());
    else if (event)
        completion(*event);
    else
        completion(Error{ErrorCode::CalendarEventMissing});
}

void EdsCalendar::change(const EventName &name, const EventChange &change, EventStore::SaveCompletion completion)
{
    enqueueWrite(
        name.uid, [name, change](const EdsAccess &access) { return changeEvent(access, name, change); },
        [self = shared_from_this(), name, completion = std::move(completion)](const Result<void> &result) {
            answer(result, self->m_mirror.event(name), completion);
        });
}

void EdsCalendar::remove(const EventName &name, EventStore::RemoveCompletion completion)
{
    enqueueWrite(
        name.uid, [name](const EdsAccess &access) { return removeEvent(access, name); }, std::move(completion));
}

void EdsCalendar::enqueueWrite(const QString &uid, std::function<Result<void>(const EdsAccess &)> write,
                               EventStore::RemoveCompletion done)
{
    ++m_writes;
    enqueue([self = shared_from_this(), access = std::make_shared<EdsAccess>(access()), uid, write = std::move(write),
             done = std::move(done)]() -> Continuation {
        if (!access->client)
            return [self, done] {
                --self->m_writes;
                done(Error{ErrorCode::CalendarWriteFailed});
            };
        const Result<void> result = write(*access);
        const auto read = readEvent(*access, uid);
        return [self, done, result, read, uid] {
            --self->m_writes;
            self->applyWrite(uid, read);
            done(result);
        };
    });
}

void EdsCalendar::enqueue(Job job)
{
    m_jobs.push_back(std::move(job));
    startNextJob();
}

void EdsCalendar::startNextJob()
{
    if (m_isBusy || (m_jobs.empty() && m_creations.empty()))
        return;
    Job job;
    if (m_jobs.empty()) {
        job = creationJob();
    } else {
        job = std::move(m_jobs.front());
        m_jobs.pop_front();
    }
    m_isBusy = true;
    m_context.runAside([self = shared_from_this(), job = std::move(job), life = m_context.life()] {
        self->m_context.thread().post([self, life, next = job()] {
            if (!life.lock())
                return;
            next();
            self->m_isBusy = false;
            self->m_context.stateChanged();
            self->startNextJob();
        });
    });
}

} // namespace tessaly
