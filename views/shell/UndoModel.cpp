#include "views/shell/UndoModel.h"

#include "store/PlannerStore.h"

namespace tessaly {

namespace {

TextPair withArgument(const TextPair &text, const TextPair &argument)
{
    return {text.chinese.arg(argument.chinese), text.english.arg(argument.english)};
}

TextPair quoted(const TextPair &text, const QString &title)
{
    return withArgument(text, {title, title});
}

/// Undo or Redo, with the name of the step if there is one.
TextPair entry(const TextPair &verb, const UndoStep *step)
{
    if (!step)
        return verb;
    const TextPair &name = step->description.name;
    return {QStringLiteral("%1“%2”").arg(verb.chinese, name.chinese),
            QStringLiteral("%1 “%2”").arg(verb.english, name.english)};
}

TextPair restoredText(const QStringList &titles)
{
    if (titles.size() == 1)
        return quoted({QStringLiteral("已恢复“%1”"), QStringLiteral("Restored “%1”")}, titles.constFirst());
    return quoted({QStringLiteral("已恢复 %1 项"), QStringLiteral("Restored %1 items")},
                  QString::number(titles.size()));
}

} // namespace

UndoModel::UndoModel(PlannerStore &store, QObject *parent) : QObject(parent), m_store(store), m_history(store.history())
{
    connect(&m_history, &UndoHistory::changed, this, &UndoModel::changed);
    connect(&m_history, &UndoHistory::recorded, this, &UndoModel::reportStep);
    connect(&m_history, &UndoHistory::undone, this, &UndoModel::reportUndone);
    connect(&m_history, &UndoHistory::redone, this, &UndoModel::reportRedone);
    connect(&store, &PlannerStore::interfaceLanguageChanged, this, [this] {
        emit changed();
        emit messageChanged();
    });
}

bool UndoModel::canUndo() const
{
    return m_history.nextUndo();
}

bool UndoModel::canRedo() const
{
    return m_history.nextRedo();
}

QString UndoModel::undoText() const
{
    return entry({QStringLiteral("撤销"), QStringLiteral("Undo")}, m_history.nextUndo())
        .in(m_store.interfaceLanguage());
}

QString UndoModel::redoText() const
{
    return entry({QStringLiteral("重做"), QStringLiteral("Redo")}, m_history.nextRedo())
        .in(m_store.interfaceLanguage());
}

QString UndoModel::message() const
{
    return m_message.in(m_store.interfaceLanguage());
}

void UndoModel::undo()
{
    m_store.undo();
}

void UndoModel::redo()
{
    m_store.redo();
}

void UndoModel::dismiss()
{
    m_message = {};
    m_isUndoOffered = false;
    emit messageChanged();
}

void UndoModel::report(const TextPair &message, bool isUndoOffered)
{
    m_message = message;
    m_isUndoOffered = isUndoOffered;
    emit messageChanged();
    emit reported();
}

void UndoModel::reportStep(const UndoStep &step)
{
    if (!step.description.report.chinese.isEmpty())
        report(step.description.report, true);
    else if (!m_message.chinese.isEmpty())
        // Its button would undo the new step.
        dismiss();
}

void UndoModel::reportUndone(const UndoStep &step, bool hasNewEvent)
{
    if (step.change.isEmpty())
        report({QStringLiteral("这一步已无可撤销的内容。"), QStringLiteral("Nothing is left of that step to undo.")},
               false);
    else if (hasNewEvent)
        report({QStringLiteral("已恢复，并在日历中新建了日程。"),
                QStringLiteral("Restored, with a new event in the calendar.")},
               false);
    else if (!step.description.removed.isEmpty())
        report(restoredText(step.description.removed), false);
    else
        report(withArgument({QStringLiteral("已撤销“%1”"), QStringLiteral("Undid “%1”")}, step.description.name),
               false);
}

void UndoModel::reportRedone(const UndoStep &step)
{
    if (step.change.isEmpty())
        report({QStringLiteral("这一步已无可重做的内容。"), QStringLiteral("Nothing is left of that step to redo.")},
               false);
    else if (!step.description.report.chinese.isEmpty())
        report(step.description.report, true);
    else
        report(withArgument({QStringLiteral("已重做“%1”"), QStringLiteral("Redid “%1”")}, step.description.name),
               false);
}

} // namespace tessaly
