#include "app/ScreenTour.h"

#include "app/Composition.h"
#include "app/LarkspanApp.h"
#include "model/Uuid.h"
// lint-allow(arrows): pictures are files, and one function writes those
#include "platform/common/LocalFileSystem.h"
#include "store/PlannerStore.h"
#include "views/documents/DocumentLibraryViewModel.h"
#include "views/goals/GoalViewModel.h"
#include "views/schedule/CalendarSelectionModel.h"
#include "views/schedule/ScheduleViewModel.h"
#include "views/todos/MissedReminders.h"
#include "views/todos/ReminderViewModel.h"

#include <QBuffer>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QGuiApplication>
#include <QImage>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStyleHints>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace tessaly {

namespace {

constexpr int patienceMs = 20'000;

/// Lets the program go on for a moment in a loop like its own: in another, nothing is deleted later and the web engine
/// hardly moves.
void rest()
{
    constexpr int restMs = 60;
    QEventLoop loop;
    QTimer::singleShot(restMs, &loop, &QEventLoop::quit);
    loop.exec();
}

/// A place to visit: a screen, and what opens and closes something over it.
struct Stop
{
    QString name;
    ShellModel::SidebarItem section;
    /// Both get the window's content and the screen in it; may be empty.
    std::function<void(QObject &content, QObject &screen)> open = {};
    std::function<void(QObject &content, QObject &screen)> close = {};
};

/// Replaces the preview where it is not looked at.
const QUrl emptyPreview(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/Documents/PreviewSlot.qml"));

/// Something over the window that a property of its content opens.
Stop overWindow(const QString &name, const char *property)
{
    const auto setter = [property](bool isOpen) {
        return [property, isOpen](QObject &content, QObject &) {
            if (content.metaObject()->indexOfProperty(property) < 0)
                qFatal("The window's content has no %s", property);
            content.setProperty(property, isOpen);
        };
    };
    return {name, ShellModel::Overview, setter(true), setter(false)};
}

/// Calls the function with the screen's view-model.
template <class ViewModel>
std::function<void(QObject &, QObject &)> onViewModel(void (*verb)(ViewModel &))
{
    return [verb](QObject &, QObject &screen) {
        auto *viewModel = screen.findChild<ViewModel *>();
        if (!viewModel)
            qFatal("The screen has no %s", ViewModel::staticMetaObject.className());
        verb(*viewModel);
    };
}

Stop onSchedule(const QString &name, void (*open)(ScheduleViewModel &), void (*close)(ScheduleViewModel &))
{
    return {name, ShellModel::Schedule, onViewModel(open), onViewModel(close)};
}

/// The import sheet with something of its links.
Stop onLinks(const QString &name, void (*open)(CalendarSelectionModel &))
{
    const auto openSheet =
        onViewModel<ScheduleViewModel>([](ScheduleViewModel &viewModel) { viewModel.sheets()->openImportSettings(); });
    const auto closeSheet =
        onViewModel<ScheduleViewModel>([](ScheduleViewModel &viewModel) { viewModel.sheets()->closeSheet(); });
    const auto openLinks = onViewModel(open);
    const auto closeLinks = onViewModel<CalendarSelectionModel>([](CalendarSelectionModel &links) {
        links.details()->close();
        links.trial()->setUrl({});
    });
    const auto both = [](const auto &first, const auto &second) {
        return [first, second](QObject &content, QObject &screen) {
            first(content, screen);
            second(content, screen);
        };
    };
    return {name, ShellModel::Schedule, both(openSheet, openLinks), both(closeLinks, closeSheet)};
}

/// The next visit creates the screen again.
void leaveToOverview(QObject &content, QObject &)
{
    content.setProperty("section", ShellModel::Overview);
}

/// The foot of a long screen.
Stop atFoot(const QString &name, ShellModel::SidebarItem section)
{
    const auto scroll = [](QObject &, QObject &screen) {
        auto *page = screen.findChild<QQuickItem *>(QStringLiteral("page"));
        if (!page)
            qFatal("The screen does not scroll");
        const auto number = [page](const char *property) { return page->property(property).toReal(); };
        page->setProperty("contentY", number("originY") + number("contentHeight") - page->height());
    };
    return {name, section, scroll, leaveToOverview};
}

void openAllGroups(ReminderViewModel &reminders)
{
    for (int row = 0; row < reminders.rows()->rowCount(); ++row)
        reminders.setExpanded(row, true);
}

/// Reminders of the to-dos with a due date, as if they had been missed; not as a step, so that no other screen says so.
void missReminders(MissedReminders &missed)
{
    const PlannerStore &store = *missed.store();
    QList<WaitingReminder> reminders;
    for (const ReminderItem &item : store.reminders()) {
        if (auto reminder = waitingReminder(item, {}, store.calendar())) {
            reminder->state = ReminderState::Missed;
            reminders.append(*reminder);
        }
    }
    StateChange done;
    missed.store()->waitingReminders().replace({}, reminders, done);
}

void forgetMissed(MissedReminders &missed)
{
    StateChange done;
    WaitingReminders &reminders = missed.store()->waitingReminders();
    reminders.replace(QList(reminders.list()), {}, done);
}

void fillInRepetition(ReminderViewModel &reminders)
{
    constexpr int weekly = 3;
    reminders.setTitle(QStringLiteral("…"));
    reminders.setHasDueDate(true);
    reminders.setRepetition(weekly);
}

/// Edits the first goal, its first subgoal and that one's first task.
void editFirstGoal(GoalViewModel &goals)
{
    if (goals.rows()->rows().isEmpty())
        return;
    GoalCardModel *card = goals.card(uuidText(goals.rows()->rows().first().goalID));
    card->toggleEditing();
    card->toggleRowEditing(0);
    card->toggleRowEditing(1);
}

/// The newest document of the first category, which has something of everything.
void openLecture(DocumentLibraryViewModel &documents)
{
    const QList<DocumentListRow> &rows = documents.rows()->rows();
    const auto category = std::find_if(
        rows.cbegin(), rows.cend(), [](const DocumentListRow &row) { return row.kind == DocumentRow::Kind::Category; });
    const int row = static_cast<int>(category - rows.cbegin());
    documents.setExpanded(row, true);
    documents.openDocument(row + 1);
}

ShellModel &shellOf(QObject &content)
{
    return *content.property("shell").value<ShellModel *>();
}

/// Closes a sheet or a page over the window, should it be there.
void closeNamed(const QObject &content, const QString &name)
{
    const auto *item = qobject_cast<const QQuickItem *>(&content);
    if (auto *popup = item->window()->findChild<QObject *>(name))
        QMetaObject::invokeMethod(popup, "close");
    else
        qWarning("tessaly: nothing is named %s", qUtf8Printable(name));
}

/// Undoes what a stop has done, and the message about it with it.
std::function<void(QObject &, QObject &)> undoAndLeave(int steps)
{
    return [steps](QObject &content, QObject &screen) {
        UndoModel &undo = *shellOf(content).undo();
        for (int step = 0; step < steps; ++step)
            undo.undo();
        undo.dismiss();
        leaveToOverview(content, screen);
    };
}

void deleteFirstToDo(ReminderViewModel &reminders)
{
    openAllGroups(reminders);
    for (int row = 0; row < reminders.rows()->rowCount(); ++row) {
        if (reminders.rows()->rows().at(row).kind != ReminderRowKind::Kind::Reminder)
            continue;
        reminders.remove(row);
        return;
    }
}

Stop recentlyDeleted()
{
    const auto open = onViewModel<DocumentLibraryViewModel>([](DocumentLibraryViewModel &documents) {
        DocumentLibrary &library = documents.store()->documentLibrary();
        library.deleteDocument(library.documents().constLast());
        for (int row = 0; row < documents.rows()->rowCount(); ++row)
            documents.setExpanded(row, documents.rows()->rows().at(row).kind == DocumentRow::Kind::RecentlyDeleted);
    });
    return {QStringLiteral("documents-deleted"), ShellModel::Documents, open, undoAndLeave(1)};
}

/// What has changed since a restore point.
Stop earlierVersions()
{
    const auto open = [](QObject &content, QObject &screen) {
        PlannerStore &store = *screen.findChild<ReminderViewModel *>()->store();
        if (store.generations().list().isEmpty()) {
            store.generations().keepBefore(GenerationReason::FirstSync);
            store.generations().keepBefore(GenerationReason::Clear);
        }
        ReminderItem reminder = store.reminders().constLast();
        reminder.title += QStringLiteral(" 2");
        store.updateReminder(reminder);
        store.removeReminder(store.reminders().constFirst().id);
        store.deleteSchedule(store.schedules().constFirst());
        store.addSchedule({.title = reminder.title, .date = store.clock().now()});
        shellOf(content).undo()->dismiss();
        QMetaObject::invokeMethod(&content, "versionsRequested");
    };
    const auto close = [](QObject &content, QObject &screen) {
        constexpr int steps = 4;
        closeNamed(content, QStringLiteral("versions"));
        undoAndLeave(steps)(content, screen);
    };
    return {QStringLiteral("sheet-versions"), ShellModel::Reminders, open, close};
}

Stop documentVersions()
{
    const auto open = [](QObject &content, QObject &screen) {
        openLecture(*screen.findChild<DocumentLibraryViewModel *>());
        const auto *window = qobject_cast<const QQuickItem *>(&content)->window();
        const auto openPage = [window]() -> QObject * {
            const QObjectList pages = window->findChildren<QObject *>(QStringLiteral("editorPage"));
            const auto open = std::ranges::find_if(pages, [](auto *page) { return page->property("opened").toBool(); });
            return open == pages.cend() ? nullptr : *open;
        };
        // The text comes once the page is open.
        const QDeadlineTimer deadline(patienceMs);
        do
            rest();
        while (!openPage() && !deadline.hasExpired());
        if (!openPage())
            qFatal("No document opens");
        auto *toolbar = openPage()->findChild<QObject *>(QStringLiteral("editorToolbar"));
        QMetaObject::invokeMethod(toolbar, "versionsRequested");
    };
    const auto close = [](QObject &content, QObject &screen) {
        closeNamed(content, QStringLiteral("documentVersions"));
        leaveToOverview(content, screen);
    };
    return {QStringLiteral("sheet-document-versions"), ShellModel::Documents, open, close};
}

/// What is found and would be added.
Stop paletteWithResults()
{
    const auto open = [](QObject &content, QObject &screen) {
        const PlannerStore &store = *screen.findChild<ScheduleViewModel *>()->store();
        QMetaObject::invokeMethod(&content, "paletteRequested");
        const auto *window = qobject_cast<const QQuickItem *>(&content)->window();
        auto *field = window->findChild<QObject *>(QStringLiteral("paletteField"));
        field->setProperty("text",
                           store.text(QStringLiteral("经济 明天下午3点"), QStringLiteral("micro tomorrow 3pm")));
        // Texts of documents are found in another thread.
        for (int pauses = 0; pauses < 10; ++pauses)
            rest();
    };
    const auto close = [](QObject &content, QObject &) { closeNamed(content, QStringLiteral("palette")); };
    return {QStringLiteral("sheet-palette"), ShellModel::Schedule, open, close};
}

Stop importQuestion()
{
    const auto offer = [](const QUrl &file) {
        return [file](QObject &content, QObject &) { shellOf(content).archive()->offerImport(file); };
    };
    return {QStringLiteral("dialog-import"), ShellModel::Overview,
            offer(QUrl::fromLocalFile(QStringLiteral("/Tessaly.zip"))), offer({})};
}

const QList<Stop> &stops()
{
    using ViewModel = ScheduleViewModel;
    const auto closeSheet = [](ViewModel &viewModel) { viewModel.sheets()->closeSheet(); };
    static const QList<Stop> list{
        {QStringLiteral("overview"), ShellModel::Overview},
        {QStringLiteral("schedule-week"), ShellModel::Schedule},
        onSchedule(
            QStringLiteral("schedule-month"), [](ViewModel &viewModel) { viewModel.setScope(ViewModel::Scope::Month); },
            [](ViewModel &viewModel) { viewModel.setScope(ViewModel::Scope::Week); }),
        onSchedule(
            QStringLiteral("sheet-import"), [](ViewModel &viewModel) { viewModel.sheets()->openImportSettings(); },
            closeSheet),
        onLinks(QStringLiteral("sheet-import-details"), [](CalendarSelectionModel &links) { links.showDetails(0); }),
        onLinks(QStringLiteral("sheet-import-trial"),
                [](CalendarSelectionModel &links) {
                    links.trial()->open(QStringLiteral("https://example.org/courses/autumn.ics"));
                }),
        onSchedule(
            QStringLiteral("sheet-display"), [](ViewModel &viewModel) { viewModel.sheets()->openDisplaySettings(); },
            closeSheet),
        onSchedule(
            QStringLiteral("sheet-sync"), [](ViewModel &viewModel) { viewModel.sheets()->openSyncSettings(); },
            closeSheet),
        onSchedule(
            QStringLiteral("note"), [](ViewModel &viewModel) { viewModel.editListed(0); },
            [](ViewModel &viewModel) { viewModel.sheets()->closeNote(); }),
        onSchedule(
            QStringLiteral("note-view"),
            [](ViewModel &viewModel) {
                viewModel.editListed(0);
                viewModel.sheets()->note()->cancel();
            },
            [](ViewModel &viewModel) { viewModel.sheets()->closeNote(); }),
        atFoot(QStringLiteral("schedule-lower"), ShellModel::Schedule),
        {QStringLiteral("todos"), ShellModel::Reminders},
        {QStringLiteral("todos-open"), ShellModel::Reminders, onViewModel(openAllGroups), leaveToOverview},
        {QStringLiteral("todos-missed"), ShellModel::Reminders, onViewModel(missReminders), onViewModel(forgetMissed)},
        {QStringLiteral("todos-repeat"), ShellModel::Reminders, onViewModel(fillInRepetition), leaveToOverview},
        {QStringLiteral("goals"), ShellModel::Goals},
        {QStringLiteral("goals-edit"), ShellModel::Goals, onViewModel(editFirstGoal), leaveToOverview},
        {QStringLiteral("todos-undo"), ShellModel::Reminders, onViewModel(deleteFirstToDo), undoAndLeave(1)},
        earlierVersions(),
        atFoot(QStringLiteral("goals-lower"), ShellModel::Goals),
        {QStringLiteral("documents"), ShellModel::Documents},
        {QStringLiteral("editor"), ShellModel::Documents, onViewModel(openLecture), leaveToOverview},
        documentVersions(),
        recentlyDeleted(),
        importQuestion(),
        paletteWithResults(),
        overWindow(QStringLiteral("sheet-shortcuts"), "showShortcuts"),
        overWindow(QStringLiteral("first-run"), "showNamePrompt"),
        overWindow(QStringLiteral("dialog-consent"), "showConsent"),
        overWindow(QStringLiteral("dialog-clear"), "showClearConfirmation"),
        overWindow(QStringLiteral("dialog-about"), "showAbout"),
        overWindow(QStringLiteral("dialog-unreadable"), "showUnreadable"),
        overWindow(QStringLiteral("dialog-unsaved"), "showUnsaved"),
    };
    return list;
}

const QList<QSize> &sizes()
{
    static const QList<QSize> list{{920, 620}, {1180, 800}};
    return list;
}

/// 9 September 2026, 11:20 UTC, a Wednesday.
constexpr Instant pictureTime = Instant::fromUnixSeconds(1'788'952'800);

/// Warnings of the program and of QML, without those of the platform plugin about this machine.
int complaintCount = 0;
QtMessageHandler previousHandler = nullptr;

void countComplaint(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    // The offscreen platform plugin says this of every window, without a logging category.
    if (message == QLatin1String("This plugin does not support propagateSizeHints()"))
        return;
    const bool isOfPlatform = QByteArrayView(context.category).startsWith("qt.qpa");
    if (type != QtDebugMsg && type != QtInfoMsg && !isOfPlatform)
        ++complaintCount;
    previousHandler(type, context, message);
}

bool savePicture(const QImage &picture, const QString &path)
{
    QBuffer png;
    return picture.save(&png, "PNG") && replaceFile(path, png.data());
}

class Tour
{
public:
    explicit Tour(LarkspanApp &app) : m_app(app) { app.window().setVisible(true); }

    void show(const Stop &stop) const
    {
        contentView().setProperty("section", stop.section);
        change(stop.open);
    }

    void leave(const Stop &stop) const { change(stop.close); }

    /// The window's picture once it no longer changes and a preview in it has come.
    [[nodiscard]] QImage picture() const
    {
        const QDeadlineTimer deadline(patienceMs);
        QImage before;
        QImage now = m_app.window().grabWindow();
        while (now != before && !deadline.hasExpired()) {
            rest();
            const bool wasSettled = isSettled();
            before = std::exchange(now, m_app.window().grabWindow());
            if (!wasSettled)
                before = QImage();
        }
        return now;
    }

private:
    /// A preview comes from a process of the web engine's.
    [[nodiscard]] bool isSettled() const
    {
        const auto *preview = m_app.window().findChild<QObject *>(QStringLiteral("preview"));
        return !preview || preview->property("isSettled").toBool();
    }

    [[nodiscard]] QObject &contentView() const { return *m_app.window().property("content").value<QObject *>(); }

    void change(const std::function<void(QObject &, QObject &)> &step) const
    {
        QObject &content = contentView();
        auto *screen = content.property("screen").value<QObject *>();
        if (!screen)
            qFatal("The window shows no screen");
        if (step)
            step(content, *screen);
    }

    LarkspanApp &m_app;
};

QString modeName(bool isDark)
{
    return isDark ? QStringLiteral("dark") : QStringLiteral("light");
}

enum class Previews { Real, Empty };

template <class Visit>
int forEveryView(AppLanguage startLanguage, const QList<QSize> &windowSizes, Previews previews, Visit visit)
{
    const auto composition = Composition::forDemo(startLanguage, pictureTime);
    LarkspanApp app(composition->store(), composition->preferences(), composition->systemAppearance(),
                    composition->fileDialogs());
    if (!app.load())
        return 1;
    DocumentLibrary &library = composition->store().documentLibrary();
    for (const MarkdownDocument &document : library.documents()) {
        if (library.readDocument(document).text.isEmpty())
            qWarning("The sample has lost the text of a document");
    }
    if (previews == Previews::Empty)
        app.documentDesktop().setSources(emptyPreview, {});
    const Tour tour(app);
    for (const QSize &size : windowSizes) {
        app.window().resize(size);
        for (const bool isDark : {false, true}) {
            app.shell().setAppearanceMode(modeName(isDark));
            for (const Stop &stop : stops()) {
                tour.show(stop);
                visit(*composition, tour, stop, size, isDark);
                tour.leave(stop);
            }
        }
    }
    return 0;
}

} // namespace

int runSelfTest()
{
    previousHandler = qInstallMessageHandler(countComplaint);
    for (const AppLanguage language : {AppLanguage::Chinese, AppLanguage::English}) {
        const int code = forEveryView(language, {sizes().first()}, Previews::Empty,
                                      [](const Composition &composition, const Tour &tour, const Stop &, QSize, bool) {
                                          // Every text changes under way, as it does for the user.
                                          for (const AppLanguage shown : {AppLanguage::English, AppLanguage::Chinese}) {
                                              composition.store().setInterfaceLanguage(shown);
                                              (void)tour.picture();
                                          }
                                      });
        if (code != 0)
            ++complaintCount;
    }
    qInstallMessageHandler(previousHandler);
    std::printf("%lld views in both languages and modes, %d complaints\n", static_cast<long long>(stops().size()),
                complaintCount);
    return complaintCount == 0 ? 0 : 1;
}

int takePictures(const QString &directory)
{
    if (!QDir().mkpath(directory)) {
        std::fprintf(stderr, "tessaly: cannot write to %s\n", qUtf8Printable(directory));
        return 1;
    }
    QGuiApplication::styleHints()->setCursorFlashTime(0);
    previousHandler = qInstallMessageHandler(countComplaint);
    int code = 0;
    for (const AppLanguage language : {AppLanguage::Chinese, AppLanguage::English}) {
        code |= forEveryView(language, sizes(), Previews::Real,
                             [&](const Composition &, const Tour &tour, const Stop &stop, QSize size, bool isDark) {
                                 const QString path =
                                     QStringLiteral("%1/%2.%3.%4.%5.png")
                                         .arg(directory, stop.name, rawValue(language), modeName(isDark))
                                         .arg(size.width());
                                 if (!savePicture(tour.picture(), path)) {
                                     std::fprintf(stderr, "tessaly: cannot write %s\n", qUtf8Printable(path));
                                     code = 1;
                                 }
                             });
    }
    qInstallMessageHandler(previousHandler);
    return code;
}

} // namespace tessaly
