#include "app/StartFailure.h"

#include "model/UserCalendar.h"
#include "store/ErrorText.h"
#include "ui/Ui.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>

#include <cstdio>

namespace tessaly {

namespace {

/// What the user can do; empty for errors that no start meets.
TextPair advice(ErrorCode code)
{
    switch (code) {
    case ErrorCode::StorageUnwritable:
        return {QStringLiteral("请检查该文件夹的权限，以及磁盘是否只读。"),
                QStringLiteral("Check the permissions of the folder and that the disk is writable.")};
    case ErrorCode::StorageCorrupt:
        return {QStringLiteral("请用备份替换该文件；或把它和名称以它开头的文件一起移到别处，Tessaly 会从空白开始。"),
                QStringLiteral("Replace the file with a backup. Or move it elsewhere, with all files whose names begin "
                               "with its name; Tessaly then starts empty.")};
    case ErrorCode::StorageLocked:
        return {QStringLiteral("请关闭那个程序，然后重试。"), QStringLiteral("Close that program and try again.")};
    case ErrorCode::StorageFull:
        return {QStringLiteral("请腾出磁盘空间，然后重试。"), QStringLiteral("Free up disk space and try again.")};
    case ErrorCode::StorageNewer:
        return {QStringLiteral("请启动更新的版本。"), QStringLiteral("Start the newer version.")};
    case ErrorCode::StorageFailed:
        return {QStringLiteral("请检查磁盘，然后重试。"), QStringLiteral("Check the disk and try again.")};
    default:
        return {};
    }
}

/// Where it happened.
QString place(AppLanguage language, ErrorCode code, const QString &dataDirectory)
{
    const TextPair folder{QStringLiteral("文件夹："), QStringLiteral("Folder: ")};
    const TextPair file{QStringLiteral("文件："), QStringLiteral("File: ")};
    return code == ErrorCode::StorageUnwritable || code == ErrorCode::StorageFull
               ? folder.in(language) + dataDirectory
               : file.in(language) + dataDirectory + QStringLiteral("/planner.sqlite");
}

/// What an earlier version is for.
TextPair offer(ErrorCode code, const Generation &earlier)
{
    const QDateTime moment = UserCalendar::system().dateTime(earlier.moment);
    const QString chinese = interfaceLocale(false).toString(moment, u"yyyy年M月d日 HH:mm");
    const QString english = interfaceLocale(true).toString(moment, u"MMM d, yyyy, HH:mm");
    if (code == ErrorCode::StorageMissing)
        return {QStringLiteral("可以打开 %1 的历史版本，或从空白开始。").arg(chinese),
                QStringLiteral("You can open the version of %1, or start empty.").arg(english)};
    return {QStringLiteral("可以打开 %1 的历史版本。损坏的文件会留在同一文件夹中，改名为以“planner-damaged”开头。")
                .arg(chinese),
            QStringLiteral("You can open the version of %1. The damaged file stays in the same folder, under a name "
                           "that begins with “planner-damaged”.")
                .arg(english)};
}

QString failureText(AppLanguage language, const Error &error, const QString &dataDirectory,
                    const std::optional<Generation> &earlier)
{
    const TextPair prefix{QStringLiteral("Tessaly 无法启动："), QStringLiteral("Tessaly cannot start: ")};
    const TextPair remedy = earlier ? offer(error.code, *earlier) : advice(error.code);
    return QStringList{prefix.in(language) + errorText(error, language), place(language, error.code, dataDirectory),
                       remedy.in(language)}
        .join(u'\n');
}

} // namespace

StartChoice showStartFailure(const Error &error, const QString &dataDirectory, const std::optional<Generation> &earlier)
{
    const QString chinese = failureText(AppLanguage::Chinese, error, dataDirectory, earlier);
    const QString english = failureText(AppLanguage::English, error, dataDirectory, earlier);
    std::fprintf(stderr, "%s\n%s\n", qUtf8Printable(chinese), qUtf8Printable(english));

    QQmlApplicationEngine engine;
    installImageProviders(engine);
    engine.setInitialProperties({{QStringLiteral("chinese"), chinese},
                                 {QStringLiteral("english"), english},
                                 {QStringLiteral("canOpenEarlier"), earlier.has_value()},
                                 {QStringLiteral("canStartEmpty"), error.code == ErrorCode::StorageMissing}});
    engine.load(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/StartFailure.qml")));
    if (engine.rootObjects().isEmpty())
        return StartChoice::Close;
    QGuiApplication::exec();
    const QObject *window = engine.rootObjects().constFirst();
    if (window->property("opensEarlier").toBool())
        return StartChoice::OpenEarlier;
    return window->property("startsEmpty").toBool() ? StartChoice::StartEmpty : StartChoice::Close;
}

} // namespace tessaly
