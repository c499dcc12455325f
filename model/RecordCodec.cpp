#include "model/RecordCodec.h"

#include "model/RecordCodecReader.h"
#include "model/RecordCodecTables.h"
#include "model/RecordCodecWriter.h"

namespace tessaly {

namespace {

template <class Record>
std::optional<Record> decoded(QByteArrayView json)
{
    Record record;
    if (!codec::readObject(json, codec::TypeOf<Record>::type, &record))
        return std::nullopt;
    return record;
}

std::optional<QByteArray> taken(codec::Writer &writer)
{
    if (writer.hasFailed())
        return std::nullopt;
    return writer.take();
}

} // namespace

std::optional<SavedData> decodeSavedData(QByteArrayView json)
{
    return decoded<SavedData>(json);
}

std::optional<DocumentLibraryData> decodeDocumentLibrary(QByteArrayView json)
{
    return decoded<DocumentLibraryData>(json);
}

std::optional<QList<CalendarFeed>> decodeCalendarFeeds(QByteArrayView json)
{
    QList<CalendarFeed> feeds;
    if (!codec::readArray(json, codec::TypeOf<CalendarFeed>::type, &feeds))
        return std::nullopt;
    return feeds;
}

std::optional<QByteArray> encodeSavedData(const SavedData &data)
{
    codec::Writer writer;
    codec::write(writer, data);
    return taken(writer);
}

std::optional<QByteArray> encodeDocumentLibrary(const DocumentLibraryData &library)
{
    codec::Writer writer;
    codec::write(writer, library);
    return taken(writer);
}

std::optional<QByteArray> encodeCalendarFeeds(const QList<CalendarFeed> &feeds)
{
    codec::Writer writer;
    codec::writeList(writer, feeds);
    return taken(writer);
}

} // namespace tessaly
