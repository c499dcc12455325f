#pragma once

#include "model/AppLanguage.h"
#include "model/SavedData.h"
#include "model/UserCalendar.h"
#include "platform/EventStore.h"

#include <QHash>

namespace tessaly {

/// A made-up week around `now` with schedules, to-dos and goals, in the words of the language.
[[nodiscard]] SavedData sampleData(AppLanguage language, const UserCalendar &calendar, Instant now);

/// Made-up documents in categories, changed before `now`, the text of each and what it was before.
struct SampleDocuments
{
    DocumentLibraryData library = {};
    QHash<QUuid, QString> texts = {};
    struct FormerText
    {
        QUuid documentID;
        Instant since;
        QString text;
    };
    QList<FormerText> formerTexts = {};
};
[[nodiscard]] SampleDocuments sampleDocuments(AppLanguage language, Instant now);

/// Calendars of made-up accounts.
[[nodiscard]] QList<EventCalendar> sampleCalendars(AppLanguage language);

} // namespace tessaly
