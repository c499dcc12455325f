#pragma once

#include "platform/SystemAppearance.h"
#include "views/shell/ArchiveModel.h"
#include "views/shell/GlobalShortcutModel.h"
#include "views/shell/UndoKeys.h"
#include "views/shell/UndoModel.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace tessaly {

class FileDialogs;
class PlannerStore;
class Preferences;
struct StateChange;

/// The state of the window's frame that is not in the planner's records: the appearance, and whether the user has seen
/// the name prompt.
class ShellModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes the one that there is.")

    Q_PROPERTY(QString appearanceMode READ appearanceMode WRITE setAppearanceMode NOTIFY appearanceModeChanged)
    Q_PROPERTY(bool hasAskedPreferredName READ hasAskedPreferredName NOTIFY hasAskedPreferredNameChanged)
    Q_PROPERTY(bool isDark READ isDark NOTIFY appearanceChanged)
    Q_PROPERTY(bool isHighContrast READ isHighContrast NOTIFY appearanceChanged)
    Q_PROPERTY(bool hasReducedMotion READ hasReducedMotion NOTIFY appearanceChanged)
    Q_PROPERTY(tessaly::ArchiveModel *archive READ archive CONSTANT)
    Q_PROPERTY(tessaly::UndoModel *undo READ undo CONSTANT)
    Q_PROPERTY(tessaly::GlobalShortcutModel *globalShortcut READ globalShortcut CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString versionAndBuild READ versionAndBuild CONSTANT)

public:
    /// The rows of the sidebar, in order.
    enum SidebarItem { Overview, Schedule, Reminders, Goals, Documents };
    Q_ENUM(SidebarItem)

    /// The store, the appearance and the dialogs must outlive the model; the preferences are only read here. Takes over
    /// the appearance's change handler.
    ShellModel(PlannerStore &store, const Preferences &preferences, SystemAppearance &systemAppearance,
               FileDialogs &fileDialogs, QObject *parent = nullptr);
    ~ShellModel() override;

    /// "light" and "dark" force that appearance, anything else follows the system. Saved at once.
    [[nodiscard]] const QString &appearanceMode() const { return m_appearanceMode; }
    void setAppearanceMode(const QString &mode);
    [[nodiscard]] bool isDark() const;
    [[nodiscard]] bool isHighContrast() const { return m_systemAppearance.current().isHighContrast; }
    [[nodiscard]] bool hasReducedMotion() const { return m_systemAppearance.current().hasReducedMotion; }

    /// Whether the name prompt was answered once, in either way.
    [[nodiscard]] bool hasAskedPreferredName() const { return m_hasAskedPreferredName; }
    /// Takes the name, without surrounding white space; an empty one leaves the name as it is.
    Q_INVOKABLE void answerNamePrompt(const QString &nameDraft);
    Q_INVOKABLE void postponeNamePrompt();

    /// Export and import of everything.
    [[nodiscard]] ArchiveModel *archive() { return &m_archive; }
    /// Offers the user a key that works in every program. It must outlive the model; to be called before the window is
    /// loaded.
    void setGlobalShortcut(GlobalShortcut &shortcut);
    /// Null where none was set.
    [[nodiscard]] GlobalShortcutModel *globalShortcut() const { return m_globalShortcut.get(); }
    [[nodiscard]] UndoModel *undo() { return &m_undo; }

    [[nodiscard]] static QString version();
    /// Such as "0.0.1 (20260828)".
    [[nodiscard]] static QString versionAndBuild();

signals:
    void appearanceModeChanged();
    void appearanceChanged();
    void hasAskedPreferredNameChanged();

private:
    /// Takes over the appearance where a step has set it.
    void follow(const StateChange &change);

    PlannerStore &m_store;
    SystemAppearance &m_systemAppearance;
    const Preferences &m_preferences;
    std::unique_ptr<GlobalShortcutModel> m_globalShortcut;
    ArchiveModel m_archive;
    UndoModel m_undo;
    UndoKeys m_undoKeys;
    QString m_appearanceMode;
    bool m_hasAskedPreferredName = false;
};

} // namespace tessaly
