#include "app/ScreenTour.h"

#include "app/Composition.h"
#include "app/LarkspanApp.h"
#include "store/PlannerStore.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QQuickWindow>
#include <QStyleHints>

#include <cstdio>

namespace tessaly {

namespace {

/// A place to visit: a screen, and the view state that opens something over it.
struct Stop
{
    QString name;
    ShellModel::SidebarItem section;
    /// A property of the screen or of the window's content, whichever has it; may be empty.
    QByteArray state = {};
    QVariant value = true;
};

const QList<Stop> &stops()
{
    static const QList<Stop> list{
        {QStringLiteral("overview"), ShellModel::Overview},
        {QStringLiteral("schedule"), ShellModel::Schedule},
        {QStringLiteral("todos"), ShellModel::Reminders},
        {QStringLiteral("goals"), ShellModel::Goals},
        {QStringLiteral("documents"), ShellModel::Documents},
        {QStringLiteral("first-run"), ShellModel::Overview, "showNamePrompt"},
        {QStringLiteral("dialog-clear"), ShellModel::Overview, "showClearConfirmation"},
        {QStringLiteral("dialog-about"), ShellModel::Overview, "showAbout"},
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

/// Warnings of the program and of QML; what the window system plugin has to say about this machine is not among them.
int complaintCount = 0;
QtMessageHandler previousHandler = nullptr;

void countComplaint(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const bool isOfPlatform = QByteArrayView(context.category).startsWith("qt.qpa");
    if (type != QtDebugMsg && type != QtInfoMsg && !isOfPlatform)
        ++complaintCount;
    previousHandler(type, context, message);
}

class Tour
{
public:
    explicit Tour(LarkspanApp &app) : m_app(app) { app.window().setVisible(true); }

    void show(const Stop &stop) const
    {
        QObject *content = contentView();
        content->setProperty("section", stop.section);
        if (!stop.state.isEmpty())
            owner(stop)->setProperty(stop.state, stop.value);
    }

    void leave(const Stop &stop) const
    {
        if (stop.value.typeId() == QMetaType::Bool && !stop.state.isEmpty())
            owner(stop)->setProperty(stop.state, false);
    }

    /// The window's picture once it no longer changes.
    [[nodiscard]] QImage picture() const
    {
        constexpr int restMs = 60;
        const QDeadlineTimer deadline(5000);
        QImage before;
        QImage now = m_app.window().grabWindow();
        while (now != before && !deadline.hasExpired()) {
            const QDeadlineTimer rest(restMs);
            while (!rest.hasExpired())
                QCoreApplication::processEvents(QEventLoop::AllEvents, restMs);
            before = std::exchange(now, m_app.window().grabWindow());
        }
        return now;
    }

private:
    [[nodiscard]] QObject *contentView() const { return m_app.window().property("content").value<QObject *>(); }

    [[nodiscard]] QObject *owner(const Stop &stop) const
    {
        QObject *content = contentView();
        if (content->metaObject()->indexOfProperty(stop.state) >= 0)
            return content;
        auto *screen = content->property("screen").value<QObject *>();
        if (!screen || screen->metaObject()->indexOfProperty(stop.state) < 0)
            qFatal("Nothing on the way to %s has %s", qUtf8Printable(stop.name), stop.state.constData());
        return screen;
    }

    LarkspanApp &m_app;
};

QString modeName(bool isDark)
{
    return isDark ? QStringLiteral("dark") : QStringLiteral("light");
}

template <class Visit>
int forEveryView(AppLanguage startLanguage, const QList<QSize> &windowSizes, Visit visit)
{
    const auto composition = Composition::forDemo(startLanguage, pictureTime);
    LarkspanApp app(composition->store(), composition->preferences(), composition->systemAppearance());
    if (!app.load())
        return 1;
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
        const int code = forEveryView(language, {sizes().first()},
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
    int code = 0;
    for (const AppLanguage language : {AppLanguage::Chinese, AppLanguage::English}) {
        code |= forEveryView(
            language, sizes(), [&](const Composition &, const Tour &tour, const Stop &stop, QSize size, bool isDark) {
                const QString path = QStringLiteral("%1/%2.%3.%4.%5.png")
                                         .arg(directory, stop.name, rawValue(language), modeName(isDark))
                                         .arg(size.width());
                if (!tour.picture().save(path)) {
                    std::fprintf(stderr, "tessaly: cannot write %s\n", qUtf8Printable(path));
                    code = 1;
                }
            });
    }
    return code;
}

} // namespace tessaly
