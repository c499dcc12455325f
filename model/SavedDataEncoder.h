#pragma once

#include "model/RecordCodecWriter.h"
#include "model/RowsChange.h"
#include "model/SavedData.h"

#include <QByteArrayView>

#include <array>
#include <vector>

namespace tessaly {

/// Keeps the JSON of the main data and encodes only the records that a change touched. Its bytes are always the same as
/// those of encodeSavedData().
class SavedDataEncoder
{
public:
    enum class Section { Schedules, Reminders, Goals };

    /// A change of the bytes: `removed` bytes at `offset` gave way to `inserted` bytes.
    struct Splice
    {
        qsizetype offset = 0;
        qsizetype removed = 0;
        qsizetype inserted = 0;

        bool operator==(const Splice &) const = default;
    };

    /// Encodes everything. False when a value has no JSON form (NaN, infinity); there are no bytes then until a call
    /// succeeds.
    [[nodiscard]] bool encode(const SavedData &data);

    /// Updates the bytes after `change` to one section; `data` is the state after it. Encodes everything when there are
    /// no bytes yet, or when most records changed. False as for encode(); the next call that succeeds covers this
    /// change too.
    [[nodiscard]] bool update(const SavedData &data, Section section, const RowsChange &change);

    /// The text, or nothing after a call that failed. The view is valid until the next call.
    [[nodiscard]] QByteArrayView bytes() const { return m_isCurrent ? m_text.bytes() : QByteArrayView(); }
    /// How the bytes differ from those of the successful call before.
    [[nodiscard]] const Splice &lastSplice() const { return m_lastSplice; }

private:
    /// The list of one section.
    struct Extent
    {
        /// Length of each record without the comma behind it. Lengths rather than offsets: a change leaves those of
        /// the other records alone, and adding 100,000 of them up takes some ten microseconds.
        std::vector<qsizetype> lengths;
        /// Length of all records with the commas between them.
        qsizetype length = 0;
    };

    template <class Record>
    void encodeSection(const QList<Record> &records, Extent &extent);
    template <class Record>
    [[nodiscard]] bool replaceRows(const QList<Record> &records, Section section, const RowsChange &change);
    [[nodiscard]] qsizetype sectionStart(Section section) const;
    Extent &extent(Section section) { return m_extents[size_t(section)]; }

    codec::Writer m_text;
    codec::Writer m_scratch;
    std::array<Extent, 3> m_extents;
    Splice m_lastSplice;
    /// Length of the text of the last successful call.
    qsizetype m_size = 0;
    bool m_isCurrent = false;
};

} // namespace tessaly
