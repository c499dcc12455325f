#pragma once

#include "model/ScheduleRules.h"

#include <QDateTime>
#include <QObject>
#include <QStringList>
#include <QtQml/qqml.h>

namespace tessaly {

class PlannerStore;

/// The add form of the schedule screen.
class ScheduleFormModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Belongs to ScheduleViewModel")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY fieldsChanged)
    Q_PROPERTY(QString tag READ tag WRITE setTag NOTIFY fieldsChanged)
    Q_PROPERTY(QDateTime start READ start WRITE setStart NOTIFY fieldsChanged)
    Q_PROPERTY(QDateTime end READ end WRITE setEnd NOTIFY fieldsChanged)
    Q_PROPERTY(QString endNote READ endNote NOTIFY fieldsChanged)
    Q_PROPERTY(QString colorHex READ colorHex WRITE setColorHex NOTIFY fieldsChanged)
    Q_PROPERTY(bool isExportRequested READ isExportRequested WRITE setExportRequested NOTIFY fieldsChanged)
    Q_PROPERTY(QStringList calendarTitles READ calendarTitles NOTIFY calendarsChanged)
    Q_PROPERTY(int calendarIndex READ calendarIndex WRITE setCalendarIndex NOTIFY calendarsChanged)

public:
    using QObject::QObject;
    /// Keeps the title, see FormDrafts.
    ~ScheduleFormModel() override;

    /// The times become now and one hour from now, the title the one that was kept. The store must outlive the form.
    void setStore(PlannerStore *store);

    /// What becomes of an end that is not after the start; empty for others.
    [[nodiscard]] QString endNote() const;
    [[nodiscard]] const QString &title() const { return m_form.title; }
    void setTitle(const QString &title);
    [[nodiscard]] const QString &tag() const { return m_form.tag; }
    void setTag(const QString &tag);
    /// Local wall-clock times.
    [[nodiscard]] QDateTime start() const;
    void setStart(const QDateTime &start);
    [[nodiscard]] QDateTime end() const;
    void setEnd(const QDateTime &end);
    /// "#RRGGBB"; text that is no colour is not taken.
    [[nodiscard]] const QString &colorHex() const { return m_form.colorHex; }
    void setColorHex(const QString &hex);
    /// Whether the schedule shall also go to a system calendar.
    [[nodiscard]] bool isExportRequested() const { return m_form.isExportRequested; }
    void setExportRequested(bool isRequested);
    /// The calendars offered, as title and account.
    [[nodiscard]] QStringList calendarTitles() const;
    /// The calendar that a new schedule would go to; -1 when none is offered.
    [[nodiscard]] int calendarIndex() const;
    void setCalendarIndex(int index);

    [[nodiscard]] const FormTimes &times() const { return m_form.times; }
    /// Keeps the time of day and the duration.
    void moveTo(QDate day);
    void setTimes(const FormTimes &times);
    /// Adds the schedule to the store and empties title and tag; false when the title is blank.
    bool add();

signals:
    void fieldsChanged();
    void calendarsChanged();

private:
    [[nodiscard]] QList<CalendarOption> choices() const;

    PlannerStore *m_store = nullptr;
    ScheduleForm m_form;
    QString m_chosenCalendar;
};

/// Says that an end that is not after the start will be put off, in the interface language; empty for others.
[[nodiscard]] QString lateEndNote(const PlannerStore &store, const FormTimes &times);

} // namespace tessaly
