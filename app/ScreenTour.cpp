#include "app/ScreenTour.h"

#include "app/Composition.h"
#include "app/LarkspanApp.h"
#include "model/Uuid.h"
// lint-allow(arrows): pictures are files, and one function writes those
#include "platform/common/LocalFileSystem.h"
#include "store/PlannerStore.h"
#include "views/documents/DocumentLibraryViewModel.h"
#include "views/goals/GoalViewModel.h"
#include "views/schedule/ScheduleViewModel.h"
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
        {QStringLiteral("goals"), ShellModel::Goals},
        {QStringLiteral("goals-edit"), ShellModel::Goals, onViewModel(editFirstGoal), leaveToOverview},
        atFoot(QStringLiteral("goals-lower"), ShellModel::Goals),
        {QStringLiteral("documents"), ShellModel::Documents},
        {QStringLiteral("editor"), ShellModel::Documents, onViewModel(openLecture), leaveToOverview},
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
        constexpr int restMs = 60;
        const QDeadlineTimer deadline(20'000);
        QImage before;
        QImage now = m_app.window().grabWindow();
        while (now != before && !deadline.hasExpired()) {
            // A loop like the program's: in another, nothing is deleted later and the web engine hardly moves.
            QEventLoop rest;
            QTimer::singleShot(restMs, &rest, &QEventLoop::quit);
            rest.exec();
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
