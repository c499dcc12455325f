#include "app/CommandLine.h"

#include "model/ProgramVersion.h"

#include <QCommandLineParser>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTimeZone>
#include <QUrl>

#include <cstdlib>
#include <ctime>
#include <optional>
#include <utility>

namespace tessaly {

namespace {

/// Of an entry that is added by a command; it has to fit into what processes tell each other.
constexpr int longestTitle = 5000;
constexpr QLatin1String folderOfCalendars("vdir:");

CommandLine only(CommandLine::Task task, const QString &text)
{
    return {.task = task, .text = text};
}

QString defaultDataDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QLatin1String("/Tessaly");
}

/// The zone file's name below the system's zones, or its way from there.
QByteArray zoneName(const QString &path)
{
    return QFile::encodeName(
        QDir(QStringLiteral("/usr/share/zoneinfo")).relativeFilePath(QFileInfo(path).canonicalFilePath()));
}

/// Seconds east of UTC.
int offsetOfCLibrary(std::time_t at)
{
    std::tm local = {};
    tzset();
    localtime_r(&at, &local);
    return static_cast<int>(local.tm_gmtoff);
}

/// A rule of POSIX.1, where offsets count to the west.
QByteArray ruleOfOffset(int seconds)
{
    return (seconds < 0 ? "<local>+" : "<local>-") +
           QTime(0, 0).addSecs(std::abs(seconds)).toString(u"HH:mm").toLatin1();
}

/// Nothing where there is no such choice.
std::optional<CommandLine::Calendars> calendarsNamed(const QString &value)
{
    if (value == QLatin1String("none"))
        return CommandLine::Calendars::None;
    if (value == QLatin1String("eds"))
        return CommandLine::Calendars::Evolution;
    if (value.size() > folderOfCalendars.size() && value.startsWith(folderOfCalendars))
        return CommandLine::Calendars::Directory;
    return std::nullopt;
}

std::optional<int> daysIn(const QString &value)
{
    bool isNumber = false;
    const int days = value.toInt(&isNumber);
    return isNumber && days >= 1 && days <= 366 ? std::optional(days) : std::nullopt;
}

/// The link or the file that the word names; empty where it names none.
QString placeNamed(const QString &word)
{
    static const QStringList schemes{QStringLiteral("webcal"), QStringLiteral("webcals"), QStringLiteral("http"),
                                     QStringLiteral("https"), QStringLiteral("file")};
    if (schemes.contains(QUrl(word).scheme()))
        return word;
    const QFileInfo file(QDir::current().absoluteFilePath(word));
    return file.isFile() ? file.absoluteFilePath() : QString();
}

/// What is to be opened in the window, where the words name nothing else.
QString placeToOpen(const QStringList &words)
{
    return words.size() == 1 && !commandFrom(words) ? placeNamed(words.constFirst()) : QString();
}

/// Why the options cannot be taken together; empty where they can.
QString objection(const QCommandLineParser &parser)
{
    const QStringList words = parser.positionalArguments();
    if (!words.isEmpty() && placeToOpen(words).isEmpty()) {
        const std::optional<PlannerCommand> command = commandFrom(words);
        if (!command)
            return QStringLiteral("'%1' is no command, or its arguments are wrong.").arg(words.join(u' '));
        if (command->text.size() > longestTitle)
            return QStringLiteral("The title is longer than %1 characters.").arg(longestTitle);
        if (parser.isSet(QStringLiteral("demo")) || parser.isSet(QStringLiteral("background")))
            return QStringLiteral("A command works without a window, on stored data.");
    }
    for (const QString &option : {QStringLiteral("days"), QStringLiteral("json")}) {
        if (parser.isSet(option) && parser.positionalArguments().value(0) != QLatin1String("agenda"))
            return QStringLiteral("--%1 belongs to the command agenda.").arg(option);
    }
    if (parser.isSet(QStringLiteral("days")) && !daysIn(parser.value(QStringLiteral("days"))))
        return QStringLiteral("--days needs a number from 1 to 366.");
    for (const QString &option : {QStringLiteral("data-dir"), QStringLiteral("screens")}) {
        if (parser.isSet(option) && parser.value(option).isEmpty())
            return QStringLiteral("--%1 needs a directory.").arg(option);
    }
    if (parser.isSet(QStringLiteral("calendar")) && !calendarsNamed(parser.value(QStringLiteral("calendar"))))
        return QStringLiteral("--calendar needs eds, vdir:<directory> or none.");
    const std::pair<QString, QString> exclusive[] = {{QStringLiteral("self-test"), QStringLiteral("screens")},
                                                     {QStringLiteral("demo"), QStringLiteral("data-dir")},
                                                     {QStringLiteral("demo"), QStringLiteral("calendar")},
                                                     {QStringLiteral("demo"), QStringLiteral("background")},
                                                     {QStringLiteral("find"), QStringLiteral("background")}};
    for (const auto &[one, other] : exclusive) {
        if (parser.isSet(one) && parser.isSet(other))
            return QStringLiteral("--%1 and --%2 exclude each other.").arg(one, other);
    }
    return {};
}

} // namespace

void forgetRelativeBaseDirectories()
{
    for (const char *name :
         {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME", "XDG_RUNTIME_DIR"}) {
        if (QDir::isRelativePath(QFile::decodeName(qgetenv(name))))
            qunsetenv(name);
    }
}

void nameTimeZone()
{
    const QByteArray value = qgetenv("TZ");
    const QByteArray setting = value.startsWith(':') ? value.sliced(1) : value;
    if (setting == "/etc/localtime")
        qunsetenv("TZ"); // Read by default, and then watched.
    else if (setting.startsWith('/'))
        qputenv("TZ", zoneName(QFile::decodeName(setting)));
    else if (setting.isEmpty() && qEnvironmentVariableIsSet("TZ"))
        qputenv("TZ", "UTC");
    const std::time_t now = std::time(nullptr); // lint-allow(clock): before there is a Clock
    const int offset = offsetOfCLibrary(now);
    const QTimeZone zone = QTimeZone::systemTimeZone();
    // Qt reads "UTC+3" as ISO 8601 does.
    if (!zone.isValid() || zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(now)) != offset)
        qputenv("TZ", ruleOfOffset(offset));
}

CommandLine parseCommandLine(const QStringList &arguments)
{
    using Task = CommandLine::Task;
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show the version."));
    const QCommandLineOption dataDirectory(
        QStringLiteral("data-dir"),
        QStringLiteral("Store all data in <directory> instead of %1.").arg(defaultDataDirectory()),
        QStringLiteral("directory"));
    const QCommandLineOption calendar(QStringLiteral("calendar"),
                                      QStringLiteral("Sync with the calendars of Evolution Data Server (eds), those in "
                                                     "a directory (vdir:<directory>), or none."),
                                      QStringLiteral("choice"));
    const QCommandLineOption demo(QStringLiteral("demo"), QStringLiteral("Start with sample data and save nothing."));
    const QCommandLineOption background(
        QStringLiteral("background"),
        QStringLiteral("Start without a window and deliver reminders; starting again opens the window."));
    const QCommandLineOption find(
        QStringLiteral("find"),
        QStringLiteral("Show the field that finds and adds, in the running planner if there is one."));
    const QCommandLineOption selfTest(
        QStringLiteral("self-test"),
        QStringLiteral("Load every screen, then exit with a non-zero status if any screen warns."));
    const QCommandLineOption pictures(QStringLiteral("screens"),
                                      QStringLiteral("Save pictures of every screen to <directory>, then exit."),
                                      QStringLiteral("directory"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Tessaly, a planner for one person."));
    const QCommandLineOption days(QStringLiteral("days"), QStringLiteral("The number of days that agenda lists (7)."),
                                  QStringLiteral("number"));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Have agenda print JSON."));
    parser.addOptions({help, version, dataDirectory, calendar, demo, background, find, selfTest, pictures, days, json});
    parser.addPositionalArgument(QStringLiteral("command"),
                                 QStringLiteral("Without a window, by the running planner if there is one:\n"
                                                "export <file>    save everything as one archive\n"
                                                "import <file>    replace everything by an archive\n"
                                                "verify           check the stored data\n"
                                                "agenda           list what is ahead\n"
                                                "add <text>       add a to-do or a schedule\n"
                                                "In the window: the link or the file of a calendar, to look at it."),
                                 QStringLiteral("[command]"));

    if (!parser.parse(arguments))
        return only(Task::Refuse, parser.errorText());
    if (parser.isSet(help))
        return only(Task::Print,
                    parser.helpText().replace(QLatin1String("<executable_name>"), QLatin1String("tessaly")));
    if (parser.isSet(version))
        return only(Task::Print, QStringLiteral("Tessaly %1\n").arg(programVersionAndBuild()));
    if (const QString reason = objection(parser); !reason.isEmpty())
        return only(Task::Refuse, reason);

    CommandLine result;
    result.isBackground = parser.isSet(background);
    result.isDemo = parser.isSet(demo);
    result.isFinding = parser.isSet(find);
    result.isDataDirectoryGiven = parser.isSet(dataDirectory);
    result.dataDirectory =
        QDir(result.isDataDirectoryGiven ? parser.value(dataDirectory) : defaultDataDirectory()).absolutePath();
    if (parser.isSet(calendar)) {
        result.calendars = *calendarsNamed(parser.value(calendar));
        if (result.calendars == CommandLine::Calendars::Directory)
            result.calendarDirectory = QDir(parser.value(calendar).mid(folderOfCalendars.size())).absolutePath();
    }
    if (const std::optional<PlannerCommand> command = commandFrom(parser.positionalArguments())) {
        result.task = Task::Command;
        result.command = *command;
        result.command.isJson = parser.isSet(json);
        result.command.days = daysIn(parser.value(days)).value_or(result.command.days);
    }
    result.opened = placeToOpen(parser.positionalArguments());
    if (parser.isSet(selfTest))
        result.task = Task::SelfTest;
    if (parser.isSet(pictures)) {
        result.task = Task::Pictures;
        result.picturesDirectory = QDir(parser.value(pictures)).absolutePath();
    }
    return result;
}

} // namespace tessaly
