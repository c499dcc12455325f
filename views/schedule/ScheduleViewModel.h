#pragma once

#include "model/ScheduleIndex.h"
#include "model/ScheduleRules.h"
#include "model/WeekLayout.h"
#include "store/PlannerStore.h"
#include "views/schedule/ScheduleContents.h"
#include "views/schedule/ScheduleFormModel.h"
#include "views/schedule/ScheduleSheetModel.h"

#include <QObject>
#include <QtQml/qqml.h>

#include <memory>

namespace tessaly {

/// The state of the schedule screen: the week or month around a focus date, the list of the focus day, the add form
/// and what is open over it. Created each time the screen opens.
class ScheduleViewModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessaly::PlannerStore *store READ store WRITE setStore NOTIFY storeChanged REQUIRED)
    Q_PROPERTY(Scope scope READ scope WRITE setScope NOTIFY scopeChanged)
    Q_PROPERTY(QString headerTitle READ headerTitle NOTIFY titlesChanged)
    Q_PROPERTY(QString dayListTitle READ dayListTitle NOTIFY titlesChanged)
    Q_PROPERTY(int startHour READ startHour NOTIFY measuresChanged)
    Q_PROPERTY(int hourCount READ hourCount NOTIFY measuresChanged)
    Q_PROPERTY(double hourHeight READ hourHeight NOTIFY measuresChanged)
    Q_PROPERTY(double totalHeight READ totalHeight NOTIFY measuresChanged)
    Q_PROPERTY(double dayWidth READ dayWidth WRITE setDayWidth NOTIFY dayWidthChanged)
    Q_PROPERTY(int focusedPlace READ focusedPlace NOTIFY titlesChanged)
    Q_PROPERTY(QAbstractItemModel *days READ days CONSTANT)
    Q_PROPERTY(QAbstractItemModel *blocks READ blocks CONSTANT)
    Q_PROPERTY(QAbstractItemModel *monthLines READ monthLines CONSTANT)
    Q_PROPERTY(QAbstractItemModel *dayList READ dayList CONSTANT)
    Q_PROPERTY(tessaly::ScheduleFormModel *form READ form CONSTANT)
    Q_PROPERTY(tessaly::ScheduleSheetModel *sheets READ sheets CONSTANT)

public:
    enum class Scope { Week, Month };
    Q_ENUM(Scope)

    explicit ScheduleViewModel(QObject *parent = nullptr);
    ~ScheduleViewModel() override;

    [[nodiscard]] PlannerStore *store() const { return m_store; }
    /// Takes effect once; the store must outlive the view-model.
    void setStore(PlannerStore *store);

    [[nodiscard]] Scope scope() const { return m_scope; }
    void setScope(Scope scope);
    [[nodiscard]] Instant focusDate() const { return m_focusDate; }
    [[nodiscard]] QString headerTitle() const;
    /// The focus day's date and "schedule".
    [[nodiscard]] QString dayListTitle() const;

    [[nodiscard]] int startHour() const { return m_measures.startHour; }
    /// Hours shown in the week; 0 when the end is not after the start.
    [[nodiscard]] int hourCount() const;
    /// Points.
    [[nodiscard]] double hourHeight() const { return m_measures.hourHeight; }
    [[nodiscard]] double totalHeight() const { return m_measures.totalHeight; }
    /// Width of one day column in points, set by the view; the frames of the blocks depend on it.
    [[nodiscard]] double dayWidth() const { return m_dayWidth; }
    void setDayWidth(double width);

    /// 7 or 42 rows, see dayRoles().
    [[nodiscard]] DayModel *days() { return &m_days; }
    /// Place of the focus day among the days.
    [[nodiscard]] int focusedPlace() const;
    /// Filled in week scope.
    [[nodiscard]] BlockModel *blocks() { return &m_blocks; }
    /// Filled in month scope.
    [[nodiscard]] MonthLineModel *monthLines() { return &m_monthLines; }
    [[nodiscard]] DayListModel *dayList() { return &m_dayList; }
    [[nodiscard]] ScheduleFormModel *form() const { return m_form.get(); }
    [[nodiscard]] ScheduleSheetModel *sheets() const { return m_sheets.get(); }

    Q_INVOKABLE void showPrevious() { moveBy(-1); }
    Q_INVOKABLE void showNext() { moveBy(1); }
    Q_INVOKABLE void showToday();
    /// Makes a day the focus day; places before and after the shown days count on.
    Q_INVOKABLE void focusPlace(int place);
    /// Selects the block's schedule and opens its note for viewing.
    Q_INVOKABLE void selectBlock(int row);
    /// Opens the note of a schedule of the day list for editing.
    Q_INVOKABLE void editListed(int row);
    /// Deletes without asking.
    Q_INVOKABLE void deleteListed(int row);
    /// Empty time was chosen in a shown day, y points below the top of the time area.
    Q_INVOKABLE void tapTime(int place, double y);
    /// Adds the form's schedule and empties its title and tag; false when the title is blank. A schedule on a day that
    /// is not shown is announced.
    Q_INVOKABLE bool addSchedule();
    /// Makes the day of the schedule added last the focus day.
    Q_INVOKABLE void showAdded() { setFocusDate(m_addedDate); }

    /// Where an arrow key leads from a block: `dayStep` to another day, else `timeStep` within the day.
    Q_INVOKABLE [[nodiscard]] int neighbourBlock(int row, int dayStep, int timeStep) const;

signals:
    void storeChanged();
    void scopeChanged();
    void titlesChanged();
    void measuresChanged();
    void dayWidthChanged();
    /// A schedule was added to a day that is not shown; the message names it.
    void addedElsewhere(const QString &message);

private:
    [[nodiscard]] CalendarScope calendarScope() const;
    [[nodiscard]] QDate focusDay() const;
    [[nodiscard]] ScheduleSource source() const;
    [[nodiscard]] const ScheduleItem *scheduleWithId(const QUuid &id) const;
    void moveBy(int step);
    void setFocusDate(Instant date);
    void selectSchedule(const QUuid &id);
    void onSchedulesChanged(const RowsChange &change);
    void onDisplayHoursChanged();
    void onTimeZoneChanged();
    void refresh();
    void refreshBlocks(const QList<QList<DayEvent>> &events);

    PlannerStore *m_store = nullptr;
    ScheduleIndex m_index;
    std::unique_ptr<ScheduleFormModel> m_form;
    std::unique_ptr<ScheduleSheetModel> m_sheets;
    Scope m_scope = Scope::Week;
    Instant m_focusDate;
    Instant m_addedDate;
    WeekMeasures m_measures;
    double m_dayWidth = 0;
    QUuid m_selectedID;
    QList<QDate> m_visibleDays;
    DayModel m_days;
    BlockModel m_blocks;
    MonthLineModel m_monthLines;
    DayListModel m_dayList;
};

} // namespace tessaly
