#pragma once

#include "model/Goal.h"
#include "model/MarkdownDocument.h"
#include "model/ReminderItem.h"
#include "model/ScheduleItem.h"

#include <QList>

#include <optional>

namespace tessaly {

/// The envelope of the main data.
struct SavedData
{
    QList<ScheduleItem> schedules = {};
    QList<ReminderItem> reminders = {};
    QList<Goal> goals = {};

    bool operator==(const SavedData &) const = default;
};

/// The envelope of the document library's metadata.
struct DocumentLibraryData
{
    QList<MarkdownCategory> categories = {};
    QList<MarkdownDocument> documents = {};
    /// Absent while there is none.
    std::optional<QList<DeletedDocument>> deleted = {};

    bool operator==(const DocumentLibraryData &) const = default;
};

} // namespace tessaly
