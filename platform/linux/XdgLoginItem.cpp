#include "platform/linux/XdgLoginItem.h"

#include "platform/common/LocalFileSystem.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QStandardPaths>

#include <utility>

namespace tessaly {

namespace {

using DesktopEntry = QHash<QByteArray, QByteArray>;

/// The keys of the group [Desktop Entry], with their escapes; empty without such a file.
DesktopEntry readDesktopEntry(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    DesktopEntry values;
    bool isInGroup = false;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &rawLine : lines) {
        const QByteArray line = rawLine.trimmed();
        const qsizetype equals = line.indexOf('=');
        if (line.startsWith('['))
            isInGroup = line == "[Desktop Entry]";
        else if (isInGroup && !line.startsWith('#') && equals > 0)
            values.insert(line.left(equals).trimmed(), line.mid(equals + 1).trimmed());
    }
    return values;
}

bool isSwitchedOff(const DesktopEntry &entry)
{
    return entry.value("Hidden") == "true" || entry.value("X-GNOME-Autostart-enabled") == "false";
}

QString quotedArgument(const QString &argument)
{
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    QString escaped;
    bool needsQuotes = argument.isEmpty();
    for (const QChar character : argument) {
        needsQuotes = needsQuotes || reserved.contains(character);
        if (character == u'%')
            escaped += u'%'; // A single per cent sign would be a field code.
        else if (character == u'"' || character == u'`' || character == u'$' || character == u'\\')
            escaped += u'\\';
        escaped += character;
    }
    return needsQuotes ? u'"' + escaped + u'"' : escaped;
}

/// A value of type string without its escapes.
QString unescapedString(const QString &value)
{
    static const QHash<QChar, QChar> meanings{{u's', u' '}, {u'n', u'\n'}, {u't', u'\t'}, {u'r', u'\r'}};
    QString text;
    for (qsizetype at = 0; at < value.size(); ++at) {
        const bool isEscape = value.at(at) == u'\\' && at + 1 < value.size();
        const QChar character = value.at(isEscape ? ++at : at);
        text += isEscape ? meanings.value(character, character) : character;
    }
    return text;
}

} // namespace

QString desktopEntryExec(const QStringList &command)
{
    QStringList arguments;
    for (const QString &argument : command)
        arguments.append(quotedArgument(argument));
    // The value is of type string, so its escapes are added to the quoting.
    QString value = arguments.join(u' ');
    return value.replace(u'\\', QLatin1String("\\\\"))
        .replace(u'\n', QLatin1String("\\n"))
        .replace(u'\t', QLatin1String("\\t"));
}

QString desktopEntryProgram(const QString &exec)
{
    QString program;
    bool isQuoted = false;
    // Undoes desktopEntryExec(), up to the end of the first argument.
    const QString unescaped = unescapedString(exec);
    for (qsizetype at = 0; at < unescaped.size() && (isQuoted || unescaped.at(at) != u' '); ++at) {
        const QChar character = unescaped.at(at);
        const bool isEscape = (isQuoted && character == u'\\') || character == u'%';
        if (character == u'"')
            isQuoted = !isQuoted;
        else
            program += isEscape && at + 1 < unescaped.size() ? unescaped.at(++at) : character;
    }
    return program;
}

XdgLoginItem::XdgLoginItem(QStringList command, QString directory, AutostartEntry entry)
    : m_command(std::move(command)), m_directory(std::move(directory)), m_entry(std::move(entry))
{
}

QString XdgLoginItem::userAutostartDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QLatin1String("/autostart");
}

QString XdgLoginItem::filePath() const
{
    return m_directory + u'/' + m_entry.fileName;
}

bool XdgLoginItem::isEnabled() const
{
    const DesktopEntry entry = readDesktopEntry(filePath());
    const QString program = desktopEntryProgram(QString::fromUtf8(entry.value("Exec")));
    return entry.value("Type") == "Application" && !isSwitchedOff(entry) && !program.isEmpty() &&
           !QStandardPaths::findExecutable(program).isEmpty();
}

Result<void> XdgLoginItem::setEnabled(bool isEnabled)
{
    if (m_entry.setBy == AutostartEntry::SetBy::Program && isSwitchedOff(readDesktopEntry(filePath())))
        return {};
    if (!isEnabled) {
        QFile file(filePath());
        if (file.exists() && !file.remove())
            return failure();
        return {};
    }
    if (!makePrivateFolder(m_directory))
        return failure();
    const QByteArray text = "[Desktop Entry]\n"
                            "Type=Application\n"
                            "Version=1.5\n"
                            "Name=" +
                            m_entry.name.english.toUtf8() + "\nName[zh]=" + m_entry.name.chinese.toUtf8() +
                            "\n"
                            "Icon=tessaly\n"
                            "Exec=" +
                            desktopEntryExec(m_command).toUtf8() +
                            "\n"
                            "Terminal=false\n"
                            "StartupNotify=false\n"
                            "X-GNOME-Autostart-enabled=true\n";
    if (!replaceFile(filePath(), text))
        return failure();
    return {};
}

Error XdgLoginItem::failure() const
{
    return {isDiskFull(m_directory) ? ErrorCode::StorageFull : ErrorCode::LoginItemFailed, filePath()};
}

} // namespace tessaly
