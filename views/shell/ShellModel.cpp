#include "views/shell/ShellModel.h"

#include "model/ProgramVersion.h"
#include "platform/Preferences.h"
#include "store/PlannerStore.h"
#include "store/PreferenceKeys.h"

namespace tessaly {

ShellModel::ShellModel(PlannerStore &store, const Preferences &preferences, SystemAppearance &systemAppearance,
                       FileDialogs &fileDialogs, QObject *parent)
    : QObject(parent), m_store(store), m_systemAppearance(systemAppearance), m_preferences(preferences),
      m_archive(store, fileDialogs), m_undo(store),
      m_appearanceMode(preferences.get<QString>(keys::appearanceMode).value_or(QStringLiteral("system"))),
      m_hasAskedPreferredName(preferences.get<bool>(keys::hasAskedPreferredName).value_or(false))
{
    m_systemAppearance.setChangeHandler([this] { emit appearanceChanged(); });
    // A step such as an import may bring another appearance.
    connect(&store.history(), &UndoHistory::recorded, this, [this](const UndoStep &step) { follow(step.change); });
    connect(&store.history(), &UndoHistory::undone, this, [this](const UndoStep &step) { follow(step.change); });
    connect(&store.history(), &UndoHistory::redone, this, [this](const UndoStep &step) { follow(step.change); });
}

ShellModel::~ShellModel()
{
    m_systemAppearance.setChangeHandler({});
}

void ShellModel::setGlobalShortcut(GlobalShortcut &shortcut)
{
    m_globalShortcut = std::make_unique<GlobalShortcutModel>(
        m_store, shortcut, m_preferences.get<bool>(keys::isShortcutGlobal).value_or(false));
}

void ShellModel::setAppearanceMode(const QString &mode)
{
    if (m_appearanceMode == mode)
        return;
    m_appearanceMode = mode;
    m_store.savePreference(keys::appearanceMode, mode);
    emit appearanceModeChanged();
    emit appearanceChanged();
}

void ShellModel::follow(const StateChange &change)
{
    const auto setting = change.settings.constFind(keys::appearanceMode);
    if (setting == change.settings.cend())
        return;
    const auto *mode = setting->after ? std::get_if<QString>(&*setting->after) : nullptr;
    m_appearanceMode = mode ? *mode : QStringLiteral("system");
    emit appearanceModeChanged();
    emit appearanceChanged();
}

bool ShellModel::isDark() const
{
    if (m_appearanceMode == QLatin1String("light"))
        return false;
    return m_appearanceMode == QLatin1String("dark") || m_systemAppearance.current().isDark;
}

void ShellModel::answerNamePrompt(const QString &nameDraft)
{
    if (const QString name = nameDraft.trimmed(); !name.isEmpty())
        m_store.setPreferredName(name);
    postponeNamePrompt();
}

void ShellModel::postponeNamePrompt()
{
    m_hasAskedPreferredName = true;
    m_store.savePreference(keys::hasAskedPreferredName, true);
    emit hasAskedPreferredNameChanged();
}

QString ShellModel::version()
{
    return programVersion();
}

QString ShellModel::versionAndBuild()
{
    return programVersionAndBuild();
}

} // namespace tessaly
