#include "platform/common/BlobEdits.h"

namespace tessaly {

namespace {

/// Makes a piece begin at `offset` of the whole; its index, or -1 when the whole is shorter.
qsizetype splitAt(QList<QByteArrayView> &pieces, qint64 offset)
{
    for (qsizetype index = 0; index < pieces.size(); ++index) {
        if (offset == 0)
            return index;
        const QByteArrayView piece = pieces.at(index);
        if (offset < piece.size()) {
            pieces[index] = piece.first(offset);
            pieces.insert(index + 1, piece.sliced(offset));
            return index + 1;
        }
        offset -= piece.size();
    }
    return offset == 0 ? pieces.size() : -1;
}

} // namespace

std::optional<QByteArray> applyEdits(QByteArrayView base, const QList<StoredEdit> &edits)
{
    QList<QByteArrayView> pieces{base};
    for (const StoredEdit &edit : edits) {
        if (edit.offset < 0 || edit.removed < 0)
            return std::nullopt;
        const qsizetype first = splitAt(pieces, edit.offset);
        const qsizetype last = first < 0 ? -1 : splitAt(pieces, edit.offset + edit.removed);
        if (last < 0)
            return std::nullopt;
        pieces.remove(first, last - first);
        pieces.insert(first, QByteArrayView(edit.inserted));
    }
    qsizetype size = 0;
    for (const QByteArrayView piece : pieces)
        size += piece.size();
    QByteArray blob;
    blob.reserve(size);
    for (const QByteArrayView piece : pieces)
        blob.append(piece);
    return blob;
}

} // namespace tessaly
