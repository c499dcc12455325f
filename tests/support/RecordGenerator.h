#pragma once

#include "model/SavedData.h"

#include <QString>
#include <QUuid>

#include <random>

namespace tessaly {

/// Makes up records such as a user has; the same seed gives the same records. A schedule is about 396 bytes of compact
/// JSON; 4 % of the words are not ASCII; notes have line breaks and quotation marks.
class RecordGenerator
{
public:
    explicit RecordGenerator(quint64 seed = 1) : m_random(seed) {}

    [[nodiscard]] ScheduleItem schedule();
    [[nodiscard]] ReminderItem reminder();
    [[nodiscard]] Goal goal();
    [[nodiscard]] SavedData savedData(qsizetype schedules, qsizetype reminders, qsizetype goals);

    /// 0 … bound - 1
    [[nodiscard]] qsizetype below(qsizetype bound);
    [[nodiscard]] bool happens(double probability);
    [[nodiscard]] QString words(qsizetype count);
    [[nodiscard]] QUuid id();
    /// A minute of the years 2020 to 2029; rarely with a fraction.
    [[nodiscard]] Instant instant();

private:
    std::mt19937_64 m_random;
};

} // namespace tessaly
