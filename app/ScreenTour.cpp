#include "app/ScreenTour.h"

#include "app/Composition.h"
#include "app/LarkspanApp.h"
#include "app/tour/TourStop.h"
// lint-allow(arrows): pictures are files, and one function writes those
#include "platform/common/LocalFileSystem.h"
#include "store/PlannerStore.h"

#include <QBuffer>
#include <QDeadlineTimer>
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QQuickWindow>
#include <QStyleHints>

#include <cstdio>
#include <functional>

namespace tessaly {

namespace {

/// Replaces the preview where it is not looked at.
const QUrl emptyPreview(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/Documents/PreviewSlot.qml"));

const QList<TourStop> &stops()
{
    static const QList<TourStop> list =
        QList<TourStop>{{QStringLiteral("overview"), ShellModel::Overview},
                        atFoot(QStringLiteral("overview-lower"), ShellModel::Overview)} +
        scheduleStops() + planStops() + toDoStops() + goalStops() + documentStops() + windowStops();
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

    void show(const TourStop &stop) const
    {
        contentView().setProperty("section", stop.section);
        change(stop.open);
    }

    void leave(const TourStop &stop) const { change(stop.close); }

    /// The window's picture once it no longer changes and a preview in it has come.
    [[nodiscard]] QImage picture() const
    {
        const QDeadlineTimer deadline(tourPatienceMs);
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
    app.offerGlobalShortcut(composition->globalShortcut());
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
            for (const TourStop &stop : stops()) {
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
        const int code =
            forEveryView(language, {sizes().first()}, Previews::Empty,
                         [](const Composition &composition, const Tour &tour, const TourStop &, QSize, bool) {
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
                             [&](const Composition &, const Tour &tour, const TourStop &stop, QSize size, bool isDark) {
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
