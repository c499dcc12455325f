#include "app/Handover.h"

#include <QFile>
#include <QFileInfo>

#include <unistd.h>

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

const QByteArray variable("TESSALY_STARTED_FOR=");
const QByteArray reminderVariable("TESSALY_REMINDER=");
const std::array<QByteArray, 5> purposes{"", "background", "window", "reminders", "find"};

/// Beside the program in its build directory, or where it was installed.
QString backgroundProgram()
{
    const QString folder = QFileInfo(Handover::program()).path();
    for (const char *place : {"/background/tessaly", "/" TESSALY_BACKGROUND_FROM_PROGRAM "/tessaly"}) {
        const QString file = folder + QLatin1String(place);
        if (QFileInfo::exists(file))
            return file;
    }
    return {};
}

std::vector<char *> pointers(std::vector<QByteArray> &lines)
{
    std::vector<char *> result;
    for (QByteArray &line : lines)
        result.push_back(line.data());
    result.push_back(nullptr);
    return result;
}

} // namespace

Handover::Handover(char *argv[]) : m_arguments(argv)
{
    for (char **line = environ; *line != nullptr; ++line) {
        const QByteArray text(*line);
        if (text.startsWith(reminderVariable)) {
            m_reminder = QString::fromUtf8(text.sliced(reminderVariable.size()));
            continue;
        }
        if (!text.startsWith(variable)) {
            m_environment.push_back(text);
            continue;
        }
        const auto named = std::ranges::find(purposes, text.sliced(variable.size()));
        if (named != purposes.end())
            m_purpose = Purpose(named - purposes.begin());
    }
    // What this process starts was started by someone else.
    qunsetenv(variable.chopped(1).constData());
    qunsetenv(reminderVariable.chopped(1).constData());
}

QString Handover::program()
{
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath();
}

QString Handover::windowProgram() const
{
    return QFile::decodeName(m_arguments[0]);
}

void Handover::runInBackground() const
{
    run(backgroundProgram(), program(), m_environment);
}

void Handover::runWithWindow(Purpose purpose, const QByteArray &activationToken, const QString &reminder) const
{
    std::vector<QByteArray> environment = m_environment;
    environment.push_back(variable + purposes.at(std::size_t(purpose)));
    if (!reminder.isEmpty())
        environment.push_back(reminderVariable + reminder.toUtf8());
    if (!activationToken.isEmpty()) {
        const QByteArray token("XDG_ACTIVATION_TOKEN=");
        std::erase_if(environment, [&token](const QByteArray &line) { return line.startsWith(token); });
        environment.push_back(token + activationToken);
    }
    run(windowProgram(), windowProgram(), environment);
}

void Handover::run(const QString &file, const QString &name, std::vector<QByteArray> environment) const
{
    std::vector<QByteArray> arguments{QFile::encodeName(name)};
    for (char **argument = m_arguments + 1; *argument != nullptr; ++argument)
        arguments.emplace_back(*argument);
    execve(QFile::encodeName(file).constData(), pointers(arguments).data(), pointers(environment).data());
}

} // namespace tessaly
