#include "app/PlannerCommand.h"

#include "model/Agenda.h"
#include "model/QuickAdd.h"
#include "platform/Clock.h"
#include "store/ErrorText.h"
#include "store/PlannerStore.h"
#include "store/StoredDataCheck.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

namespace tessaly {

using namespace Qt::StringLiterals;

namespace {

using Verb = PlannerCommand::Verb;
using Answer = std::function<void(const CommandAnswer &)>;

const std::pair<QString, Verb> verbs[] = {
    {u"export"_s, Verb::Export}, {u"import"_s, Verb::Import}, {u"verify"_s, Verb::Verify}, {u"agenda"_s, Verb::Agenda},
    {u"add"_s, Verb::Add},       {u"find"_s, Verb::Find},     {u"open"_s, Verb::Open}};

std::optional<Verb> verbNamed(const QString &name)
{
    const auto found = std::ranges::find(verbs, name, &std::pair<QString, Verb>::first);
    return found == std::end(verbs) ? std::nullopt : std::optional(found->second);
}

QString nameOf(Verb verb)
{
    return std::ranges::find(verbs, verb, &std::pair<QString, Verb>::second)->first;
}

CommandAnswer done(const QString &line)
{
    return {.output = line + u'\n'};
}

CommandAnswer failed(const QString &line)
{
    return {.status = 1, .errors = line + u'\n'};
}

/// A command has no status line that could show later that something is not saved.
CommandAnswer saved(PlannerStore &store, const QString &line)
{
    if (store.hasUnsavedChanges())
        return failed(store.calendarSyncMessage().value_or(QString()));
    return done(line);
}

CommandAnswer list(const PlannerCommand &command, const PlannerStore &store)
{
    const Agenda ahead =
        agenda(store.data(), store.visibleCalendarIDs(), store.calendar(), store.clock().now(), command.days);
    if (command.isJson)
        return {.output = QString::fromUtf8(agendaJson(ahead, store.calendar()))};
    return {.output = agendaText(ahead, store.calendar(), store.interfaceLanguage())};
}

void verify(PlannerStore &store, const Answer &answer)
{
    checkStoredData(store, [store = QPointer(&store), answer](const StoredDataReport &report) {
        if (!store)
            return;
        const QString sound =
            store->text(u"一切正常：数据库、历史版本 %1 个、文档 %2 个。"_s,
                        u"Everything is in order: the database, earlier versions: %1, documents: %2."_s);
        answer(report.problems.isEmpty() ? done(sound.arg(report.generations).arg(report.documents))
                                         : failed(report.problems.join(u'\n')));
    });
}

CommandAnswer add(const PlannerCommand &command, PlannerStore &store)
{
    if (command.text.simplified().isEmpty())
        return {.status = 2, .errors = store.text(u"待办没有标题。"_s, u"The to-do has no title."_s) + u'\n'};
    const Instant now = store.clock().now();
    const QuickEntry entry = quickEntry(command.text, now, store.calendar());
    const auto label = [&] {
        return timeLabel(*entry.start, entry.end, now, store.calendar(), store.interfaceLanguage());
    };
    if (entry.kind == QuickEntry::Kind::Schedule) {
        store.addSchedule(scheduleOf(entry, now, store.calendar()));
        return saved(
            store, store.text(u"已添加日程“%1”：%2。"_s, u"Added the schedule “%1”: %2."_s).arg(entry.title, label()));
    }
    store.addReminder(toDoOf(entry));
    if (!entry.start)
        return saved(store, store.text(u"已添加待办“%1”。"_s, u"Added the to-do “%1”."_s).arg(entry.title));
    return saved(
        store,
        store.text(u"已添加待办“%1”，截止 %2。"_s, u"Added the to-do “%1”, due %2."_s).arg(entry.title, label()));
}

} // namespace

bool onlyReads(const PlannerCommand &command)
{
    return command.verb == Verb::Export || command.verb == Verb::Verify || command.verb == Verb::Agenda;
}

QByteArray encodeCommand(const PlannerCommand &command)
{
    return QJsonDocument({{u"verb"_s, nameOf(command.verb)},
                          {u"file"_s, command.file},
                          {u"text"_s, command.text},
                          {u"days"_s, command.days},
                          {u"json"_s, command.isJson}})
        .toJson(QJsonDocument::Compact);
}

std::optional<PlannerCommand> decodeCommand(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const std::optional<Verb> verb = verbNamed(object.value("verb"_L1).toString());
    if (!verb)
        return std::nullopt;
    return PlannerCommand{.verb = *verb,
                          .file = object.value("file"_L1).toString(),
                          .text = object.value("text"_L1).toString(),
                          .days = object.value("days"_L1).toInt(),
                          .isJson = object.value("json"_L1).toBool()};
}

QByteArray encodeAnswer(const CommandAnswer &answer)
{
    return QJsonDocument({{u"status"_s, answer.status}, {u"output"_s, answer.output}, {u"errors"_s, answer.errors}})
        .toJson(QJsonDocument::Compact);
}

std::optional<CommandAnswer> decodeAnswer(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    if (!object.contains("status"_L1))
        return std::nullopt;
    return CommandAnswer{.status = object.value("status"_L1).toInt(),
                         .output = object.value("output"_L1).toString(),
                         .errors = object.value("errors"_L1).toString()};
}

std::optional<PlannerCommand> commandFrom(const QStringList &arguments)
{
    const std::optional<Verb> verb = verbNamed(arguments.value(0));
    if (verb == Verb::Open || verb == Verb::Find)
        return std::nullopt; // Typed without a verb, and as an option.
    const bool needsArgument = verb && *verb != Verb::Verify && *verb != Verb::Agenda;
    if (!verb || arguments.size() != (needsArgument ? 2 : 1))
        return std::nullopt;
    PlannerCommand command{.verb = *verb};
    if (*verb == Verb::Add)
        command.text = arguments.at(1);
    else if (needsArgument)
        command.file = QDir::current().absoluteFilePath(arguments.at(1));
    return command;
}

void carryOut(const PlannerCommand &command, PlannerStore &store, const Answer &answer)
{
    const auto finish = [self = QPointer(&store), answer](const TextPair &success) {
        return [self, answer, success](const Result<void> &result) {
            if (self)
                answer(result ? done(success.in(self->interfaceLanguage()))
                              : failed(errorText(result.error(), self->interfaceLanguage())));
        };
    };
    switch (command.verb) {
    case Verb::Agenda:
        answer(list(command, store));
        return;
    case Verb::Add:
        answer(add(command, store));
        return;
    case Verb::Export:
        store.archive().write(command.file,
                              finish({u"已导出到 %1。"_s.arg(command.file), u"Exported to %1."_s.arg(command.file)}));
        return;
    case Verb::Import:
        store.archive().read(command.file,
                             finish({u"已导入 %1。"_s.arg(command.file), u"Imported %1."_s.arg(command.file)}));
        return;
    case Verb::Verify:
        verify(store, answer);
        return;
    case Verb::Find:
        answer({.status = 1}); // The window does it where there is one.
        return;
    case Verb::Open:
        store.calendarLinks().requestOpening(command.text);
        answer({});
        return;
    }
}

void carryOutEncoded(const QByteArray &command, PlannerStore &store,
                     const std::function<void(const QByteArray &)> &reply)
{
    if (const std::optional<PlannerCommand> decoded = decodeCommand(command))
        carryOut(*decoded, store, [reply](const CommandAnswer &given) { reply(encodeAnswer(given)); });
    else
        reply({});
}

} // namespace tessaly
