#include "views/versions/VersionRows.h"

#include "store/PlannerStore.h"

#include <algorithm>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 daysShown = 30;

enum class Group { RestorePoints, Today, Days, Months };

class Describer
{
public:
    explicit Describer(const QList<Generation> &generations, const PlannerStore &store) : m_store(store)
    {
        for (const Generation &generation : generations) {
            if (!generation.isRestorePoint())
                ++m_inPeriod[period(generation)];
        }
    }

    [[nodiscard]] Group group(const Generation &generation) const
    {
        if (generation.isRestorePoint())
            return Group::RestorePoints;
        const qint64 days = daysAgo(generation);
        return days <= 0 ? Group::Today : days <= daysShown ? Group::Days : Group::Months;
    }

    [[nodiscard]] VersionRow row(const Generation &generation) const
    {
        switch (group(generation)) {
        case Group::RestorePoints:
            return {generation, m_store.text(u"还原点"_s, u"Restore points"_s),
                    reasonText(generation).in(m_store.interfaceLanguage()), m_store.momentText(generation.moment)};
        case Group::Today:
            return {generation, m_store.text(u"今天"_s, u"Today"_s), time(generation), {}};
        case Group::Days:
            return {generation,
                    m_store.text(u"按天"_s, u"Days"_s),
                    isAlone(generation) ? day(generation) : day(generation) + u' ' + time(generation),
                    {}};
        case Group::Months:
            return {generation,
                    m_store.text(u"按月"_s, u"Months"_s),
                    isAlone(generation) ? formatted(generation, u"yyyy年M月"_s, u"MMMM yyyy"_s)
                                        : m_store.dateText(generation.moment, true),
                    {}};
        }
        Q_UNREACHABLE();
    }

private:
    [[nodiscard]] qint64 daysAgo(const Generation &generation) const
    {
        return m_store.calendar().day(generation.moment).daysTo(m_store.today());
    }

    /// The day or month that one row can stand for.
    [[nodiscard]] QDate period(const Generation &generation) const
    {
        const QDate day = m_store.calendar().day(generation.moment);
        return group(generation) == Group::Months ? UserCalendar::monthStart(day).addDays(-daysShown * 1000) : day;
    }

    [[nodiscard]] bool isAlone(const Generation &generation) const { return m_inPeriod.value(period(generation)) == 1; }

    [[nodiscard]] QString day(const Generation &generation) const
    {
        if (daysAgo(generation) == 1)
            return m_store.text(u"昨天"_s, u"Yesterday"_s);
        return formatted(generation, u"M月d日 ddd"_s, u"ddd, MMM d"_s);
    }

    [[nodiscard]] QString time(const Generation &generation) const
    {
        return formatted(generation, u"HH:mm"_s, u"HH:mm"_s);
    }

    [[nodiscard]] QString formatted(const Generation &generation, const QString &chinese, const QString &english) const
    {
        const QLocale locale = interfaceLocale(m_store.isEnglish());
        return locale.toString(m_store.calendar().dateTime(generation.moment), m_store.text(chinese, english));
    }

    const PlannerStore &m_store;
    QHash<QDate, int> m_inPeriod;
};

} // namespace

QList<VersionRow> versionRows(const QList<Generation> &generations, const PlannerStore &store)
{
    const Describer describer(generations, store);
    QList<Generation> ordered = generations;
    std::ranges::stable_sort(ordered, {}, [&](const Generation &generation) { return describer.group(generation); });
    QList<VersionRow> rows;
    for (const Generation &generation : std::as_const(ordered))
        rows.append(describer.row(generation));
    return rows;
}

QList<RowListModel<VersionRow>::Role> versionRoles()
{
    return {
        {"group", [](const VersionRow &row) -> QVariant { return row.group; }},
        {"title", [](const VersionRow &row) -> QVariant { return row.title; }},
        {"moment", [](const VersionRow &row) -> QVariant { return row.moment; }},
    };
}

} // namespace tessaly
