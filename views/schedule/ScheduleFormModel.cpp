#include "views/schedule/ScheduleFormModel.h"

#include "model/ScheduleColors.h"
#include "platform/Clock.h"
#include "store/FormDrafts.h"
#include "store/PlannerStore.h"

#include <algorithm>
#include <utility>

namespace tessaly {

namespace {

// lint-allow(colour): goes into the record; the light value of the palette's blue, as the colour well stores it
const QString firstColor = QStringLiteral("#2C66D8");

} // namespace

ScheduleFormModel::~ScheduleFormModel()
{
    if (m_store)
        FormDrafts::of(*m_store).scheduleTitle = m_form.title;
}

QString ScheduleFormModel::endNote() const
{
    return m_store ? lateEndNote(*m_store, m_form.times) : QString();
}

QString lateEndNote(const PlannerStore &store, const FormTimes &times)
{
    if (times.end > times.start)
        return {};
    return store.text(QStringLiteral("不晚于开始，将于 %1 结束"), QStringLiteral("Not after the start: ends at %1"))
        .arg(timeRangeText(leastEnd(times), std::nullopt, store.calendar()));
}

void ScheduleFormModel::setStore(PlannerStore *store)
{
    m_store = store;
    m_form.title = FormDrafts::of(*store).scheduleTitle;
    const Instant now = store->clock().now();
    m_form.times = {now, now.plus(defaultScheduleSeconds)};
    m_form.colorHex = firstColor;
    connect(store->calendarSync(), &CalendarSync::availableCalendarsChanged, this,
            &ScheduleFormModel::calendarsChanged);
    emit fieldsChanged();
    emit calendarsChanged();
}

void ScheduleFormModel::setTitle(const QString &title)
{
    if (std::exchange(m_form.title, title) != title)
        emit fieldsChanged();
}

void ScheduleFormModel::setTag(const QString &tag)
{
    if (std::exchange(m_form.tag, tag) != tag)
        emit fieldsChanged();
}

QDateTime ScheduleFormModel::start() const
{
    return m_store ? m_store->calendar().dateTime(m_form.times.start) : QDateTime();
}

void ScheduleFormModel::setStart(const QDateTime &start)
{
    if (start.isValid() && start != this->start())
        setTimes({m_store->calendar().instant(start.date(), start.time()), m_form.times.end});
}

QDateTime ScheduleFormModel::end() const
{
    return m_store ? m_store->calendar().dateTime(m_form.times.end) : QDateTime();
}

void ScheduleFormModel::setEnd(const QDateTime &end)
{
    if (end.isValid() && end != this->end())
        setTimes({m_form.times.start, m_store->calendar().instant(end.date(), end.time())});
}

void ScheduleFormModel::setTimes(const FormTimes &times)
{
    if (std::exchange(m_form.times, times) != times)
        emit fieldsChanged();
}

void ScheduleFormModel::setColorHex(const QString &hex)
{
    const std::optional<RgbColor> color = colorFromHex(hex);
    const QString taken = color ? tessaly::colorHex(*color) : m_form.colorHex;
    if (std::exchange(m_form.colorHex, taken) != taken)
        emit fieldsChanged();
}

void ScheduleFormModel::setExportRequested(bool isRequested)
{
    if (std::exchange(m_form.isExportRequested, isRequested) != isRequested)
        emit fieldsChanged();
}

QList<CalendarOption> ScheduleFormModel::choices() const
{
    return m_store ? m_store->calendarSync()->calendarChoices() : QList<CalendarOption>();
}

QStringList ScheduleFormModel::calendarTitles() const
{
    QStringList titles;
    const QList<CalendarOption> offered = choices();
    for (const CalendarOption &calendar : offered)
        titles.append(calendar.title + QStringLiteral(" · ") + calendar.sourceTitle);
    return titles;
}

int ScheduleFormModel::calendarIndex() const
{
    const QList<CalendarOption> offered = choices();
    const QString target = targetCalendar(offered, m_chosenCalendar).value_or(QString());
    const auto found = std::ranges::find(offered, target, &CalendarOption::id);
    return found == offered.cend() ? -1 : static_cast<int>(found - offered.cbegin());
}

void ScheduleFormModel::setCalendarIndex(int index)
{
    const QList<CalendarOption> offered = choices();
    if (index < 0 || index >= offered.size() || offered.at(index).id == m_chosenCalendar)
        return;
    m_chosenCalendar = offered.at(index).id;
    emit calendarsChanged();
}

void ScheduleFormModel::moveTo(QDate day)
{
    setTimes(formMovedTo(day, m_form.times, m_store->calendar()));
}

bool ScheduleFormModel::add()
{
    const std::optional<ScheduleItem> schedule = newSchedule(m_form);
    if (!schedule)
        return false;
    m_store->addSchedule(*schedule,
                         m_form.isExportRequested ? targetCalendar(choices(), m_chosenCalendar) : std::nullopt);
    setTitle({});
    setTag({});
    return true;
}

} // namespace tessaly
