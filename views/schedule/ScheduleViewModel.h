#pragma once

#include "model/ScheduleColors.h"
#include "model/ScheduleIndex.h"
#include "model/ScheduleRules.h"
#include "model/WeekLayout.h"
#include "store/PlannerStore.h"
#include "views/schedule/CurrentTime.h"
#include "views/schedule/MonthDragModel.h"
#include "views/schedule/ScheduleContents.h"
#include "views/schedule/ScheduleFormModel.h"
#include "views/schedule/ScheduleSheetModel.h"
#include "views/schedule/WeekDragModel.h"
#include "views/schedule/WeekMargins.h"

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
    Q_PROPERTY(QString weekRange READ weekRange NOTIFY titlesChanged)
    Q_PROPERTY(tessaly::CurrentTime *currentTime READ currentTime CONSTANT)
    Q_PROPERTY(tessaly::WeekDragModel *drag READ drag CONSTANT)
    Q_PROPERTY(tessaly::MonthDragModel *monthDrag READ monthDrag CONSTANT)
    Q_PROPERTY(tessaly::WeekMargins *margins READ margins CONSTANT)
    Q_PROPERTY(int dayCount READ dayCount NOTIFY titlesChanged)
    Q_PROPERTY(QStringList weekNumbers READ weekNumbers NOTIFY titlesChanged)
    Q_PROPERTY(bool hasDayNotes READ hasDayNotes NOTIFY titlesChanged)
    Q_PROPERTY(QString focusedDate READ focusedDate NOTIFY titlesChanged)
    Q_PROPERTY(QString dayListTitle READ dayListTitle NOTIFY titlesChanged)
    Q_PROPERTY(int startHour READ startHour NOTIFY measuresChanged)
    Q_PROPERTY(int hourCount READ hourCount NOTIFY measuresChanged)
    Q_PROPERTY(double hourHeight READ hourHeight NOTIFY measuresChanged)
    Q_PROPERTY(double totalHeight READ totalHeight NOTIFY measuresChanged)
    Q_PROPERTY(double dayWidth READ dayWidth WRITE setDayWidth NOTIFY dayWidthChanged)
    Q_PROPERTY(int focusedPlace READ focusedPlace NOTIFY titlesChanged)
    Q_PROPERTY(QStringList weekdayNames READ weekdayNames NOTIFY titlesChanged)
    Q_PROPERTY(int listedCount READ listedCount NOTIFY titlesChanged)
    Q_PROPERTY(QAbstractItemModel *weekDays READ weekDays CONSTANT)
    Q_PROPERTY(QAbstractItemModel *monthDays READ monthDays CONSTANT)
    Q_PROPERTY(QAbstractItemModel *blocks READ blocks CONSTANT)
    Q_PROPERTY(QAbstractItemModel *monthLines READ monthLines CONSTANT)
    Q_PROPERTY(QAbstractItemModel *dayList READ dayList CONSTANT)
    Q_PROPERTY(tessaly::ScheduleFormModel *form READ form CONSTANT)
    Q_PROPERTY(QRectF formFrame READ formFrame NOTIFY formFrameChanged)
    Q_PROPERTY(QString formTimeText READ formTimeText NOTIFY formFrameChanged)
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
    /// The days of the shown week in words, with its number where that is shown; empty for the month.
    [[nodiscard]] QString weekRange() const;
    [[nodiscard]] CurrentTime *currentTime() { return &m_currentTime; }
    [[nodiscard]] WeekDragModel *drag() { return &m_drag; }
    [[nodiscard]] MonthDragModel *monthDrag() { return &m_monthDrag; }
    [[nodiscard]] WeekMargins *margins() { return &m_margins; }
    /// Columns of the week: 7, or 5 without the weekend.
    [[nodiscard]] int dayCount() const { return m_store && m_store->weekOptions().hidesWeekend ? 5 : 7; }
    /// In words, for each row of the month; empty unless they are shown.
    [[nodiscard]] QStringList weekNumbers() const;
    /// Whether each day has a note, such as its lunar day.
    [[nodiscard]] bool hasDayNotes() const { return m_store && m_store->weekOptions().showsChineseCalendar; }
    /// The focus day, ISO 8601.
    [[nodiscard]] QString focusedDate() const { return m_store ? focusDay().toString(Qt::ISODate) : QString(); }
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

    // The scope that is not shown keeps what it showed last.
    [[nodiscard]] DayModel *weekDays() { return &m_week.days; }
    [[nodiscard]] DayModel *monthDays() { return &m_month.days; }
    [[nodiscard]] BlockModel *blocks() { return &m_week.contents; }
    [[nodiscard]] MonthLineModel *monthLines() { return &m_month.contents; }
    /// The 5, 7 or 42 days of the scope that is shown.
    [[nodiscard]] DayModel *days() { return m_scope == Scope::Week ? weekDays() : monthDays(); }
    /// Place of the focus day among the days.
    [[nodiscard]] int focusedPlace() const;
    /// Short names of the first seven days shown.
    [[nodiscard]] QStringList weekdayNames() const;

    /// Schedules of the focus day. `dayList` has rows for those in and around what is in view only.
    [[nodiscard]] int listedCount() const { return static_cast<int>(m_listed.size()); }
    [[nodiscard]] DayListModel *dayList() { return &m_dayList; }
    /// The places of the day list that are in view.
    Q_INVOKABLE void showListed(int first, int last);
    /// Keeps the row at the place and its neighbours, instead of those kept before; returns its row in `dayList`.
    Q_INVOKABLE int keepListed(int place);
    /// Where the schedule stood that was the first to leave the day's list.
    Q_INVOKABLE [[nodiscard]] int departedPlace() const { return m_departedPlace; }
    [[nodiscard]] ScheduleFormModel *form() const { return m_form.get(); }
    /// Where a schedule of the form's times would stand in the week, as BlockRow::frame; empty when it is not shown.
    [[nodiscard]] QRectF formFrame() const;
    [[nodiscard]] QString formTimeText() const;
    /// Row of the block of the schedule added last; -1 when it is not shown.
    Q_INVOKABLE [[nodiscard]] int addedBlock() const { return blockOf(m_addedID); }
    [[nodiscard]] ScheduleSheetModel *sheets() const { return m_sheets.get(); }

    Q_INVOKABLE void showPrevious() { moveBy(-1); }
    Q_INVOKABLE void showNext() { moveBy(1); }
    Q_INVOKABLE void showToday();
    /// Makes a day the focus day; places before and after the shown days count on.
    Q_INVOKABLE void focusPlace(int place);
    /// Selects the block's schedule and opens its note for viewing.
    Q_INVOKABLE void selectBlock(int row);
    /// Moves the block's schedule so many days and minutes on, or its end so many minutes, and announces it. A step
    /// that continues the one before is undone with it. Shows the week that it leads to; returns the row there, -1 if
    /// the schedule cannot be moved.
    Q_INVOKABLE int moveBlock(int row, int days, int minutes, bool isContinued);
    Q_INVOKABLE int resizeBlock(int row, int minutes, bool isContinued);
    /// Deletes without asking.
    Q_INVOKABLE void deleteBlock(int row);
    /// Opens the note of a line of the month for viewing.
    Q_INVOKABLE void openMonthLine(int row);
    /// Opens the note of a schedule of the day list for viewing, or for editing.
    Q_INVOKABLE void openListed(int row);
    Q_INVOKABLE void editListed(int row);
    /// Makes the day of the schedule the focus day; its place in the day list, or -1 for one that is not shown.
    Q_INVOKABLE int reveal(const QString &scheduleId);
    /// Deletes without asking.
    Q_INVOKABLE void deleteListed(int row);
    /// Empty time was chosen in a shown day, y points below the top of the time area.
    Q_INVOKABLE void tapTime(int place, double y);
    /// Gives the form these times, and the focus to their day.
    void chooseTimes(const FormTimes &times);
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
    void formFrameChanged();
    /// Something happened that is to be told to those who do not see it.
    void announced(const QString &text);
    /// A schedule cannot be moved.
    void refused(const QString &reason);
    /// An empty time was chosen for the form.
    void timeChosen();
    /// The blocks are those of another week.
    void weekTurned();
    /// The day list is that of another day.
    void listTurned();
    /// A schedule was added to a day that is not shown; the message names it.
    void addedElsewhere(const QString &message);
    /// The end of what was added was not after its start; the message says what has become of it.
    void lengthened(const QString &message);
    /// A schedule that undo or redo has brought back or changed is shown in this row.
    void blockRestored(int row);
    void listedRestored(int row);

private:
    [[nodiscard]] CalendarScope calendarScope() const;
    [[nodiscard]] QDate focusDay() const;
    [[nodiscard]] ScheduleSource source() const;
    [[nodiscard]] const ScheduleItem *scheduleWithId(const QUuid &id) const;
    void moveBy(int step);
    void openSchedule(const QUuid &id);
    void deleteSchedule(const QUuid &id);
    /// Whether any of its days is.
    [[nodiscard]] bool isShown(const FormTimes &times) const;
    void announceDrag(WeekDragKind kind, const FormTimes &times);
    /// As WeekMargins::shifted().
    void shiftDays(const QUuid &id, WeekDragKind kind, int days, bool isContinued);
    bool moveSchedule(const QUuid &id, int days, int minutes, bool isContinued);
    bool rescheduleBlock(const ScheduleItem &schedule, const FormTimes &times, bool isContinued);
    [[nodiscard]] int blockOf(const QUuid &id) const;
    void setFocusDate(Instant date);
    void selectSchedule(const QUuid &id);
    void openNote(const QUuid &id, NoteMode mode);
    void onSchedulesChanged(const RowsChange &change);
    void onItemsChanged();
    void showChanged(const StateChange &change);
    void onCalendarFeedsChanged();
    void onDisplayHoursChanged();
    void onTimeZoneChanged();
    void refresh();
    void refreshBlocks(const DaySchedules &events);
    void refreshDayList();

    PlannerStore *m_store = nullptr;
    ScheduleIndex m_index;
    LinkColors m_linkColors;
    QSet<QUuid> m_doneItems;
    std::unique_ptr<ScheduleFormModel> m_form;
    std::unique_ptr<ScheduleSheetModel> m_sheets;
    Scope m_scope = Scope::Week;
    Instant m_focusDate;
    Instant m_addedDate;
    QUuid m_addedID;
    WeekMeasures m_measures;
    double m_dayWidth = 0;
    QUuid m_selectedID;
    QList<QDate> m_visibleDays;
    /// What one scope shows.
    template <class Contents>
    struct Body
    {
        DayModel days;
        Contents contents;
        /// The days that it was filled for last.
        QList<QDate> filledFor = {};
    };
    Body<BlockModel> m_week;
    Body<MonthLineModel> m_month;
    ListWindow m_listWindow;
    QDate m_listedDay;
    QList<QUuid> m_listed;
    int m_departedPlace = 0;
    DayListModel m_dayList;
    CurrentTime m_currentTime;
    WeekDragModel m_drag{m_week.contents};
    MonthDragModel m_monthDrag{m_month.contents};
    WeekMargins m_margins;
};

} // namespace tessaly
