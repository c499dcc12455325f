#pragma once

#include "model/RowsChange.h"
#include "model/ScheduleItem.h"

#include <QList>
#include <QUuid>

namespace tessaly {

/// What a refresh of a feed changes in the schedules, in pieces that are applied one after the other.
struct FeedUpdate
{
    struct Piece
    {
        /// Never a Reset.
        RowsChange rows = {};
        /// The new values of those rows; none for a removal.
        QList<ScheduleItem> items = {};
    };
    /// None when the schedules of the feed are what was read already.
    QList<Piece> pieces = {};
    /// How many schedules with notes or tasks it removes.
    qsizetype annotatedLost = 0;
};

/// Rows of the largest piece: to apply and save as many is not felt.
inline constexpr qsizetype largestFeedPiece = 4096;

/// Leads from `schedules` to the others followed by those of mergeFeed(), in pieces of at most `largestPiece` rows.
/// `fresh` is what feedSchedules() read. Rows that stay as they are, at both ends and between the pieces, are not
/// touched.
[[nodiscard]] FeedUpdate feedUpdate(QList<ScheduleItem> fresh, const QUuid &feedID,
                                    const QList<ScheduleItem> &schedules, qsizetype largestPiece = largestFeedPiece);

/// The list must be as the pieces before have left it.
void applyPiece(const FeedUpdate::Piece &piece, QList<ScheduleItem> &schedules);

} // namespace tessaly
