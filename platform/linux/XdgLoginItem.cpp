#include "platform/linux/XdgLoginItem.h"

#include "platform/common/LocalFileSystem.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QStandardPaths>

#include <utility>

namespace tessaly {

namespace {

/// The keys of the group [Desktop Entry], escapes left as they are.
QHash<QByteArray, QByteArray> desktopEntry(const QByteArray &text)
{
    QHash<QByteArray, QByteArray> values;
    bool isInGroup = false;
    const QList<QByteArray> lines = text.split('\n');
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

} // namespace

QString desktopEntryExec(const QStringList &command)
{
    QStringList arguments;
    for (const QString &argument : command)
        arguments.append(quotedArgument(argument));
    // The value is of type string, whose own escapes come on top of the quoting.
    QString value = arguments.join(u' ');
    return value.replace(u'\\', QLatin1String("\\\\"))
        .replace(u'\n', QLatin1String("\\n"))
        .replace(u'\t', QLatin1String("\\t"));
}

XdgLoginItem::XdgLoginItem(QStringList command, QString directory)
    : m_command(std::move(command)), m_directory(std::move(directory))
{
}

QString XdgLoginItem::userAutostartDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QLatin1String("/autostart");
}

QString XdgLoginItem::filePath() const
{
    return m_directory + QLatin1String("/tessaly.desktop");
}

bool XdgLoginItem::isEnabled() const
{
    QFile file(filePath());
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QHash<QByteArray, QByteArray> entry = desktopEntry(file.readAll());
    return entry.value("Type") == "Application" && !entry.value("Exec").isEmpty() && entry.value("Hidden") != "true" &&
           entry.value("X-GNOME-Autostart-enabled") != "false";
}

Result<void> XdgLoginItem::setEnabled(bool isEnabled)
{
    if (!isEnabled) {
        QFile file(filePath());
        if (file.exists() && !file.remove())
            return Error{ErrorCode::LoginItemFailed, file.errorString()};
        return {};
    }
    if (!makePrivateFolder(m_directory))
        return Error{ErrorCode::LoginItemFailed, QDir::toNativeSeparators(m_directory)};
    const QByteArray text = "[Desktop Entry]\n"
                            "Type=Application\n"
                            "Version=1.5\n"
                            "Name=Tessaly\n"
                            "Icon=tessaly\n"
                            "Exec=" +
                            desktopEntryExec(m_command).toUtf8() +
                            "\n"
                            "Terminal=false\n"
                            "StartupNotify=false\n"
                            "X-GNOME-Autostart-enabled=true\n";
    if (QString reason; !replaceFile(filePath(), text, &reason))
        return Error{ErrorCode::LoginItemFailed, reason};
    return {};
}

} // namespace tessaly
