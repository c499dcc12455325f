#include "app/StartFailure.h"

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

QString failureText(AppLanguage language, const Error &error, const QString &dataDirectory)
{
    const TextPair prefix{QStringLiteral("Tessaly 无法启动："), QStringLiteral("Tessaly cannot start: ")};
    return QStringList{prefix.in(language) + errorText(error, language), place(language, error.code, dataDirectory),
                       advice(error.code).in(language)}
        .join(u'\n');
}

} // namespace

int showStartFailure(const Error &error, const QString &dataDirectory)
{
    const QString chinese = failureText(AppLanguage::Chinese, error, dataDirectory);
    const QString english = failureText(AppLanguage::English, error, dataDirectory);
    std::fprintf(stderr, "%s\n%s\n", qUtf8Printable(chinese), qUtf8Printable(english));

    QQmlApplicationEngine engine;
    installImageProviders(engine);
    engine.setInitialProperties({{QStringLiteral("chinese"), chinese}, {QStringLiteral("english"), english}});
    engine.load(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/StartFailure.qml")));
    if (!engine.rootObjects().isEmpty())
        QGuiApplication::exec();
    return 1;
}

} // namespace tessaly
