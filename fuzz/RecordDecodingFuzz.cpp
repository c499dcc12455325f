#include "model/RecordCodec.h"
#include "model/SavedDataEncoder.h"

#include <cstdint>
#include <cstdlib>

using namespace tessaly;

namespace {

void require(bool isTrue)
{
    if (!isTrue)
        std::abort();
}

void checkSavedData(QByteArrayView json)
{
    const std::optional<SavedData> data = decodeSavedData(json);
    if (!data)
        return;
    const std::optional<QByteArray> text = encodeSavedData(*data);
    require(text.has_value());
    require(decodeSavedData(*text) == data);

    // The kept text must come out the same when one record after the other is taken away and put back.
    SavedDataEncoder encoder;
    SavedData changed = *data;
    require(encoder.encode(changed));
    for (qsizetype row = 0; row < changed.schedules.size() && row < 4; ++row) {
        const ScheduleItem item = changed.schedules.takeAt(row);
        require(encoder.update(changed, SavedDataEncoder::Section::Schedules, {RowsChange::Kind::Removed, row, 1}));
        changed.schedules.insert(row, item);
        require(encoder.update(changed, SavedDataEncoder::Section::Schedules, {RowsChange::Kind::Inserted, row, 1}));
        require(encoder.bytes() == *text);
    }
}

void checkDocumentLibrary(QByteArrayView json)
{
    const std::optional<DocumentLibraryData> library = decodeDocumentLibrary(json);
    if (!library)
        return;
    const std::optional<QByteArray> text = encodeDocumentLibrary(*library);
    require(text.has_value());
    require(decodeDocumentLibrary(*text) == library);
}

void checkCalendarFeeds(QByteArrayView json)
{
    const std::optional<QList<CalendarFeed>> feeds = decodeCalendarFeeds(json);
    if (!feeds)
        return;
    const std::optional<QByteArray> text = encodeCalendarFeeds(*feeds);
    require(text.has_value());
    require(decodeCalendarFeeds(*text) == feeds);
}

} // namespace

/// Whatever decodes must encode, and decode again to the same records.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView json(reinterpret_cast<const char *>(data), qsizetype(size));
    checkSavedData(json);
    checkDocumentLibrary(json);
    checkCalendarFeeds(json);
    return 0;
}
