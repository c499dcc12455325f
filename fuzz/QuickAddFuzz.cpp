#include "model/QuickAdd.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace tessaly;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

/// Any text is read without a crash, in the night in which the clocks change; what comes out keeps the promises of
/// QuickEntry.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const UserCalendar calendar(QTimeZone("Europe/Vienna"), Qt::Monday, QLocale::c());
    static const Instant now = calendar.instant(QDate(2026, 3, 28), QTime(23, 50));

    const QString phrase = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QuickEntry entry = quickEntry(phrase, now, calendar);
    require(entry.understood.isEmpty() == !entry.start);
    require(!entry.end || *entry.end > *entry.start);
    require(phrase.simplified().isEmpty() || !entry.title.isEmpty());
    qsizetype from = 0;
    for (const TextSpan &span : entry.understood) {
        require(span.start >= from && span.length > 0);
        from = span.start + span.length;
    }
    require(from <= phrase.size());
    return 0;
}
